"""A test of strength from approach to break, with its curve: tensile.py [DATABASE] [--picture FILE]

The machine loads while its valve is positive, and force, stress and strain grow with the load: so
the demo's press reads compression as positive. On a machine that pulls nothing here changes, where
its sensors read traction as positive and its valve is wired that way.
"""

from __future__ import annotations

import argparse

import numpy as np
from matplotlib.figure import Figure

import zuma

RATE = 0.6  # MPa/s
READY = 180.0  # bar of supply pressure
CONTACT = 0.3  # kN that tell the specimen is met
LOST = 0.8  # share of the largest force that tells the break
DEAD_BAND = 1.2  # % of the valve
GAIN, INTEGRAL = 3.0, 2.0  # % for each MPa, % for each MPa second


def arm(frame: zuma.Frame) -> None:
    """Watchdog first, the valve closed before there is pressure."""
    frame.watchdog.enabled = True
    frame.commands["Servovalve"].enabled = True
    frame.commands["Servovalve"].set(0, "%")
    frame.outputs["Pompe"].on()
    frame.outputs["Distributeur"].on()
    pressure = frame.sensors["Pression alimentation"]
    if not frame.run(seconds=10, until=lambda: pressure.value > READY):
        raise SystemExit(f"no pressure: {pressure}, {frame.causes}")


def approach(frame: zuma.Frame) -> None:
    force = frame.sensors["Force"]
    frame.commands["Servovalve"].set(10, "%")
    if not frame.run(seconds=60, until=lambda: force.value > CONTACT):
        raise SystemExit(f"no specimen met: {force}, {frame.causes}")


def load(frame: zuma.Frame) -> zuma.recording.Array:
    """Loads at a constant stress rate up to the break."""
    valve, integral, largest, last = frame.commands["Servovalve"], 0.0, 0.0, frame.time
    start, first = frame.time, frame.sensors["Contrainte"].value
    with frame.recording(["Force", "Contrainte", "Déformation"]) as recording:
        for sample in frame.samples(seconds=120):
            force, stress = sample["Force"], sample["Contrainte"]
            if not np.isfinite(force + stress):
                raise SystemExit(f"no reading: {frame.sensors['Force']}")
            largest = max(largest, force)
            if force < LOST * largest or frame.stopped:
                break
            error = first + RATE * (sample.time - start) - stress
            integral += error * (sample.time - last)
            last = sample.time
            valve.set(DEAD_BAND + GAIN * error + INTEGRAL * integral, clamp=True)
    rows = recording.data
    return rows[: int(rows["Contrainte"].argmax()) + 1]  # a broken specimen is no material


def unload(frame: zuma.Frame) -> None:
    frame.commands["Servovalve"].set(-20, "%")
    frame.run(seconds=2)
    frame.commands["Servovalve"].set(0, "%")
    frame.outputs["Distributeur"].off()
    frame.outputs["Pompe"].off()


def figures(data: zuma.recording.Array) -> tuple[float, float]:
    """Strength in MPa, and modulus in GPa: the slope between a fifth and three fifths of it."""
    stress, strain = data["Contrainte"], data["Déformation"]
    strength = float(stress.max())
    low, high = (int(np.searchsorted(stress, share * strength)) for share in (0.2, 0.6))
    return strength, float(np.polyfit(strain[low:high], stress[low:high], 1)[0]) / 10  # MPa/%


def main() -> None:
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("database", nargs="?")
    options.add_argument("--picture", default="tensile.png")
    chosen = options.parse_args()
    with zuma.open(chosen.database or zuma.demo(), sim=True, stops=False) as frame:
        arm(frame)
        approach(frame)
        data = load(frame)
        unload(frame)
    strength, modulus = figures(data)
    axes = (picture := Figure()).add_subplot(xlabel="strain [%]", ylabel="stress [MPa]")
    axes.plot(data["Déformation"], data["Contrainte"])
    picture.savefig(chosen.picture)
    print(f"Strength {strength:.3f} MPa, modulus {modulus:.2f} GPa: picture {chosen.picture}")


if __name__ == "__main__":
    main()
