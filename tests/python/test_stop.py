"""A stop arrives whatever the program does, and nothing moves behind it by itself."""

from __future__ import annotations

import os
import signal
import subprocess
import sys
import textwrap
import threading
import time

import pytest
import zuma
import zuma.modele


def move(frame: zuma.Frame) -> None:
    frame.watchdog.enabled = True
    frame.outputs["Pompe"].on()
    frame.commands["Consigne 1"].enabled = True
    frame.commands["Consigne 1"].set(50)
    frame.run(seconds=0.3)


def is_at_rest(frame: zuma.Frame) -> bool:
    volts = frame.sim.wired("ACL 6128 - Consignes/Sortie Analogique/Consigne 1").volts
    return volts == 0 and not frame.outputs["Pompe"].active and frame.at_rest


def test_an_open_door_ends_the_run_and_holds_until_it_is_acknowledged(frame):
    heard = []
    frame.on_stop(lambda cause: heard.append((cause, is_at_rest(frame))))
    move(frame)
    frame.sim.door_closed = False
    assert not frame.run(seconds=5) and frame.stopped
    assert heard == [(frame.causes[0], True)] and "Porte fermée" in heard[0][0]
    for refused in (
        lambda: frame.commands["Consigne 1"].set(10),
        lambda: setattr(frame.commands["Consigne 1"], "enabled", True),
        lambda: setattr(frame.watchdog, "enabled", True),
        frame.outputs["Pompe"].on,
        frame.sensors["Force"].tare,
    ):
        with pytest.raises(zuma.FrameStopped, match="Porte fermée"):
            refused()
    frame.acknowledge()
    frame.run(seconds=1)
    assert frame.stopped and len(heard) == 2  # the door is open still
    frame.sim.door_closed = True
    frame.run(seconds=1)
    assert not frame.resume() and frame.acknowledge() and frame.resume()
    frame.run(seconds=1)
    assert not frame.stopped and is_at_rest(frame) and frame.watchdog.enabled


def test_stop_asked_for_by_the_program_names_its_cause(frame):
    move(frame)
    frame.stop("smoke")
    assert is_at_rest(frame) and frame.causes == ["smoke"]
    assert frame.run(seconds=0.1)  # one that was latched before ends no run


def fail():
    raise ValueError("no such luck")


def interrupt():
    os.kill(os.getpid(), signal.SIGINT)
    return False


@pytest.mark.parametrize(
    "callback, error, cause",
    [(fail, ValueError, "ValueError: no such luck"), (interrupt, KeyboardInterrupt, "keyboard")],
)
def test_what_leaves_a_callback_stops_the_frame_and_reaches_the_caller(frame, callback, error, cause):
    move(frame)
    with pytest.raises(error):
        frame.run(seconds=3600, until=callback)
    assert is_at_rest(frame) and cause in frame.causes[0]


def test_ctrl_c_stops_a_run_without_callbacks(database):
    with zuma.open(database, sim=True, realtime=True, stops=False) as frame:
        move(frame)
        threading.Timer(0.2, interrupt).start()
        with pytest.raises(KeyboardInterrupt):
            frame.run(seconds=30)
        assert is_at_rest(frame) and frame.time < 25


def test_a_run_neither_nests_nor_closes_its_frame(frame):
    for nested in (lambda: frame.run(seconds=1), frame.step, frame.close):
        with pytest.raises(zuma.UsageError, match="runs already"):
            frame.run(seconds=1, until=nested)
        assert frame.stopped and frame.acknowledge()


def test_the_frame_belongs_to_its_thread_and_leaves_the_others_running(database):
    with zuma.open(database, sim=True, realtime=True, stops=False) as frame:
        refused, counted = [], []

        def other():
            for act in (lambda: frame.sensors["Force"].value, frame.step, frame.close, frame.values):
                try:
                    act()
                except zuma.WrongThread as error:
                    refused.append(error)
            end = time.monotonic() + 0.3
            while time.monotonic() < end:
                counted.append(1)

        thread = threading.Thread(target=other)
        thread.start()
        frame.run(seconds=0.5)
        thread.join()
        assert len(refused) == 4 and len(counted) > 1000 and not frame.closed


