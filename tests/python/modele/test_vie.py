"""Objects that outlive their frame, and what a frame leaves behind it."""
import gc
import os
import subprocess
import sys
import threading
import time
import weakref

import pytest

import zuma.modele as zm

ACTIF, INACTIF = zm.ENUM_ETAT_LOGIQUE.Actif, zm.ENUM_ETAT_LOGIQUE.Inactif


def en_marche(montage):
    """A valve that is open and an output under voltage; the ports as they are at rest."""
    chassis = montage.chassis
    chassis.DéclencheAU()
    repos = dict(montage.plateforme.ports.écrits)
    chassis.SortiesLogiques["1"].ValeurCourante = ACTIF
    chassis.Commandes["2"].Enabled = True
    chassis.Commandes["2"].ValeurCouranteEnUnité = chassis.Commandes["2"].MaxiCommande
    assert {p: v for p, v in montage.plateforme.ports.écrits.items() if repos.get(p) != v}
    return repos


def est_au_repos(montage, repos):
    écrits = montage.plateforme.ports.écrits
    return all(écrits[port] == valeur for port, valeur in repos.items())


def garde(chassis):
    """One object of each class, and each collection."""
    carte = chassis.Cartes[0]
    fonction = carte.Fonctions[0]
    return [chassis.Capteurs[0], chassis.Commandes[1], chassis.SortiesLogiques[0],
            chassis.EntréesLogiques[0], chassis.Watchdog, carte, fonction, fonction.Canals[0],
            fonction.Parent, chassis.Capteurs, chassis.Cartes, fonction.Canals]


def par_decharge(montage):
    montage.chassis.Décharge()


def par_with(montage):
    with pytest.raises(ZeroDivisionError), montage.chassis:
        raise ZeroDivisionError


def par_oubli(montage):
    del montage.chassis
    gc.collect()


@pytest.mark.parametrize("fin", [par_decharge, par_with, par_oubli])
def test_un_chassis_qui_finit(sur_python, fin):
    montage = sur_python()
    repos = en_marche(montage)
    objets = garde(montage.chassis)
    fin(montage)
    assert est_au_repos(montage, repos)
    nombre = montage.plateforme.ports.nombre
    for objet in objets:
        assert not objet.EstOuvert and repr(objet)
        for nom in ("Key", "Count", "MetàJour", "DéclencheAU", "Initialise"):
            if hasattr(type(objet), nom):
                with pytest.raises(zm.ChassisFermé):
                    membre = getattr(objet, nom)
                    membre()
    with pytest.raises(zm.ChassisFermé):
        objets[1].ValeurCouranteEnUnité = 5
    with pytest.raises(zm.ChassisFermé):
        objets[2].ValeurCourante = ACTIF
    objets.clear()
    gc.collect()
    assert montage.plateforme.ports.nombre == nombre  # nor does their end write


def test_un_chassis_que_l_on_regarde_ne_touche_a_rien(fichier):
    import conftest
    plateforme = conftest.plateforme_de_python()
    with zm.Chassis(plateforme) as chassis, zm.BaseSqlite(fichier) as base:
        chassis.ChargeErreur(zm.RegistreErreurs())
        chassis.ChargeLeChassis(base, 1)
        assert [c.NomDuCapteur for c in chassis.Capteurs]
    assert plateforme.ports.nombre == 0


def test_la_fin_du_programme_met_au_repos(fichier, tmp_path):
    """Even where a cycle keeps the frame from being let go."""
    programme = """if True:
        import sys
        sys.path.insert(0, sys.argv[1])
        import conftest, test_vie, zuma.modele as zm
        montage = conftest.Montage(sys.argv[2], conftest.plateforme_de_python(), conftest.Temps())
        repos = test_vie.en_marche(montage)
        montage.chassis.EntréesLogiques[0].Change(lambda état, moi=montage: None)
        écrits = montage.plateforme.ports.écrits
        import atexit
        atexit._run_exitfuncs()
        print("au repos" if all(écrits[p] == v for p, v in repos.items()) else écrits, flush=True)
        """
    vu = subprocess.run([sys.executable, "-c", programme, os.path.dirname(__file__), fichier],
                        capture_output=True, text=True, timeout=60)
    assert (vu.returncode, vu.stdout) == (0, "au repos\n"), vu.stderr


