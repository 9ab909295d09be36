#!/usr/bin/python3
"""Changes the stop chain, commands, saves and limits in a thousand small ways, and shows
that a test notices each: mutants.py [--jobs N] [--folder BUILD] [--only FILE] [--list]

All mutants are in one build, chosen by $ZUMA_MUTANT. Each is given the tests that reach its place,
quickest first, up to the first that fails. Those that nothing can notice stand in equivalents.tsv
with the reason. Exit code 1 when another one survives.
"""
import argparse
import bisect
import concurrent.futures
import os
import pathlib
import shutil
import subprocess
import sys

import clang.cindex as ci

ICI = pathlib.Path(__file__).resolve().parent
RACINE = ICI.parent.parent
FICHIERS = [
    "core/chassis*.cpp",
    "logic/*.cpp",
    "commands/*.cpp",
    "sensors/capteur_metajour.cpp",
    "sensors/capteur_arret.cpp",
    "sensors/capteur_mav.cpp",
    "sensors/capteur_age.cpp",
    "dialogs/feuille_etalonnage.cpp",
    "dialogs/*_calibration.cpp",
    "platform/linux/recordset_sqlite.cpp",
    "platform/linux/arret_du_chassis.cpp",
    "platform/linux/securite.cpp",
]
OPERATEURS = {
    "<": ("Strict", "<="), ">": ("StrictSup", ">="), "<=": ("Large", "<"), ">=": ("LargeSup", ">"),
    "==": ("Egal", "!="), "!=": ("Autre", "=="), "+": ("Plus", "-"), "-": ("Moins", "+"),
    "*": ("Fois", "/"), "/": ("Par", "*"), "&&": ("Et", "||"), "||": ("Ou", "&&"),
}
PARESSEUX = {"&&", "||"}
K = ci.CursorKind


class Mutant:
    def __init__(self, numero, fichier, ligne, avant, apres):
        self.numero, self.fichier, self.ligne = numero, fichier, ligne
        self.avant, self.apres = " ".join(avant.split()), apres

    def cle(self):
        """What stays when lines above it come and go."""
        return f"{self.fichier}\t{self.avant}\t{self.apres}"

    def __str__(self):
        return f"{self.fichier}:{self.ligne}: {self.avant}  =>  {self.apres}"


