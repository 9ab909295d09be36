"""Readings as arrays, from a frame and from a file."""

from __future__ import annotations

import numpy as np
import pytest
import zuma

CSV = """time [s],Force 100 kN [kN],a
0.005,1.5,2
0.01,,3
# 2 rows lost from 0.015 s to 0.02 s,,
0.025,-4.25,5
"""


def test_a_record_has_a_row_for_each_refresh_with_units(frame):
    frame.sim.wired("Force petite").hold(5.0)
    frame.run(seconds=0.5)
    data = frame.record(seconds=1, names=["Force", "Consigne 1", "Pompe", "Armé"])
    assert len(data) == 200 and np.diff(data["time"]) == pytest.approx(0.005, abs=0.0011)
    assert data["Force"] == pytest.approx(5.0, abs=0.01)
    assert (data["Consigne 1"] == 0).all() and (data["Armé"] == 1).all()
    assert zuma.units(data)["Force"] == "kN" and zuma.units(data["Force"]) == {}
    assert list(frame.record(seconds=0.1).dtype.names) == ["time", *frame.sensors]
    with pytest.raises(zuma.NoSuchName, match="Force"):
        frame.recording(["Farce"])


def test_a_recording_ends_with_its_block_and_keeps_its_rows(frame):
    frame.run(seconds=0.1)
    with frame.recording(["Force"]) as recording:
        frame.run(seconds=0.1)
        frame.step(100)
        rows = len(recording)
    frame.run(seconds=1)
    assert rows == len(recording.data) == 40


def test_a_file_is_read_with_its_units_its_gaps_and_no_number_for_what_is_missing(tmp_path):
    (tmp_path / "run.csv").write_text(CSV)
    read = zuma.read_csv(tmp_path / "run.csv")
    assert read.units == {"time": "s", "Force 100 kN": "kN", "a": ""}
    assert read["Force 100 kN"].tolist()[::2] == [1.5, -4.25] and np.isnan(read["Force 100 kN"][1])
    assert read.data["a"].tolist() == [2, 3, 5] and read.gaps == [(2, 0.015, 0.02)]
    assert not read.cut
    (tmp_path / "run.csv").write_text(CSV + "half a")
    cut = zuma.read_csv(tmp_path / "run.csv")
    assert cut.cut and cut.data.tolist()[-1] == read.data.tolist()[-1]
    (tmp_path / "run.csv").write_text(CSV + "half a\n0.03,1,2\n")
    with pytest.raises(zuma.UsageError, match="line 6"):
        zuma.read_csv(tmp_path / "run.csv")
