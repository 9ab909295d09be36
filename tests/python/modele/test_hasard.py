"""Whatever is called with whatever, on live objects and on those of closed frames: an answer or an
exception, and never an end of the process."""
import random

import zuma.modele as zm
from conftest import Montage, Muette

APPELS = 100_000
# They end the frame, wait for people or leave the machine; the rest may do what it likes.
SAUF = {"Décharge", "__init__", "__class__", "__new__", "__init_subclass__", "__subclasshook__",
        "__getattribute__", "__setattr__", "__delattr__", "__reduce__", "__reduce_ex__", "__dir__",
        "AutoSave", "Espion", "AvanceJusquA", "ChargeLesFonctions", "ChargeLesCanaux",
        "ChargeLeChassis", "__exit__"}
VALEURS = [None, True, False, 0, 1, -1, 7, 20, 21, 32768, -2**31, 2**31, 2**70, 0.0, -1.5, 1e308,
           float("nan"), float("inf"), "", "1", "2", "zz", "Force", "é☃", "\0", "3,9600,N,8,1", b"", b"x",
           [], ["", ""], [1, 2], {}, (), object(), len, lambda *a: None, lambda *a: 1 / 0]


def membres(objet):
    return [n for n in dir(type(objet)) if n not in SAUF]


def appelle(hasard, objet, vivier):
    nom = hasard.choice(membres(objet))
    arguments = [hasard.choice(VALEURS if hasard.random() < 0.6 else vivier)
                 for _ in range(hasard.choice([0, 0, 1, 1, 2, 3, 8]))]
    try:
        if hasard.random() < 0.3 and not callable(getattr(type(objet), nom)):
            setattr(objet, nom, hasard.choice(VALEURS if hasard.random() < 0.8 else vivier))
            return None
        valeur = getattr(objet, nom)
        return valeur(*arguments) if callable(valeur) else valeur
    except BaseException as faute:  # any will do
        assert not isinstance(faute, (KeyboardInterrupt, SystemExit, MemoryError)), (nom, faute)
        return None


def vivier_de(montage):
    chassis = montage.chassis
    return [chassis, chassis.Watchdog, *chassis.Cartes, *chassis.Capteurs, *chassis.Commandes,
            *chassis.EntréesLogiques, *chassis.SortiesLogiques, chassis.Cartes, chassis.Capteurs,
            chassis.Commandes, *chassis.Cartes[0].Fonctions, *chassis.Cartes[0].Fonctions[0].Canals,
            chassis.Cartes[0].Fonctions, montage.registre, montage.sécurité, zm.Traducteur(),
            zm.Parametre("1", "1"), zm.TableEtalonnage(), zm.ParamètresEprouvette()]


def test_au_hasard(fichier):
    hasard = random.Random(20240503)
    messages = Muette()
    for tour in range(10):
        montage = Montage(fichier, zm.PlateformeSimulée(messages))
        vivier = vivier_de(montage)
        for appel in range(APPELS // 10):
            if appel == APPELS // 15:  # the last third is behind the end
                montage.chassis.Décharge()
            rendu = appelle(hasard, hasard.choice(vivier), vivier)
            if isinstance(rendu, zm.Poignée) and len(vivier) < 200:
                vivier.append(rendu)
        messages.textes.clear()
