"""A frame from load to discharge, and its objects as Python sees them."""
import numpy
import pytest

import zuma.modele as zm


def test_une_vie_de_chassis(montage):
    chassis = montage.chassis
    assert not montage.registre.Entrées and chassis.Nom
    montage.passe(300)
    temps = next(c for c in chassis.Capteurs if c.TypeDeCapteur == zm.ENUM_TYPE_CAPTEUR.CapteurTemps)
    assert temps.ValeurCourante == pytest.approx(0.3, abs=0.02)
    force = chassis.Capteurs["1"]
    assert force.EstLu and not force.EstVieux and force.Canal.Parent.Parent == chassis.Cartes[0]
    commande = chassis.Commandes["2"]
    commande.Enabled = True
    commande.ValeurCouranteEnUnité = commande.MaxiCommande / 2
    montage.passe(10)
    assert montage.plateforme.Borne(commande.Canal).split()[0] != "+0.0000"
    chassis.DéclencheAU()
    assert montage.plateforme.Borne(commande.Canal).split()[0] == "+0.0000"
    assert chassis.SortiesNonAtteintes() == []


def test_les_collections(montage):
    capteurs = montage.chassis.Capteurs
    objets = list(capteurs)
    assert len(capteurs) == capteurs.Count == len(objets) > 10
    assert capteurs[0] == objets[0] and capteurs[-1] == objets[-1]
    assert objets[0].Key in capteurs and objets[0] in capteurs and montage.chassis not in capteurs
    assert capteurs.Item(objets[3].Key) == capteurs[objets[3].Key] == objets[3]
    assert capteurs.ItemIndex(int(objets[3].Key)) == objets[3] and capteurs.ItemIndex(None) is None
    assert len({hash(c) for c in capteurs} & {hash(c) for c in objets}) == len(objets)
    for absente in ("", "zz", "Force"):
        assert absente not in capteurs
        with pytest.raises(KeyError):
            capteurs[absente]
    with pytest.raises(IndexError):
        capteurs[len(capteurs)]
    with pytest.raises(zm.Echec) as échec:
        capteurs.Item("zz")
    assert (échec.value.Numéro, échec.value.Source) == (5, "Capteurs.Item") and "zz" in str(échec.value)


def test_ce_qui_change_pendant_une_marche(montage):
    commandes = montage.chassis.Commandes
    vues = []
    for commande in commandes:
        vues.append(commande.NomDeLaCommande)
        commandes.Remove(commande.Key)
    assert len(vues) == 5 and len(commandes) == 0
    assert commandes.Add("9", commande) == commande and commande.Key in ("5", "9")
    with pytest.raises(zm.Echec) as échec:
        commandes.Add("9")
    assert échec.value.Numéro == zm.Numéro.CléDéjàPrésente
    commandes.RetireSi(lambda c: True)
    assert not list(commandes)


def test_les_echecs_vont_au_registre(montage):
    capteur = montage.chassis.Capteurs[0]
    assert capteur.PointX(99) == 0
    assert "Erreur N°9" in montage.registre.Entrées[-1].message
    seul = zm.Capteur(montage.plateforme)
    with pytest.raises(zm.Echec) as échec:  # no error record: the caller is told
        seul.PointX(99)
    assert échec.value.Numéro in (9, 91) and échec.value.Source == "Capteur.PointX"
    with pytest.raises(zm.Echec) as échec:
        zm.BaseSqlite("/nulle/part.db")
    assert échec.value.Numéro and échec.value.Description


@pytest.mark.parametrize("valeur, lue", [
    (None, None), (True, True), (False, False), (12, 12), (-2.5, -2.5), ("é\u0300 ☃", "é\u0300 ☃"),
    (2**40, float(2**40)), (numpy.float32(1.5), 1.5), (numpy.int64(7), 7), (numpy.bool_(True), True)])
def test_les_valeurs(fichier, tmp_path, valeur, lue):
    table = [[None, None], ["Variable x", valeur]]
    registre = zm.RegistreErreurs()
    registre.AjouteErreur("message", table)
    rendue = registre.Entrées[0].variables[1][1]
    assert rendue == lue and type(rendue) is type(lue)


@pytest.mark.parametrize("refusée", [object(), [], 1j, b"octets"])
def test_ce_qui_n_est_pas_une_valeur(refusée):
    with pytest.raises(TypeError):
        zm.RegistreErreurs().AjouteErreur("m", [[None, refusée]])


def test_les_lignes_de_la_base(fichier):
    base = zm.BaseSqlite(fichier, lectureSeule=True)
    lignes = base.OpenRecordset("SELECT * FROM [Capteur] ORDER BY [Index]")
    noms = [c.Name for c in lignes.Fields]
    assert lignes["index"] == 1 and "Index" in noms and lignes.RecordCount > 10
    with pytest.raises(KeyError):
        lignes["absente"]
    with pytest.raises(zm.Echec) as échec:
        lignes.Edit()
    assert échec.value.Numéro == zm.Numéro.BaseEnLectureSeule


def test_ce_que_le_modele_ecrit_par_ses_arguments(montage):
    capteur = montage.chassis.Capteurs[0]
    causes = ["", "", "prise"]
    capteur.MiniCapteurUnité, capteur.MaxiCapteurUnité = 1000, 2000
    capteur.TesteAU(causes)
    assert causes[0] == "" and causes[2] == "prise"
    suite, durée = capteur.Canal.Regarde()
    assert suite is zm.Suite.Rien and durée >= 0
