#!/usr/bin/env python3
"""Proves the arrows of the house: no source includes, and no library needs a symbol of, a floor that
its own may not use. `--table` writes the table of docs/architecture.md from the same list.

    fleches.py BUILD            check a build directory; code 1 names each arrow that goes wrong
    fleches.py BUILD --table    bring the table up to date
"""
import pathlib
import re
import subprocess
import sys

RACINE = pathlib.Path(__file__).resolve().parent.parent
DOC = RACINE / "docs" / "architecture.md"
MARQUES = ("<!-- house -->", "<!-- end of house -->")


class Etage:
    def __init__(self, ligne):
        self.nom, dossiers, en_tetes, utilise, self.tient, sources = ligne.split("\t")
        self.dossiers = [d for d in dossiers.split(";") if d]
        self.en_tetes = [e for e in en_tetes.split(";") if e]
        self.utilise = [u for u in utilise.split(";") if u]
        self.sources = sources.split(";")


def lit_la_maison(construction):
    lignes = (construction / "maison.tsv").read_text().splitlines()
    return {e.nom: e for e in map(Etage, lignes)}


def permis(maison, nom):
    """The floor itself and all below it."""
    vus, reste = set(), [nom]
    while reste:
        courant = reste.pop()
        if courant in vus or courant not in maison:
            continue
        vus.add(courant)
        reste += maison[courant].utilise
    return vus


def proprietaires(maison):
    """Floor of each source and header, by its path."""
    de = {source: etage.nom for etage in maison.values() for source in etage.sources}
    de.update({e: etage.nom for etage in maison.values() for e in etage.en_tetes})
    return de


def fautes_des_inclusions(maison):
    de = proprietaires(maison)
    for fichier, nom in sorted(de.items()):
        droit = permis(maison, nom)
        for inclus in re.findall(r'#include "([^"]+)"', (RACINE / fichier).read_text()):
            if inclus in de and de[inclus] not in droit:
                yield f"{fichier} ({nom}) includes {inclus} of {de[inclus]}"


def symboles(archive):
    """(defined, needed) of a static library."""
    sortie = subprocess.run(["nm", "-P", "-g", "-C", archive], capture_output=True, text=True,
                            check=True).stdout
    definis, voulus = set(), set()
    for ligne in sortie.splitlines():
        trouve = re.match(r"(.*\S) ([A-Za-z])(?: [0-9a-f]+)*\s*$", ligne)
        if not trouve:
            continue
        nom, genre = trouve.groups()
        (voulus if genre in "Uvw" else definis).add(nom)
    return definis, voulus - definis


def fautes_des_symboles(maison, construction):
    tables = {n: symboles(construction / f"lib{n}.a") for n in maison
              if (construction / f"lib{n}.a").exists()}
    for nom, (_, voulus) in tables.items():
        droit = permis(maison, nom)
        permis_ici = set().union(*(tables[n][0] for n in droit if n in tables))
        for autre in tables.keys() - droit:
            for symbole in sorted((voulus & tables[autre][0]) - permis_ici):
                yield f"{nom} needs {symbole} of {autre}"


def table(maison):
    lignes = ["| Target | Folders | Holds | May use |", "|---|---|---|---|"]
    for etage in reversed(maison.values()):
        ou = " ".join(f"`{d}/`" for d in etage.dossiers)
        ou += "".join(f" `{e}`" for e in etage.en_tetes)
        noms = [u.replace("::", " ") if u.startswith("Qt") else u.split("::")[-1]
                for u in etage.utilise]
        dessous = ", ".join(f"`{n}`" if n in maison else n for n in noms)
        lignes.append(f"| `{etage.nom}` | {ou} | {etage.tient} | {dessous or 'standard library'} |")
    return "\n".join(lignes)


def document(maison):
    texte = DOC.read_text()
    debut = texte.index(MARQUES[0]) + len(MARQUES[0])
    return texte[:debut] + "\n" + table(maison) + "\n" + texte[texte.index(MARQUES[1]):]


def main():
    if len(sys.argv) not in (2, 3) or sys.argv[2:] not in ([], ["--table"]):
        sys.exit(__doc__)
    construction = pathlib.Path(sys.argv[1])
    maison = lit_la_maison(construction)
    if sys.argv[2:]:
        DOC.write_text(document(maison))
        return
    fautes = list(fautes_des_inclusions(maison)) + list(fautes_des_symboles(maison, construction))
    if document(maison) != DOC.read_text():
        fautes.append("docs/architecture.md: run tools/fleches.py BUILD --table")
    for faute in fautes:
        print(faute)
    sys.exit(1 if fautes else 0)


main()
