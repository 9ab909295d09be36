#!/usr/bin/python3
"""Types of the object model for editors and mypy, from the signatures of the module itself.

    PYTHONPATH=BUILD/python python_stubs.py FILE            writes them
    PYTHONPATH=BUILD/python python_stubs.py FILE --check    exit code 1 when the file is another one
"""
import enum
import inspect
import pathlib
import re
import sys

import zuma.modele as modele

ENTETE = '''"""Types of the object model; made by tools/python_stubs.py."""
from enum import IntEnum
import zuma.modele as _m
from typing import Any, Callable, ClassVar, Iterable, Iterator, List, Optional, Tuple, Type, TypeVar, Union, overload

Soi = TypeVar("Soi")
'''
SIGNATURE = re.compile(r"(?:\d+\. )?(\w*)\((.*)\) -> (.*)")
GENRES = [(r"\bhandle\b|\bobject\b", "Any"), (r"\bfunction\b", "Callable[..., Any]"),
          (r"\blist\b", "List[Any]"), (r"\biterator\b", "Iterator[Any]"),
          (r"\biterable\b|\bIterable\b(?!\[)", "Iterable[Any]"), (r"\bargs\b", "Any")]
# Classes of the module, by way of the module: members of a class bear the same names.
NOMS = re.compile(r"(^|[^\w.])((?:section\.|servo\.)?(?:%s))\b" % "|".join(
    sorted({n for espace in (modele, modele.section, modele.servo) for n, v in vars(espace).items()
            if isinstance(v, type)}, key=lambda n: (-len(n), n))))
# What pybind11 does not know of these.
RENDUS = {"__enter__": "Soi", "__iter__": "Iterator[{membre}]", "__bool__": "bool", "__str__": "str",
          "__repr__": "str", "__len__": "int", "__hash__": "int", "__eq__": "bool"}


def type_python(texte):
    """`zuma._zuma.modele.X` and what else pybind11 writes, in the words of `typing`."""
    texte = re.sub(r"zuma\.(?:_zuma\.)?modele\.", "", texte)
    texte = re.sub(r"\[\d+\]", "", texte)  # the fixed length of a list
    for motif, rendu in GENRES:
        texte = re.sub(motif, rendu, texte)
    return NOMS.sub(r"\1_m.\2", texte)


def partage(texte):
    """The arguments, at the commas that stand outside of brackets and quotes."""
    texte = re.sub(r"'[^']*'", "''", texte)
    morceaux, profondeur, debut = [], 0, 0
    for place, signe in enumerate(texte):
        profondeur += (signe in "[({<") - (signe in "])}>" and texte[place - 1:place] != "-")
        if signe == "," and profondeur == 0:
            morceaux.append(texte[debut:place])
            debut = place + 1
    return [m.strip() for m in morceaux + [texte[debut:]] if m.strip()]


def argument(texte):
    if texte.startswith("*"):
        return texte.split(":")[0] + ": Any"
    nom, reste = texte.split(":", 1)
    genre, defaut = (re.split(r" = ", reste, maxsplit=1) + [None])[:2]
    return f"{nom}: {type_python(genre.strip())}" + ("" if defaut is None else " = ...")


def signatures(doc):
    """(arguments, result) of each overload."""
    return [(partage(m.group(2)), type_python(m.group(3).strip()))
            for m in map(SIGNATURE.fullmatch, (doc or "").splitlines()) if m]


def texte_de(doc):
    """What the documentation says behind the signatures."""
    lignes = [l for l in (doc or "").splitlines()
              if l and not SIGNATURE.fullmatch(l) and not l.startswith("Overloaded function")
              and "(*args, **kwargs)" not in l]
    return lignes[0] if lignes else ""


def fonction(nom, doc, retrait, methode, membre="Any"):
    formes = signatures(doc)
    for arguments, rendu in formes:
        if len(formes) > 1:
            yield f"{retrait}@overload"
        rendu = RENDUS.get(nom, rendu).format(membre=membre)
        arguments = [argument(a) for a in arguments]
        if methode:
            arguments[0] = "self: Soi" if nom == "__enter__" else "self"
        if nom == "__eq__":
            arguments[1] = "other: object"
        yield f"{retrait}def {nom}({', '.join(arguments)}) -> {rendu}: ..."


