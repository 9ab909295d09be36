"""What the library calls and Python wrote."""
import gc
import weakref

import pytest

import zuma.modele as zm

ACTIF, INACTIF = zm.ENUM_ETAT_LOGIQUE.Actif, zm.ENUM_ETAT_LOGIQUE.Inactif


@pytest.fixture
def entrée(montage):
    objet = zm.EntréeLogique(montage.plateforme)
    objet.TimerExact(montage.timer)
    objet.ChargeErreur(montage.registre)
    return objet


def test_les_evenements(entrée, montage):
    vus = []
    abonnement = entrée.Change(vus.append)
    numéro = entrée.AbonneChange(lambda état: vus.append(("numéro", état)))
    entrée.ValeurCourante = ACTIF
    assert vus == [ACTIF, ("numéro", ACTIF)] and isinstance(vus[0], zm.ENUM_ETAT_LOGIQUE)
    entrée.DésabonneChange(numéro)
    with abonnement:
        entrée.ValeurCourante = INACTIF
    entrée.ValeurCourante = ACTIF
    assert vus[2:] == [INACTIF] and not abonnement
    unités = []
    capteur = montage.chassis.Capteurs[0]
    abonnement = capteur.UnitChange(unités.append)
    capteur.UnitéEtalonnage = "daN"
    montage.chassis.Décharge()
    abonnement.Désabonne()  # behind the frame: nothing to be done
    assert unités == ["daN"]


def test_ce_qu_un_evenement_retient_part_avec_lui(montage):
    class Témoin:
        def __call__(self, unité):
            pass
    témoin = Témoin()
    reste = weakref.ref(témoin)
    montage.chassis.Capteurs[0].UnitChange(témoin)
    del témoin
    gc.collect()
    assert reste() is not None
    montage.chassis.Décharge()
    gc.collect()
    assert reste() is None


def test_l_exception_d_un_rappel_sort_chez_l_appelant(entrée, montage):
    def casse(état):
        raise LookupError("dedans")
    suivants = []
    entrée.Change(casse)
    entrée.Change(suivants.append)
    with pytest.raises(LookupError, match="dedans"):
        entrée.ValeurCourante = ACTIF
    assert suivants == [ACTIF] and "dedans" in montage.registre.Entrées[-1].message


class Faux(Exception):
    pass


def test_un_parametre_qui_n_est_d_aucun_chassis():
    def casse():
        raise Faux("à l'écoute")
    paramètre, vus = zm.Parametre("1", "1", "avant"), []
    with paramètre.Change(casse), paramètre.Change(lambda: vus.append(paramètre.ValeurParamètre)):
        with pytest.raises(Faux, match="à l'écoute"):
            paramètre.ValeurParamètre = "après"
    paramètre.ValeurParamètre = "encore"
    assert vus == ["après"]


def test_une_exception_dans_la_passe_arrete_le_chassis(montage):
    chassis = montage.chassis
    chassis.Commandes["2"].Enabled = True
    chassis.Commandes["2"].ValeurCouranteEnUnité = chassis.Commandes["2"].MaxiCommande
    chassis.SortiesLogiques["1"].ValeurCourante = ACTIF
    borne = montage.plateforme.Borne
    canal = chassis.Commandes["2"].Canal
    montage.passe(5)
    assert borne(canal).split()[0] != "+0.0000"

    def casse(état):
        raise Faux("dans la passe")
    for entrée in chassis.EntréesLogiques:
        entrée.Change(casse)
    with pytest.raises(Faux, match="dans la passe"):
        montage.passe(5000)
    assert borne(canal).split()[0] == "+0.0000"
    assert chassis.SortiesLogiques["1"].ValeurCourante == INACTIF
    assert montage.sécurité.Déclenchée
    assert montage.sécurité.Causes[0].texte == "Python : Faux: dans la passe"