def test_what_is_kept_of_a_closed_frame_is_refused(database):
    with zuma.open(database, sim=True, stops=False) as frame:
        kept = [*frame.sensors.values(), *frame.commands.values(), *frame.channels.values()]
        sensor, terminal = frame.sensors["Force"], frame.sim.wired("Force grande")
        recording = frame.recording(["Force"])
        frame.run(seconds=0.1)
    assert all("closed" in repr(thing) for thing in [*kept, frame])
    for use in (
        lambda: sensor.value, sensor.zero, frame.values, frame.run, frame.acknowledge,
        lambda: frame.stopped, lambda: terminal.hold(1), lambda: frame.sim.force, frame.__enter__,
        lambda: frame.sim.advance(1), frame.outputs["Pompe"].on,
    ):  # fmt: skip
        with pytest.raises(zuma.FrameClosed):
            use()
    assert len(recording.data) >= 19
    frame.close()


# What was registered before the package runs behind it: the last sample tells where outputs stand.
ENDING = textwrap.dedent(
    """
    import atexit, os, signal, sys, threading, time
    views = []
    atexit.register(lambda: print(views[0]["output:Pompe"], views[0]["Consigne 1"], flush=True))
    import zuma

    def start():
        frame = zuma.open(zuma.demo(), sim=True, stops=False)
        frame.outputs["Pompe"].on()
        frame.commands["Consigne 1"].enabled = True
        frame.commands["Consigne 1"].set(50)
        frame.run(seconds=0.3)
        views.append(zuma.attach(frame))
        assert (views[0]["output:Pompe"], views[0]["Consigne 1"]) == (1, 50)
        return frame
    """
)
THREAD = """
threading.Thread(target=lambda: start().run(), daemon=True).start()
while not views: time.sleep(0.01)
time.sleep(0.1)
"""


@pytest.mark.parametrize(
    "way, code",
    [
        ("frame = start()", 0),
        ("frame = start(); raise ValueError", 1),
        ("frame = start(); sys.exit(3)", 3),
        ("frame = start(); os.kill(os.getpid(), signal.SIGTERM); time.sleep(30)", 143),
        ("frame = start(); frame.run(until=lambda: os.kill(os.getpid(), signal.SIGHUP))", 129),
        ("frame = start(); frame = None; assert views[0].ended", 0),
        (THREAD, 0),
        ("frame = start(); child = os.fork()\nif child: os.waitpid(child, 0)\nelse: os.dup2(2, 1)", 0),
    ],
    ids=["end", "exception", "exit", "SIGTERM", "SIGHUP", "dropped", "thread", "child"],
)
def test_outputs_come_to_rest_by_whatever_way_the_program_ends(way, code):
    ended = subprocess.run(
        [sys.executable, "-c", ENDING + way], capture_output=True, text=True, timeout=300
    )
    assert (ended.stdout, ended.returncode) == ("0.0 0.0\n", code), ended.stderr
    if "fork" in way:  # the child, whose words go the other way, has touched nothing
        assert ended.stderr == "1.0 50.0\n"


def test_the_model_lives_as_long_as_its_frame_and_its_listeners_stop_it_when_they_fail(database):
    with zuma.open(database, sim=True, stops=False) as frame:
        move(frame)
        door = next(e for e in frame.model.EntréesLogiques if e.Label == "Porte fermée")
        door.AbonneChange(lambda state: fail())
        frame.sim.door_closed = False
        with pytest.raises(ValueError, match="no such luck"):
            frame.run(seconds=3600)
        assert is_at_rest(frame) and frame.time < 5
    with pytest.raises(zuma.modele.ChassisFermé):
        door.Label
