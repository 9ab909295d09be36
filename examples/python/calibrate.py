"""Checks a force cell against a calibrator: zero, then rising steps. calibrate.py [DATABASE]

The demo's calibrator is a voltage at the terminals of the simulated machine. On a real one
`apply` asks the person at the machine to put the reference on, and `frame.sim` is None.
"""

from __future__ import annotations

import argparse

import numpy as np

import zuma

SENSOR = "Force grande"
FULL_SCALE = 100.0  # kN
VOLTS = 10.0  # of the cell at full scale
OFFSET = 0.05  # V that the cell gives without a load
STEPS = [0.0, 20.0, 40.0, 60.0, 80.0]  # kN
SETTLE, MEAN = 0.5, 1.0  # seconds


def apply(frame: zuma.Frame, reference: float) -> None:
    """Puts a reference force on the cell."""
    if frame.sim is None:
        input(f"Put {reference:g} kN on {SENSOR}, then Enter: ")
    else:
        frame.sim.wired(SENSOR).hold(OFFSET + reference * VOLTS / FULL_SCALE)


def zero(frame: zuma.Frame) -> float:
    """Zeroes the cell without a load, and gives what it read before, in kN."""
    cell = frame.sensors[SENSOR]
    apply(frame, 0)
    frame.run(seconds=SETTLE)
    before = cell.value
    cell.zero()
    if not frame.run(seconds=5, until=lambda: not cell.busy):
        raise SystemExit(f"no zero: {cell}")
    return float(before)


def read(frame: zuma.Frame, reference: float) -> tuple[float, float]:
    """Mean and scatter of the readings at a reference, in kN."""
    apply(frame, reference)
    frame.run(seconds=SETTLE)
    readings = frame.record(seconds=MEAN, names=[SENSOR])[SENSOR]
    return float(readings.mean()), float(readings.std())


def main() -> None:
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("database", nargs="?")
    chosen = options.parse_args()
    with zuma.open(chosen.database or zuma.demo(), sim=True, stops=False) as frame:
        offset = zero(frame)
        rows = [(reference, *read(frame, reference)) for reference in STEPS]
        unit = frame.sensors[SENSOR].unit
    print(f"{SENSOR}: {offset:.3f} {unit} taken off by the zero")
    for reference, mean, scatter in rows:
        print(f"  {reference:6.1f} {unit}  read {mean:8.3f}  off {mean - reference:+.3f}  "
              f"scatter {scatter:.4f}")  # fmt: skip
    references, means = np.array([row[:2] for row in rows]).T
    slope = np.polyfit(references, means, 1)[0]
    worst = np.abs(means - references).max() / FULL_SCALE
    print(f"Slope {slope:.5f}, worst {100 * worst:.3f} % of full scale")


if __name__ == "__main__":
    main()