class Source:
    """One file, rewritten with its mutants."""

    def __init__(self, chemin, arguments, mutants):
        self.relatif = str(chemin.relative_to(RACINE))
        self.octets = chemin.read_bytes()
        self.mutants = mutants
        unite = ci.Index.create().parse(str(chemin), args=arguments)
        graves = [d for d in unite.diagnostics if d.severity >= ci.Diagnostic.Error]
        if graves:
            sys.exit(f"mutants: {graves[0]}")
        self.remplace = {}  # (start, end) -> function that gives the new text
        for curseur in unite.cursor.get_children():
            lieu = curseur.location.file
            if lieu is not None and lieu.name == str(chemin):
                self.marche(curseur, None)
        self.places = sorted(self.remplace, key=lambda p: (p[0], -p[1]))
        self.debuts = [p[0] for p in self.places]

    def texte(self, debut, fin):
        """Text between two offsets, the outermost places in it replaced."""
        morceaux, position = [], debut
        for place in self.places[bisect.bisect_left(self.debuts, debut):]:
            if place[0] >= fin:
                break
            if place[0] < position or place[1] > fin or place in self.encours:
                continue
            morceaux.append(self.octets[position:place[0]].decode())
            self.encours.add(place)
            morceaux.append(self.remplace[place]())
            self.encours.discard(place)
            position = place[1]
        morceaux.append(self.octets[position:fin].decode())
        return "".join(morceaux)

    def mute(self):
        self.encours = set()
        return '#include "base/mutants.h"\n' + self.texte(0, len(self.octets))

    def nouveau(self, curseur, apres):
        debut, fin = etendue(curseur)
        mutant = Mutant(len(self.mutants) + 1, self.relatif, curseur.extent.start.line,
                        self.octets[debut:fin].decode(), apres)
        self.mutants.append(mutant)
        return mutant.numero

    def marche(self, curseur, parent):
        if est_constant(curseur, self.octets):
            return
        if curseur.kind == K.BINARY_OPERATOR:
            self.binaire(curseur)
        elif curseur.kind == K.UNARY_OPERATOR and self.est_une_negation(curseur):
            self.negation(curseur)
        elif curseur.kind == K.CALL_EXPR and curseur.spelling in ("operator==", "operator!="):
            self.binaire(curseur)
        if parent is not None and parent.kind == K.COMPOUND_STMT:
            self.instruction(curseur)
        for enfant in curseur.get_children():
            self.marche(enfant, curseur)

    def est_une_negation(self, curseur):
        """Not the half of `a != b` that the compiler makes of a comparison."""
        debut = etendue(curseur)[0]
        return self.octets[debut:debut + 1] == b"!" and self.octets[debut + 1:debut + 2] != b"="

    def binaire(self, curseur):
        enfants = list(curseur.get_children())
        bouts = [etendue(enfants[0]), etendue(enfants[-1])] if len(enfants) > 1 else []
        if len(bouts) != 2 or not bouts[0][1] <= bouts[1][0]:
            return
        (a, b), (c, d) = bouts
        signe = self.octets[b:c].decode().strip()
        if signe not in OPERATEURS:
            return
        nom, apres = OPERATEURS[signe]
        numero = self.nouveau(curseur, apres)

        def ecrit():
            gauche, droite = self.texte(a, b), self.texte(c, d)
            if signe in PARESSEUX:
                return (f"zuma_mutants::{nom}({numero}, static_cast<bool>({gauche}), "
                        f"[&] {{ return static_cast<bool>({droite}); }})")
            return f"zuma_mutants::{nom}({numero}, {gauche}, {droite})"

        self.remplace[etendue(curseur)] = ecrit

    def negation(self, curseur):
        numero = self.nouveau(curseur, "without !")
        debut, fin = etendue(curseur)
        self.remplace[(debut, fin)] = (
            lambda: f"zuma_mutants::Non({numero}, static_cast<bool>({self.texte(debut + 1, fin)}))")

    def instruction(self, curseur):
        """A call or an assignment that is left out."""
        genres = (K.CALL_EXPR, K.COMPOUND_ASSIGNMENT_OPERATOR, K.BINARY_OPERATOR, K.UNARY_OPERATOR,
                  K.CXX_UNARY_EXPR, K.UNEXPOSED_EXPR)
        debut, fin = etendue(curseur)
        texte = self.octets[debut:fin]
        if curseur.kind not in genres or texte[:5] == b"throw":
            return
        # What a failure tells of its variables moves no machine.
        if texte.startswith((b"v.Ajoute", b"variables.Ajoute")):
            return
        if self.octets[fin:fin + 1] != b";" or (debut, fin) in self.remplace:
            return
        numero = self.nouveau(curseur, "left out")
        self.remplace[(debut, fin)] = (
            lambda: f"if (!zuma_mutants::M({numero})) {self.texte(debut, fin)}")


def etendue(curseur):
    return curseur.extent.start.offset, curseur.extent.end.offset


def est_constant(curseur, octets):
    """Where a mutant could not be chosen at run time."""
    if curseur.kind in (K.STATIC_ASSERT, K.CASE_STMT, K.ENUM_DECL):
        return True
    debut, fin = etendue(curseur)
    entete = octets[debut:fin].split(b"{")[0].split(b"=")[0]
    return curseur.kind in (K.DECL_STMT, K.VAR_DECL, K.FUNCTION_DECL, K.CXX_METHOD) and (
        b"constexpr" in entete)


def arguments_de_clang():
    chemins = subprocess.run(["g++", "-E", "-x", "c++", "-", "-v"], input="", text=True,
                             capture_output=True, check=True).stderr
    dossiers = chemins.split("search starts here:")[2].split("End of")[0].split()
    return ["-std=c++20", "-xc++", "-nostdinc++", "-nostdlibinc",
            f"-I{RACINE}"] + [f"-isystem{d}" for d in dossiers]


def les_mutants(seul):
    mutants, sources = [], []
    for motif in FICHIERS:
        for chemin in sorted(RACINE.glob(motif)):
            if seul in str(chemin):
                sources.append(Source(chemin, arguments_de_clang(), mutants))
    return mutants, sources


def copie(sources, dossier):
    arbre = dossier / "src"
    noms = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                          cwd=RACINE, capture_output=True, check=True).stdout.decode().split("\0")
    textes = {s.relatif: s.mute() for s in sources}
    for nom in filter(None, noms):
        if (RACINE / nom).is_file():
            pose(arbre / nom, textes[nom].encode() if nom in textes else (RACINE / nom).read_bytes())
    for nom, place in (("mutants.h", "base/mutants.h"), ("vivant.cpp", "base/vivant.cpp"),
                       ("temoin.cpp", "tests/temoin.cpp")):
        pose(arbre / place, (ICI / nom).read_bytes())
    return arbre