def propriete(nom, valeur, retrait):
    lu = signatures((valeur.fget.__doc__ if valeur.fget else "") or "")
    ecrit = signatures((valeur.fset.__doc__ if valeur.fset else "") or "")
    genre = lu[0][1] if lu else argument(ecrit[0][0][1]).split(": ", 1)[1]
    yield f"{retrait}@property"
    yield f"{retrait}def {nom}(self) -> {genre}: ..."
    if ecrit:
        yield f"{retrait}@{nom}.setter"
        yield f"{retrait}def {nom}(self, valeur: {genre}) -> None: ..."


def membre_de(classe):
    """What a collection holds."""
    doc = getattr(classe, "_membres", None)
    rendu = signatures(doc.fget.__doc__)[0][1] if doc else "List[Any]"
    return re.sub(r"^List\[(?:Optional\[)?([\w.]+).*", r"\1", rendu)


def classe(nom, valeur, retrait=""):
    if issubclass(valeur, enum.IntEnum):
        yield f"{retrait}class {nom}(IntEnum):"
        yield from (f"{retrait}    {m.name} = {int(m)}" for m in valeur)
        return
    bases = [b.__name__ for b in valeur.__bases__ if b.__module__.startswith("zuma")]
    yield f"{retrait}class {nom}" + (f"({', '.join(bases)})" if bases else "") + ":"
    dedans = retrait + "    "
    corps = []
    if issubclass(valeur, BaseException):
        corps += attributs_d_echec(valeur, dedans)
    for membre, objet in vars(valeur).items():
        if isinstance(objet, property):
            if not membre.startswith("_"):
                corps += propriete(membre, objet, dedans)
        elif isinstance(objet, staticmethod):
            corps += [f"{dedans}@staticmethod"] + list(fonction(membre, objet.__func__.__doc__,
                                                                dedans, False))
        elif inspect.isroutine(objet) and "->" in (objet.__doc__ or ""):
            corps += fonction(membre, objet.__doc__, dedans, True, membre_de(valeur))
        elif type(objet).__name__ == "pybind11_static_property":
            corps.append(f"{dedans}{membre}: ClassVar[Any]")
    yield from corps or [f"{dedans}..."]


def attributs_d_echec(valeur, retrait):
    if valeur is not modele.Echec:
        return []
    return [f"{retrait}Numéro: int", f"{retrait}Description: str", f"{retrait}Source: str",
            f"{retrait}Ligne: int",
            f"{retrait}def __init__(self, Numéro: int, Description: Optional[str] = ..., "
            "Source: str = ..., Ligne: int = ...) -> None: ..."]


def module(valeurs, retrait=""):
    for nom, valeur in valeurs.items():
        if nom.startswith("_"):
            continue
        if isinstance(valeur, type):
            yield ""
            yield from classe(nom, valeur, retrait)
        elif inspect.ismodule(valeur):
            if valeur.__name__.startswith("zuma"):
                yield f"\n{retrait}class {nom}:"
                yield from module(vars(valeur), retrait + "    ")
        elif inspect.isroutine(valeur):
            if retrait:
                yield f"{retrait}@staticmethod"
            yield from fonction(nom, valeur.__doc__, retrait, False)
        elif isinstance(valeur, (int, float, str, list)):
            yield f"{retrait}{nom}: {type(valeur).__name__ if not isinstance(valeur, list) else 'List[Any]'}"


def main():
    fichier = pathlib.Path(sys.argv[1])
    texte = ENTETE + "\n".join(module(vars(modele))) + "\n"
    if sys.argv[2:] == ["--check"]:
        if fichier.read_text() != texte:
            sys.exit(f"{fichier.name} is out of date: run tools/python_stubs.py")
        return
    fichier.write_text(texte)


main()
