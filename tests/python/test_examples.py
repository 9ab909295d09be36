"""The examples run, and their figures are those that a pencil gives."""

from __future__ import annotations

import math
import os
import re
import subprocess
import sys
from pathlib import Path

import pytest
import zuma

EXAMPLES = Path(os.environ["ZUMA_EXAMPLES"])
SECTION = math.pi / 4 * 0.050**2  # of the demo's specimen, square metres


def run(name: str, *arguments: str) -> str:
    command = [sys.executable, str(EXAMPLES / f"{name}.py"), *arguments]
    return subprocess.run(command, check=True, capture_output=True, text=True, timeout=600).stdout


def numbers(text: str) -> list[float]:
    return [float(number) for number in re.findall(r"-?\d+\.\d+", text)]


def test_the_strength_is_that_of_the_simulated_specimen(tmp_path):
    picture = tmp_path / "curve.png"
    strength, modulus = numbers(run("tensile", "--picture", str(picture)).split(":")[0])
    assert strength == pytest.approx(60e3 / SECTION / 1e6, rel=0.001)  # breaks at 60 kN
    assert modulus == pytest.approx(4.9e8 * 0.1 / SECTION / 1e9, rel=0.005)  # 4.9e8 N/m over 0.1 m
    assert picture.read_bytes().startswith(b"\x89PNG") and picture.stat().st_size > 5000


def test_the_force_asked_for_is_reached():
    force, seconds = numbers(run("readme"))
    assert force == pytest.approx(50.0, abs=0.2) and seconds < 60


def test_the_cell_reads_what_the_calibrator_gives():
    lines = run("calibrate").splitlines()
    assert numbers(lines[0]) == [pytest.approx(0.5, abs=0.005)]  # 0.05 V of 10 V for 100 kN
    assert [numbers(line)[0] for line in lines[1:-1]] == [0.0, 20.0, 40.0, 60.0, 80.0]
    slope, worst = numbers(lines[-1])
    assert slope == pytest.approx(1, abs=0.0005) and worst < 0.025  # a count of 12 bits over 100 kN


def test_the_same_seed_gives_the_same_run():
    once, again = (run("soak", "--hours", "0.001") for _ in range(2))
    assert once == again and "Lost for good: none" in once
    passes, refreshes = map(int, re.findall(r"(\d+) (?:passes|refreshes)", once))
    assert 1000 < passes <= 3600 and 500 < refreshes <= 720  # 3.6 s, 200 Hz


def test_the_watcher_draws_a_frame_of_another_program(frame, database, tmp_path):
    frame.sim.wired("Force petite").hold(5.0)
    frame.run(seconds=3)
    picture = tmp_path / "watch.png"
    told = run("watch", database, "--once", str(picture))
    assert "Force = 5" in told and "kN" in told
    assert picture.read_bytes().startswith(b"\x89PNG") and picture.stat().st_size > 5000
