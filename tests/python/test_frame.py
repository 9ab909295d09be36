"""What a person reads and sets on a frame, and what is refused."""

from __future__ import annotations

import math
import sqlite3

import numpy as np
import pytest
import zuma

SETPOINT = "ACL 6128 - Consignes/Sortie Analogique/Consigne 1"


def test_a_frame_that_cannot_be_had_is_refused_with_the_reason(database, tmp_path):
    with pytest.raises(zuma.UsageError, match="absent.db"):
        zuma.open(tmp_path / "absent.db", sim=True)
    with pytest.raises(zuma.UsageError, match="77"):
        zuma.open(database, 77, sim=True)
    with zuma.open(database, sim=True), pytest.raises(zuma.AlreadyRunning) as refused:
        zuma.open(database, sim=True)
    assert refused.value.pid > 0
    with pytest.raises(zuma.UsageError, match="exist|58"):
        zuma.demo(database)
    with zuma.open(tmp_path / "new.db", 1, True, create=True) as made:
        assert made.name == "Presse de démonstration"


def test_wrong_rows_refuse_the_start_and_are_told_by_table_row_and_column(database):
    with sqlite3.connect(database) as rows:
        rows.execute('UPDATE "Capteur" SET "Canal" = 99999 WHERE "Index" = 1')
    with pytest.raises(zuma.FrameRefused) as refused:
        zuma.open(database, sim=True)
    told = [(p.table, p.row, p.column, p.found) for p in refused.value.problems]
    assert ("Capteur", "1", "Canal", "99999") in told
    with zuma.open(database, sim=True, start_anyway=True, stops=False) as frame:
        assert frame.stopped and frame.problems
        with pytest.raises(zuma.FrameStopped):
            frame.outputs["Pompe"].on()


def test_readings_have_the_units_of_the_volts_at_the_terminals(frame):
    frame.sim.wired("Force grande").hold(0.4)  # 100 kN for 10 V
    frame.sim.wired("Force petite").hold(4.0)  # 10 kN for 10 V
    frame.sim.wired("Déplacement").hold(5.0)  # 200 mm for 10 V
    frame.run(seconds=1)
    force = frame.sensors["Force"]
    assert (force.value, force.unit) == (pytest.approx(4.0, abs=0.01), "kN")
    assert frame.sensors["Force grande"].value == pytest.approx(4.0, abs=0.05)
    assert frame.sensors["Déplacement"].value == pytest.approx(100.0, abs=0.1)
    assert force.state == "ok" and not force.old and force.limits == (-5.0, 95.0)
    assert "Force: 4.0" in repr(force) and "kN, ok" in repr(force)
    frame.sim.wired("Force petite").release()
    frame.run(seconds=1)
    assert frame.sensors["Force petite"].value == pytest.approx(0.0, abs=0.01)


def test_zero_and_tare_take_off_what_is_there(frame):
    cell = frame.sensors["Force petite"]
    frame.sim.wired("Force petite").hold(0.1)
    frame.run(seconds=0.5)
    cell.zero()
    assert cell.busy and frame.run(seconds=1, until=lambda: not cell.busy)
    assert cell.value == pytest.approx(0.0, abs=0.01)
    cell.tare(7.5)
    frame.run(seconds=1, until=lambda: not cell.busy)
    assert cell.value == pytest.approx(7.5, abs=0.01)
    cell.cancel_tare()
    cell.cancel_zero()
    frame.run(seconds=0.5)
    assert cell.value == pytest.approx(0.1, abs=0.01)
    with pytest.raises(zuma.UsageError, match="does not allow"):
        frame.sensors["Contrainte"].zero()


def test_values_are_one_array_in_the_order_of_the_sensors(frame):
    frame.run(seconds=0.1)
    first = frame.values()
    assert first.tolist() == [sensor.value for sensor in frame.sensors.values()]
    assert frame.values() is first
    own = np.empty(len(frame.sensors))
    assert frame.values(out=own) is own and own.tolist() == first.tolist()
    with pytest.raises(zuma.UsageError):
        frame.values(out=np.empty(3))
    with pytest.raises(TypeError):  # a copy would be filled, and thrown away
        frame.values(out=np.empty(len(frame.sensors), dtype=np.float32))


def test_an_instrument_that_never_answered_reads_no_number(database):
    with zuma.open(database, 4, sim=True, stops=False, start_anyway=True, faults=["silence"]) as frame:
        frame.on_problem(None)
        frame.run(seconds=1, through_stop=True)
        silent = [name for name, sensor in frame.sensors.items() if not sensor.read]
        assert silent
        for name in silent:
            assert math.isnan(frame.sensors[name].value)
            assert math.isnan(frame.values()[list(frame.sensors).index(name)])


def test_names_complete_and_a_wrong_one_gets_the_nearest(frame):
    with pytest.raises(KeyError, match='did you mean "Force"'):
        frame.sensors["force "]
    with pytest.raises(zuma.NoSuchName, match="there are: .*Pompe"):
        frame.outputs["zzzz"]
    assert frame.sensors["Force 100 kN"].label == "Force grande"  # by the name of its row
    assert "Servovalve" in dir(frame.commands)
    assert "Force grande" in frame.sensors._ipython_key_completions_()
    assert frame.commands.Servovalve.label == "Servovalve"


def test_set_points_reach_the_terminal_and_what_is_wrong_is_refused(frame):
    command, terminal = frame.commands["Consigne 1"], frame.sim.wired(SETPOINT)
    with pytest.raises(zuma.UsageError, match="out of service"):
        command.set(50)
    command.enabled = True
    command.set(50, "%")
    assert terminal.volts == pytest.approx(5.0, abs=0.01) and command.reached
    for wrong in (101, -1, math.nan, math.inf):
        with pytest.raises(zuma.UsageError):
            command.set(wrong)
    with pytest.raises(zuma.UsageError, match='unit is "%", not "kN"'):
        command.set(10, "kN")
    assert terminal.volts == pytest.approx(5.0, abs=0.01)
    command.set(500, clamp=True)
    assert command.value == 100 and command.saturated
    with pytest.raises(zuma.UsageError, match="follows its sensor"):
        frame.commands["Recopie force"].enabled = True
        frame.commands["Recopie force"].set(1)


def test_runs_end_where_they_were_told_to(frame):
    began = frame.time
    assert frame.run(seconds=0.5) and frame.time - began == pytest.approx(0.5, abs=0.002)
    asked = []
    assert frame.run(until=lambda: asked.append(frame.time) or len(asked) == 5, at=50)
    assert np.diff(asked) == pytest.approx([0.02] * 4, abs=0.006)
    assert not frame.run(seconds=0.1, until=lambda: False)
    passes = frame.passes
    frame.step(7)
    assert frame.passes == passes + 7
    for wrong in (-1, math.nan, math.inf):
        with pytest.raises(zuma.UsageError):
            frame.run(seconds=wrong)
    times = [sample.time for sample in frame.samples(seconds=0.1)]
    assert len(times) == 20 and np.diff(times) == pytest.approx([0.005] * 19, abs=0.0011)