def test_des_collaborateurs_de_python(sur_python):
    class Registre(zm.ZED_Erreur):
        def __init__(self):
            super().__init__()
            self.entrées = []

        def AjouteErreur(self, message, variables):
            self.entrées.append((message, variables))

    class Sécurité(zm.ZED_Securite):
        causes, chassis = [], None

        def PositionneCauseAU(self, cause):
            self.causes.append(cause)

        def DéclencheSécurité(self):
            self.chassis.DéclencheAU()

    class Paramètre(zm.ZED_Parametre):
        def __init__(self, clé, valeur):
            super().__init__()
            self.clé, self.valeur, self.abonnés = clé, valeur, {}

        Key = property(lambda self: self.clé)
        NomParamètre = property(lambda self: self.clé)

        @property
        def ValeurParamètre(self):
            return self.valeur

        @ValeurParamètre.setter
        def ValeurParamètre(self, valeur):
            self.valeur = valeur
            for abonné in list(self.abonnés.values()):
                abonné()

        def Abonne(self, f):
            self.abonnés[len(self.abonnés) + 1] = f
            return len(self.abonnés)

        def Désabonne(self, numéro):
            self.abonnés.pop(numéro, None)

    class Traduction(zm.ZED_Traduction):
        LangueCourante, Langues = "Essai", ["Essai"]

        def Traduit(self, clé, défaut, section):
            return f"<{clé}>"

    # Held by the frame alone from here on.
    paramètres = [Paramètre(str(i), "1") for i in range(1, 13)]
    registre = Registre()
    montage = sur_python(registre=registre, sécurité=Sécurité(), paramètres=paramètres,
                         traducteur=Traduction())
    montage.sécurité.chassis = montage.chassis
    gc.collect()
    forme, diamètre = paramètres[3], paramètres[4]
    forme.ValeurParamètre = "Cylindre"  # listeners of the model are told, whatever they make of it
    assert diamètre.abonnés and forme.abonnés
    capteur = montage.chassis.Capteurs[0]
    assert capteur.PointX(77) == 0
    message, variables = registre.entrées[-1]
    assert "Erreur N°9" in message and variables[0] == [None, None]
    assert montage.chassis.Erreur is registre and montage.chassis.LeTimer is montage.timer
    capteur.AutoriseAU()
    sécurité = montage.sécurité
    sécurité.PositionneCauseAU("à la main")
    sécurité.DéclencheSécurité()
    assert sécurité.causes[-1] == "à la main"
    montage.chassis.Décharge()
    assert not any(p.abonnés for p in paramètres)


def test_une_methode_de_python_qui_manque_ou_qui_echoue():
    class Vide(zm.ZED_Securite):
        pass

    class Refuse(zm.BoîteDeMessage):
        def Montre(self, texte, objet):
            raise zm.Echec(zm.Numéro.MatérielAbsent, "débranchée")
    with pytest.raises(zm.Echec) as échec:
        Vide().DéclencheSécurité()
    assert échec.value.Numéro == zm.Numéro.OpérationAbsente
    plateforme = zm.Plateforme()
    plateforme.messages = Refuse()
    with pytest.raises(zm.Echec) as échec:  # told as a failure of the model, under its number
        zm.Capteur(plateforme).Montre("bonjour")
    assert (échec.value.Numéro, échec.value.Description) == (31999, "débranchée")

    class Bogue(zm.BoîteDeMessage):
        def Montre(self, texte, objet):
            raise Faux("bogue")
    plateforme.messages = Bogue()
    with pytest.raises(Faux):
        zm.Capteur(plateforme).Montre("bonjour")


def test_une_passe_dont_le_timer_casse(sur_python):
    montage = sur_python()
    chassis, timer = montage.chassis, montage.timer
    chassis.DéclencheAU()
    repos = dict(montage.plateforme.ports.écrits)
    chassis.SortiesLogiques["1"].ValeurCourante = ACTIF
    assert montage.plateforme.ports.écrits != repos
    type(timer).LitMicrosecondes, avant = lambda self: 1 / 0, type(timer).LitMicrosecondes
    try:
        with pytest.raises(ZeroDivisionError):
            chassis.MetàJour()
    finally:
        type(timer).LitMicrosecondes = avant
    assert all(montage.plateforme.ports.écrits[p] == v for p, v in repos.items())
