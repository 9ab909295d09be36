"""Frames of the demo database on the simulated machine."""

from __future__ import annotations

from pathlib import Path
from typing import Iterator

import pytest
import zuma


@pytest.fixture
def database(tmp_path: Path) -> str:
    return zuma.demo(tmp_path / "demo.db")


@pytest.fixture
def frame(database: str) -> Iterator[zuma.Frame]:
    with zuma.open(database, sim=True, stops=False) as opened:
        yield opened
