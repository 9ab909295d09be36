"""The simulated machine in a person's hands."""

from __future__ import annotations

import time

import pytest
import zuma


def test_the_press_breaks_a_specimen_at_the_force_asked_for(frame):
    frame.sim.break_force, frame.sim.contact = 20e3, 0.045
    frame.watchdog.enabled = True
    frame.outputs["Pompe"].on()
    frame.outputs["Distributeur"].on()
    frame.run(seconds=2)
    frame.commands["Servovalve"].enabled = True
    frame.commands["Servovalve"].set(10)
    assert frame.run(seconds=60, until=lambda: frame.sim.broken)
    assert frame.sensors["Force"].maximum == pytest.approx(20, rel=0.01)
    frame.sim.new_specimen()
    assert not frame.sim.broken
    with pytest.raises(zuma.UsageError):
        frame.sim.stiffness = -1


def test_faults_strike_by_name_and_end(database):
    with zuma.open(database, 3, sim=True, stops=False) as frame:
        frame.on_problem(None)
        frame.run(seconds=1)

        def old():
            return {name for name, sensor in frame.sensors.items() if sensor.old}

        assert not old()
        frame.sim.fault("silence:9")
        frame.sim.advance(5)
        assert old() and frame.problems
        frame.sim.clear_faults()
        frame.sim.advance(10)
        assert not old()
        with pytest.raises(zuma.UsageError, match="silence"):
            frame.sim.fault("hiccups:9")


def test_time_goes_as_it_is_told_to(database):
    with zuma.open(database, sim=True, rate=4, stops=False) as frame:
        began = time.monotonic()
        frame.run(seconds=1)
        paced = time.monotonic() - began
        assert paced > 0.2
        frame.sim.advance(200)  # as fast as it can
        assert frame.time > 200 and time.monotonic() - began - paced < 50


def test_terminals_take_what_their_channel_reads(frame):
    contact = frame.sim.wired("PCL 731 - Pupitre/Entrée Logique/Montée")
    for state in (True, False):
        contact.hold_state(state)
        frame.run(seconds=0.3)
        assert frame.inputs["Montée"].active is state
    with pytest.raises(zuma.UsageError, match="no analog input"):
        contact.hold(5)
    with pytest.raises(zuma.NoSuchName):
        frame.sim.wired("Montagne")