def pose(chemin, contenu):
    """Only when it changed: what was built of it stays."""
    if chemin.exists() and chemin.read_bytes() == contenu:
        return
    chemin.parent.mkdir(parents=True, exist_ok=True)
    chemin.write_bytes(contenu)
    if contenu.startswith(b"#!"):
        chemin.chmod(0o755)


def construit(arbre, dossier, travaux):
    subprocess.run(["cmake", "-S", arbre, "-B", dossier / "build", "-G", "Ninja",
                    "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DZUMA_QT=OFF", "-DZUMA_PYTHON=OFF",
                    "-DCMAKE_CXX_FLAGS=-w"], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["ninja", f"-j{travaux}", "-C", dossier / "build", "zuma_tests"], check=True)
    return dossier / "build" / "zuma_tests"


def lance(essais, dossier, filtre, secondes, **autour):
    dossier.mkdir(parents=True, exist_ok=True)
    environnement = dict(os.environ, ZUMA_PUBLICATIONS=str(dossier), **autour)
    try:
        return subprocess.run([essais, "--gtest_brief=1", "--gtest_fail_fast",
                               f"--gtest_filter={filtre}"], timeout=secondes, cwd=dossier,
                              env=environnement, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode
    except subprocess.TimeoutExpired:
        return "time"


def les_places(essais, dossier):
    """Milliseconds of each test, and the tests that reach each place."""
    fichier = dossier / "places"
    fichier.unlink(missing_ok=True)
    if lance(essais, dossier / "p", "*", 1800, ZUMA_ATTEINTS=str(fichier)) != 0:
        sys.exit("mutants: the tests fail without any mutant")
    durees, places = {}, {}
    for ligne in fichier.read_text().splitlines():
        essai, duree, *numeros = ligne.split()
        durees[essai] = int(duree)
        for numero in numeros:
            places.setdefault(int(numero), []).append(essai)
    return durees, places


def juge(mutant, essais, dossier, durees, places):
    """True when a test notices."""
    reste = sorted(places.get(mutant.numero, []), key=durees.get)
    while reste:
        # A few quick ones in one process, slow ones alone.
        lot, somme = [reste.pop(0)], 0
        somme = durees[lot[0]]
        while reste and len(lot) < 40 and somme + durees[reste[0]] < 2000:
            somme += durees[reste[0]]
            lot.append(reste.pop(0))
        if lance(essais, dossier / str(mutant.numero), ":".join(lot), 10 + 5 * somme / 1000,
                 ZUMA_MUTANT=str(mutant.numero)) != 0:
            shutil.rmtree(dossier / str(mutant.numero), ignore_errors=True)
            return True
    shutil.rmtree(dossier / str(mutant.numero), ignore_errors=True)
    return False


def main():
    analyse = argparse.ArgumentParser(description=__doc__)
    analyse.add_argument("--jobs", type=int, default=os.cpu_count())
    analyse.add_argument("--folder", type=pathlib.Path, default=RACINE / "build" / "mutants")
    analyse.add_argument("--only", default="", help="files whose name has this in it")
    analyse.add_argument("--list", action="store_true")
    choix = analyse.parse_args()
    dossier = choix.folder.resolve()
    mutants, sources = les_mutants(choix.only)
    if choix.list:
        print("\n".join(map(str, mutants)))
        return
    connus = {ligne.rsplit("\t", 1)[0] for ligne in
              (ICI / "equivalents.tsv").read_text().splitlines() if ligne[:1] != "#"}
    essais = construit(copie(sources, dossier), dossier, choix.jobs)
    durees, places = les_places(essais, dossier)
    survivants, vus = [], set()
    with concurrent.futures.ThreadPoolExecutor(choix.jobs) as equipe:
        juges = equipe.map(lambda m: juge(m, essais, dossier / "marches", durees, places), mutants)
        for mutant, tue in zip(mutants, juges):
            print(f"\r{mutant.numero} of {len(mutants)}, {len(survivants)} survive", end="",
                  file=sys.stderr, flush=True)
            if tue:
                continue
            if mutant.cle() in connus:
                vus.add(mutant.cle())
            else:
                survivants.append(mutant)
                atteint = "" if mutant.numero in places else "  (no test reaches it)"
                print(f"\rSURVIVES {mutant}{atteint}", flush=True)
    for cle in sorted(connus - vus):
        if choix.only in cle.split("\t")[0]:
            print(f"noticed now, or gone; take it out of equivalents.tsv: {cle}")
    print(f"\n{len(mutants)} mutants, {len(survivants)} survive, {len(vus)} named equivalent")
    sys.exit(1 if survivants else 0)


if __name__ == "__main__":
    main()
