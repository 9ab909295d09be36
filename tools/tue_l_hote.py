#!/usr/bin/env python3
"""Kills a host at random instants, and looks at what its black box still tells:
tue_l_hote.py PROGRAM [KILLS]

Each time the map must be readable, its last sample whole, and the program must tell it. What the kill
lost is the time from the last sample that the black box holds to the kill, by the clock that both read;
one period of the sensors (5 ms at the demo frame's 200 Hz) is what may be missing."""
import mmap
import os
import pathlib
import random
import signal
import struct
import subprocess
import sys
import tempfile
import time

PAGE = 4096
MAGIE, ECHANTILLONS, PLACES, MOTS, ECRITS = 0, 11, 12, 13, 14  # words of the header
MONOTONE, PASSE = 2, 3  # words of a sample


def mot(carte, rang):
    return struct.unpack_from("<Q", carte, 8 * rang)[0]


def dernier(carte):
    """Number, nanoseconds and pass of the last sample; it must be whole."""
    numero = mot(carte, ECRITS) - 1
    debut = mot(carte, ECHANTILLONS) + numero % mot(carte, PLACES) * mot(carte, MOTS)
    assert mot(carte, debut) == 2 * numero + 2, "the last sample is torn"
    return numero, mot(carte, debut + MONOTONE), mot(carte, debut + PASSE)


def tue(programme, base, dossier, hasard):
    """Seconds that one kill lost."""
    for reste in dossier.glob("*.pub*"):
        reste.unlink()
    hote = subprocess.Popen([programme, "run", base, "--sim", "--seconds", "60"],
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    while not (cartes := [c for c in dossier.glob("*.pub") if c.stat().st_size > PAGE]):
        time.sleep(0.002)
    time.sleep(hasard.uniform(0.02, 0.6))
    tuee = time.monotonic_ns()
    os.kill(hote.pid, signal.SIGKILL)
    hote.wait()
    with open(cartes[0], "rb") as fichier:
        carte = mmap.mmap(fichier.fileno(), 0, access=mmap.ACCESS_READ)
    if mot(carte, MAGIE) == 0 or mot(carte, ECRITS) == 0:
        return None  # killed before its first pass: there was nothing to lose
    numero, nanosecondes, _ = dernier(carte)
    dit = subprocess.run([programme, "blackbox", str(cartes[0])], capture_output=True, text=True)
    assert dit.returncode == 0 and "its host died" in dit.stdout, dit.stdout + dit.stderr
    return (tuee - nanosecondes) / 1e9


def main():
    programme = os.path.abspath(sys.argv[1])
    fois = int(sys.argv[2]) if len(sys.argv) > 2 else 300
    hasard = random.Random(fois)
    with tempfile.TemporaryDirectory(dir="/dev/shm") as provisoire:
        dossier = pathlib.Path(provisoire)
        os.environ["ZUMA_PUBLICATIONS"] = provisoire
        base = str(dossier / "demo.db")
        subprocess.run([programme, "init", base], check=True, stdout=subprocess.DEVNULL)
        pertes = []
        for numero in range(fois):
            perte = tue(programme, base, dossier, hasard)
            if perte is not None:
                pertes.append(perte)
            print(f"\r{numero + 1} of {fois}", end="", file=sys.stderr, flush=True)
    pertes.sort()
    print(f"\n{fois} kills, {len(pertes)} behind a first sample, each readable; from the last sample to "
          f"the kill: median {1e3 * pertes[len(pertes) // 2]:.2f} ms, 99 % "
          f"{1e3 * pertes[int(0.99 * (len(pertes) - 1))]:.2f} ms, longest {1e3 * pertes[-1]:.2f} ms")


if __name__ == "__main__":
    main()
