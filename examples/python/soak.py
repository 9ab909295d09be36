"""Runs a frame for hours of its own time, disturbed by chance: soak.py [DATABASE] [--hours H]

The same seed gives the same run. Ends with code 1 where readings did not come back.
"""

from __future__ import annotations

import argparse
import sys

import zuma

QUIET = 10.0  # seconds without faults at the end, in which all readings have to come back
REPORT = 600.0  # seconds between two lines


def disturb(frame: zuma.Frame, hours: float) -> None:
    """Passes up to the end, with a line from time to time."""
    assert frame.sim is not None
    seconds = hours * 3600
    while frame.time < seconds:
        frame.sim.advance(min(REPORT, seconds - frame.time))
        old = sum(sensor.old for sensor in frame.sensors.values())
        print(f"{frame.time:9.1f} s: {frame.passes} passes, {frame.refreshes} refreshes, "
              f"{old} sensors old, {len(frame.problems)} problems told")  # fmt: skip


def recover(frame: zuma.Frame) -> list[str]:
    """The faults end; the sensors that are not read again."""
    assert frame.sim is not None
    frame.sim.clear_faults()
    frame.sim.advance(QUIET)
    return [name for name, sensor in frame.sensors.items() if sensor.old or not sensor.read]


def main() -> int:
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("database", nargs="?")
    options.add_argument("--frame", type=int, default=3)
    options.add_argument("--hours", type=float, default=1.0)
    options.add_argument("--seed", type=int, default=7)
    chosen = options.parse_args()
    with zuma.open(
        chosen.database or zuma.demo(), chosen.frame, sim=True, stops=False, seed=chosen.seed
    ) as frame:
        assert frame.sim is not None
        frame.on_problem(None)  # what faults do is no news here; they are counted
        frame.sim.fault("random")
        disturb(frame, chosen.hours)
        lost = recover(frame)
    print(f"Lost for good: {', '.join(lost) or 'none'}")
    return 1 if lost else 0


if __name__ == "__main__":
    sys.exit(main())
