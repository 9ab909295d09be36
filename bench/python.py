"""What driving a frame from Python costs: bench/python.py [PASSES]

Prints the time of a pass in a loop of C++ that does nothing else and of the same passes through
`frame.run`, in turn, and what reading 64 sensors as one array takes. Run with the package of an
optimised build: PYTHONPATH=build/release/python.
"""

from __future__ import annotations

import sqlite3
import statistics
import sys
import timeit

import zuma

PASSES = int(sys.argv[1]) if sys.argv[1:] else 100_000
ROUNDS = 7
SENSORS = 64
CALLS = 20_000


def loops(frame: zuma.Frame) -> None:
    native, python = [], []
    frame.run(seconds=PASSES / 1000)  # warm
    for _ in range(ROUNDS):
        native.append(frame._session.time_loop(PASSES) / PASSES)
        python.append(timeit.timeit(lambda: frame.run(seconds=PASSES / 1000), number=1) / PASSES)
    ratios = [p / n for p, n in zip(python, native)]
    print(f"pass in a C++ loop      {1e6 * statistics.median(native):8.3f} µs")
    print(f"pass through frame.run  {1e6 * statistics.median(python):8.3f} µs")
    print(f"ratio, median of {ROUNDS}      {statistics.median(ratios):8.3f}")
    asked = timeit.timeit(lambda: frame.run(seconds=PASSES / 1000, until=lambda: False), number=1)
    print(f"pass with an until      {1e6 * asked / PASSES:8.3f} µs (asked at each refresh)")


def more_sensors(database: str) -> None:
    """Copies a sensor of the demo frame until there are as many as are to be read."""
    with sqlite3.connect(database) as rows:
        columns = [row[1] for row in rows.execute('PRAGMA table_info("Capteur")')]
        names = ", ".join(f'"{column}"' for column in columns if column != "Index")
        for index in range(1000, 1000 + SENSORS - 19):
            rows.execute(
                f'INSERT INTO "Capteur" ("Index", {names}) '
                f'SELECT {index}, {names} FROM "Capteur" WHERE "Index" = 1'
            )
            rows.execute(
                'INSERT INTO "Liaison Chassis / Capteur" ("Chassis", "Capteur", "Index", "Label") '
                f"VALUES (1, {index}, {index}, 'Force {index}')"
            )


def readings(frame: zuma.Frame) -> None:
    frame.run(seconds=1)
    each = min(timeit.repeat(frame.values, number=CALLS, repeat=ROUNDS)) / CALLS
    print(f"{len(frame.values())} sensors as an array   {1e6 * each:8.3f} µs (best of {ROUNDS})")
    one = frame.sensors["Force"]
    each = min(timeit.repeat(lambda: one.value, number=CALLS, repeat=ROUNDS)) / CALLS
    print(f"one sensor's value      {1e6 * each:8.3f} µs")


def main() -> None:
    with zuma.open(zuma.demo(), sim=True, stops=False) as frame:
        loops(frame)
    database = zuma.demo()
    more_sensors(database)
    with zuma.open(database, sim=True, stops=False) as frame:
        readings(frame)


if __name__ == "__main__":
    main()
