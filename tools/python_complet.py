#!/usr/bin/python3
"""Compares the public members of the model's headers with what Python has of them.

    PYTHONPATH=BUILD/python python_complet.py    names each one that is missing, exit code 1

What Python does without stands in python_complet.tsv with the reason; a row there that excuses nothing
is told as well.
"""
import os
import pathlib
import subprocess
import sys

import clang.cindex as ci

import zuma.modele as modele

RACINE = pathlib.Path(__file__).resolve().parent.parent
EXCEPTIONS = pathlib.Path(__file__).with_suffix(".tsv")
ENTETES = """
    core/chassis.h core/collections.h tree/carte.h tree/fonction.h tree/canal.h tree/enumerations.h
    tree/ligne_driver.h tree/registre_des_drivers.h sensors/capteur.h sensors/enumerations.h
    sensors/parametres_eprouvette.h sensors/regression.h sensors/section.h commands/commande.h
    commands/servo.h commands/dither.h logic/entree_logique.h logic/sortie_logique.h logic/watchdog.h
    logic/wdt_01.h logic/enumerations.h base/objet.h base/table_etalonnage.h base/echec.h
    platform/collaborateurs.h platform/services.h platform/base_de_donnees.h platform/liaison_serie.h
    platform/plateforme.h platform/reglages.h platform/fenetres.h boards/table_des_drivers.h
    platform/linux/securite.h platform/linux/registre_erreurs.h platform/linux/parametres.h
    platform/linux/traducteur.h platform/linux/base_sqlite.h platform/linux/arret_du_chassis.h
    host/machine.h
""".split()
# One template in C++, seven classes in Python.
COLLECTIONS = "Canals Fonctions Cartes Capteurs Commandes EntréeLogiques SortieLogiques".split()
# Where Python keeps what stands under another name in C++.
AILLEURS = {"Collection": COLLECTIONS, "wdt_01": ["WDT_01"], "Machine": ["Plateforme"],
            "Etat": ["EtatWDT"], "": [""], "linux_": [""], "host": [""]}

K = ci.CursorKind
CLASSES = (K.CLASS_DECL, K.STRUCT_DECL, K.CLASS_TEMPLATE)
MEMBRES = (K.CXX_METHOD, K.FUNCTION_TEMPLATE, K.FIELD_DECL, K.FUNCTION_DECL)


def arguments():
    """As g++ sees them: its own headers."""
    entourage = {nom: valeur for nom, valeur in os.environ.items() if nom != "LD_PRELOAD"}
    vu = subprocess.run(["g++", "-E", "-v", "-xc++", "/dev/null"], capture_output=True, text=True,
                        check=True, env=entourage).stderr
    dossiers = vu.split("search starts here:")[-1].split("End of search list")[0].split()
    return ["-std=c++20", "-xc++", f"-I{RACINE}"] + [f"-isystem{d}" for d in dossiers]


def lit():
    source = "".join(f'#include "{e}"\n' for e in ENTETES)
    # In a folder of its own: each header is found, and named, by its full path.
    tout = str(RACINE / "tools" / "tout.cpp")
    unite = ci.Index.create().parse(tout, args=arguments(), unsaved_files=[(tout, source)],
                                    options=ci.TranslationUnit.PARSE_SKIP_FUNCTION_BODIES)
    graves = [str(d) for d in unite.diagnostics if d.severity >= ci.Diagnostic.Error]
    if graves:
        sys.exit("\n".join(graves))
    return unite


def est_publique(curseur):
    return curseur.access_specifier in (ci.AccessSpecifier.PUBLIC, ci.AccessSpecifier.INVALID)


def declarations(curseur, fichiers):
    """(scope, cursor) of the classes, enumerations and members that a user may name."""
    for enfant in curseur.get_children():
        if enfant.kind == K.NAMESPACE:
            yield from declarations(enfant, fichiers)
        elif enfant.location.file and enfant.location.file.name in fichiers and est_publique(enfant):
            if enfant.kind in CLASSES and enfant.is_definition():
                yield curseur.spelling, enfant
                yield from declarations(enfant, fichiers)
            elif enfant.kind == K.ENUM_DECL and enfant.is_definition():
                yield curseur.spelling, enfant
            elif enfant.kind in MEMBRES and not enfant.spelling.startswith(("operator", "~")):
                yield curseur.spelling, enfant


def lieux(portee):
    """What of Python may hold members of that scope."""
    for module in (modele, modele.section, modele.servo):
        for nom in AILLEURS.get(portee, [portee]):
            yield module if nom in ("", "zuma") else getattr(module, nom, None)


def manque_un_membre(portee, curseur):
    if curseur.kind in CLASSES and not list(curseur.get_children()):
        return False
    noms = AILLEURS.get(curseur.spelling, [curseur.spelling])
    if curseur.kind in CLASSES:
        return not any(hasattr(modele, n) or hasattr(l, n) for n in noms for l in lieux(portee))
    return not any(hasattr(lieu, curseur.spelling) for lieu in lieux(portee))


def manques_d_une_enumeration(portee, curseur):
    classe = getattr(modele, curseur.spelling, None)
    if classe is None:
        yield curseur.spelling
        return
    voulus = {c.spelling: c.enum_value for c in curseur.get_children()
              if c.kind == K.ENUM_CONSTANT_DECL}
    ici = {nom: int(membre) for nom, membre in classe.__members__.items()}
    for nom in voulus.keys() ^ ici.keys():
        yield f"{curseur.spelling}.{nom}"
    for nom in voulus.keys() & ici.keys():
        if voulus[nom] != ici[nom]:
            yield f"{curseur.spelling}.{nom} = {voulus[nom]}"


def manques():
    racine = lit().cursor
    fichiers = {str(RACINE / e) for e in ENTETES}
    for portee, curseur in declarations(racine, fichiers):
        if curseur.kind == K.ENUM_DECL:
            yield from manques_d_une_enumeration(portee, curseur)
        elif manque_un_membre(portee, curseur):
            sans_portee = portee == "zuma" or AILLEURS.get(portee) == [""]
            yield curseur.spelling if sans_portee else f"{portee}.{curseur.spelling}"


def exceptions():
    lignes = [l for l in EXCEPTIONS.read_text().splitlines() if l and not l.startswith("#")]
    return dict(l.split("\t", 1) for l in lignes)


def excuse(nom, permises):
    """A member is excused by its own row, or by that of its class."""
    return next((p for p in (nom, nom.split(".")[0]) if p in permises), None)


def main():
    permises = exceptions()
    absents = list(dict.fromkeys(manques()))
    servies = {excuse(nom, permises) for nom in absents}
    fautes = [f"missing in Python: {nom}" for nom in absents if not excuse(nom, permises)]
    fautes += [f"{EXCEPTIONS.name}: {nom} excuses nothing" for nom in permises if nom not in servies]
    print("\n".join(fautes), end="\n" if fautes else "")
    sys.exit(1 if fautes else 0)


main()