def test_un_enfant_ne_touche_a_rien(sur_python):
    montage = sur_python()
    en_marche(montage)
    objets = garde(montage.chassis)
    ports = montage.plateforme.ports
    nombre = ports.nombre
    enfant = os.fork()
    if enfant == 0:
        fautes = 0
        for objet in objets:
            try:
                objet.MetàJour() if hasattr(type(objet), "MetàJour") else len(objet)
                fautes += 1
            except zm.ChassisFermé:
                pass
        objet = None
        objets.clear()
        del montage
        gc.collect()
        os._exit(fautes or (100 if ports.nombre != nombre else 0))
    assert os.waitstatus_to_exitcode(os.waitpid(enfant, 0)[1]) == 0
    assert montage.chassis.EstOuvert and montage.chassis.Capteurs[0].Key


def test_plusieurs_chassis_sur_une_plateforme(sur_python, fichier):
    import conftest
    premier = sur_python()
    second = conftest.Montage(fichier, premier.plateforme, premier.timer)
    capteur, autre = premier.chassis.Capteurs[0], second.chassis.Capteurs[0]
    premier.chassis.Décharge()
    assert autre.Key and second.chassis.EstOuvert
    with pytest.raises(zm.ChassisFermé):
        capteur.Key


def test_la_plateforme_peut_partir_avant(sur_python):
    montage = sur_python()
    seul = zm.Capteur(montage.plateforme)
    montage.plateforme = None
    gc.collect()
    assert montage.chassis.Capteurs[0].Key
    montage.chassis.MetàJour()
    with pytest.raises(zm.ChassisFermé):
        seul.Key


def test_des_services_remplaces_servent_leur_chassis(sur_python):
    import conftest
    montage = sur_python()
    anciens, montage.plateforme.ports = montage.plateforme.ports, conftest.Ports()
    nombre = anciens.nombre
    suivis = weakref.ref(anciens)
    del anciens
    gc.collect()
    montage.chassis.DéclencheAU()
    assert suivis().nombre > nombre and montage.plateforme.ports.nombre == 0


def test_fermer_depuis_l_interieur_d_une_passe(montage):
    entrée = zm.EntréeLogique(montage.plateforme)
    entrée.TimerExact(montage.timer)
    montage.chassis.EntréesLogiques.Add("99", entrée)
    montage.passe(5)
    entrée.Change(lambda état: montage.chassis.Décharge())
    entrée.ValeurCourante = ACTIF
    assert not montage.chassis.EstOuvert
    with pytest.raises(zm.ChassisFermé):
        montage.chassis.MetàJour()


def test_une_carte_retiree_n_est_plus_la(montage):
    fonction = montage.chassis.Cartes[3].Fonctions[0]
    parent = fonction.Parent
    assert parent.Key == "4"  # no handle of its own holds the board
    montage.chassis.Cartes.Remove(parent.Key)
    gc.collect()
    with pytest.raises(zm.Echec):
        parent.Key
    assert fonction.Parent is None


def test_plusieurs_fils(montage):
    """A thread that passes, others that read and give back, one that stops: each in its turn."""
    fini, fautes = threading.Event(), []

    def protège(travail):
        def boucle():
            try:
                while not fini.is_set():
                    travail()
                    time.sleep(0)
            except Exception as faute:  # told below
                fautes.append(faute)
        return threading.Thread(target=boucle)

    def lit():
        for capteur in montage.chassis.Capteurs:
            capteur.ValeurCourante, capteur.Canal
    fils = [protège(travail) for travail in (
        montage.passe, lit, lit, montage.chassis.DéclencheAU, montage.sécurité.DéclencheSécurité,
        montage.sécurité.Maintient)]
    for fil in fils:
        fil.start()
    time.sleep(0.5)
    fini.set()
    for fil in fils:
        fil.join(10)
        assert not fil.is_alive()
    assert not fautes
