"""Curves of a frame that any program of this machine runs: watch.py [WHERE] [--names NAME...]

WHERE is a publication, what a program left that died, or a database; without it the only frame that
runs. `--once FILE.png` makes one picture and ends.
"""

from __future__ import annotations

import argparse

from matplotlib.figure import Figure

import zuma

PERIOD = 100  # milliseconds between two pictures


def draw(picture: Figure, view: zuma.View, names: list[str], seconds: float) -> None:
    """One curve below the other, of the last `seconds`."""
    data = view.history(seconds, names)
    units = zuma.units(data)
    picture.clear()
    for axes, name in zip(picture.subplots(len(names), 1, squeeze=False)[:, 0], names):
        axes.plot(data["time"], data[name])
        axes.set_ylabel(f"{name} [{units[name]}]")
    axes.set_xlabel("time [s]")
    picture.suptitle(f"{view.name}: {view.latest().time:.1f} s" + (", ended" if view.ended else ""))


def live(view: zuma.View, names: list[str], seconds: float) -> None:
    from matplotlib import animation, pyplot

    picture = pyplot.figure()
    moving = animation.FuncAnimation(
        picture, lambda _: draw(picture, view, names, seconds), interval=PERIOD, cache_frame_data=False
    )
    pyplot.show()
    del moving


def main() -> None:
    options = argparse.ArgumentParser(description=__doc__)
    options.add_argument("where", nargs="?")
    options.add_argument("--names", nargs="+", default=["Force", "Déplacement"])
    options.add_argument("--seconds", type=float, default=10.0)
    options.add_argument("--once", metavar="FILE.png")
    chosen = options.parse_args()
    view = zuma.attach(chosen.where)
    if chosen.once is None:
        live(view, chosen.names, chosen.seconds)
        return
    picture = Figure(figsize=(8, 6))
    draw(picture, view, chosen.names, chosen.seconds)
    picture.savefig(chosen.once)
    for name in chosen.names:
        print(f"{name} = {view[name]:g} {view.unit(name)}")


if __name__ == "__main__":
    main()
