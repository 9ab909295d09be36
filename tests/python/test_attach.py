"""Frames looked at from outside: live, overtaken, dead."""

from __future__ import annotations

import os
import signal
import subprocess
import sys

import numpy as np
import pytest
import zuma


def test_a_view_tells_what_the_frame_holds(frame, database):
    frame.sim.wired("Force petite").hold(5.0)
    frame.run(seconds=0.5)
    view = zuma.attach(frame)
    assert view["Force"] == frame.sensors["Force"].value == pytest.approx(5.0, abs=0.01)
    assert view.unit("Force") == "kN" and view.state("Force") == "ok"
    assert (view.name, view.frame, view.simulated) == (frame.name, 1, True)
    assert zuma.attach(database)["Force"] == view["Force"]
    with pytest.raises(zuma.NoSuchName, match="Force"):
        view["Farce"]
    mine = [found for found in zuma.running() if found.database == database]
    assert [(f.alive, f.pid, f.file) for f in mine] == [(True, os.getpid(), view.file)]
    frame.stop("smoke")
    frame.step()
    assert [e.text for e in view.events() if e.kind == "stop"] == ["smoke"]
    history = view.history(0.2, ["Force", "Déplacement"])
    assert 38 <= len(history) <= 42 and zuma.units(history)["Déplacement"] == "mm"
    assert view.latest().stopped and not view.ended
    frame.close()
    assert view.ended


def test_the_ring_is_looked_at_where_it_lies(frame):
    view = zuma.attach(frame)
    ring = view.ring()
    frame.run(seconds=0.1)
    last = view.latest()
    place = ring[last.number % len(ring)]
    assert place["sequence"] == 2 * last.number + 2 and place["time"] == last.time
    np.testing.assert_array_equal(place["objects"]["value"], last.values)
    assert place["objects"]["age"] == pytest.approx(last.ages)
    frame.run(seconds=0.1)  # no call of the view's between
    assert ring["time"].max() == pytest.approx(frame.time, abs=0.006)
    with pytest.raises(ValueError, match="read-only"):
        ring["time"][0] = 0
    del view
    frame.close()
    assert ring["time"].max() > 0


def test_who_is_overtaken_is_told_what_was_missed(database, monkeypatch):
    monkeypatch.setenv("ZUMA_PUBLICATION_SECONDS", "0.5")
    with zuma.open(database, sim=True, stops=False) as frame:
        frame.run(seconds=0.1)
        view = zuma.attach(frame)
        seen = view.samples(since=0)
        first = next(seen)
        places = len(view.ring())
        frame.run(seconds=5)
        behind = next(seen)
        assert first.missed == 0 and behind.missed == behind.number - 1 > 800
        rest = [next(seen) for _ in range(places - 1)]
        assert [s.missed for s in rest] == [0] * (places - 1)
        assert rest[-1].time == pytest.approx(frame.time, abs=0.006)
    assert list(seen) == []  # its program has ended


def test_a_dead_program_leaves_a_black_box(database):
    script = (
        "import os, sys, zuma\n"
        "frame = zuma.open(sys.argv[1], sim=True, stops=False)\n"
        "frame.outputs['Pompe'].on(); frame.run(seconds=0.1)\n"
        "print(frame.publication, flush=True); os.kill(os.getpid(), 9)"
    )
    run = [sys.executable, "-c", script, database]
    died = subprocess.run(run, capture_output=True, text=True, timeout=300)
    assert died.returncode == -signal.SIGKILL
    box = zuma.attach(died.stdout.strip())
    assert box.ended and box["output:Pompe"] == 1 and len(list(box.samples(since=0))) >= 19
    assert [found.alive for found in zuma.running() if found.file == box.file] == [False]
    os.remove(box.file)
    with pytest.raises(zuma.Unreadable):
        zuma.View(__file__)
