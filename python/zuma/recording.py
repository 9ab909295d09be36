"""Readings as numpy structured arrays, from a frame that runs or from a file."""

from __future__ import annotations

import os
from types import TracebackType
from typing import Any, Mapping, Sequence

import numpy as np
import numpy.typing as npt

from zuma import _zuma

Array = npt.NDArray[Any]


def structured(rows: npt.NDArray[np.float64], names: Sequence[str], units: Mapping[str, str]) -> Array:
    """Rows of numbers as a structured array, "time" first; the units go with its type."""
    fields = [(name, np.float64) for name in ["time", *names]]
    all_units = {"time": "s", **units}
    dtype: np.dtype[Any] = np.dtype(fields, metadata={"units": all_units})  # type: ignore[call-overload]
    return np.ascontiguousarray(rows).reshape(-1).view(dtype)


def units(array: Array) -> dict[str, str]:
    """Unit of each field of an array that this package made.

    They go with the type of the array, and are gone from one that was computed:

    >>> import numpy, zuma
    >>> zuma.units(zuma.recording.structured(numpy.zeros((3, 2)), ["Force"], {"Force": "kN"}))
    {'time': 's', 'Force': 'kN'}
    """
    metadata: Any = array.dtype.metadata
    return dict(metadata["units"]) if metadata else {}


class Recording:
    """What the sensors read at each refresh, from `Frame.recording` on.

    It grows while the frame runs and ends with its ``with`` block or with the frame; what it holds
    stays.
    """

    def __init__(self, rows: _zuma.Rows, names: Sequence[str], units: Mapping[str, str]) -> None:
        self._rows = rows
        self.names = tuple(names)  #: fields behind "time"
        self.units = {"time": "s", **units}  #: unit of each field

    @property
    def data(self) -> Array:
        """All rows so far, a copy: field "time" in seconds since the start of the frame, then one
        for each name. A missing reading is NaN."""
        return structured(self._rows.copy(), self.names, self.units)

    def end(self) -> None:
        """No row from now on."""
        self._rows.end()

    def __enter__(self) -> Recording:
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        error: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        self.end()

    def __len__(self) -> int:
        return len(self._rows.copy())

    def __repr__(self) -> str:
        return f"<Recording of {len(self)} rows: {', '.join(self.names)}>"


class RecordedFile:
    """A recording that was read from its file: see `read_csv`."""

    def __init__(self, content: _zuma.RecordingContent) -> None:
        columns = content["columns"]
        names = _distinct([column["label"] or column["name"] for column in columns])
        self.columns = dict(zip(names, columns))  #: each column with name, unit, calibration
        self.units = {"time": "s", **{n: c["unit"] for n, c in self.columns.items()}}
        #: (rows, from, to) of what is missing, seconds
        self.gaps: list[tuple[int, float, float]] = content["gaps"]
        #: the file ends within a row, which is left out: a copy cut short, or a full disk
        self.cut: bool = content["cut"]
        self.texts = dict(content["texts"])  #: start, frame, "specimen ..."
        rows = np.column_stack([content["time"], *(column["values"] for column in columns)])
        #: the rows: "time" in seconds, then one field for each column; NaN for a missing reading
        self.data: Array = structured(rows, names, self.units)

    def __getitem__(self, name: str) -> npt.NDArray[np.float64]:
        values: npt.NDArray[np.float64] = self.data[name]
        return values

    def __len__(self) -> int:
        return len(self.data)

    def __repr__(self) -> str:
        return f"<RecordedFile of {len(self)} rows: {', '.join(self.columns)}>"


def read_csv(path: str | os.PathLike[str]) -> RecordedFile:
    """A recording that ``zuma run --csv`` or ``zuma record`` wrote, with the JSON file beside it.

    Fields have the labels of the sensors, or the names where there is no JSON file. Raises
    `UsageError`, with the line, for a file that is no recording.
    """
    return RecordedFile(_zuma.read_recording(os.fspath(path)))


def _distinct(names: Sequence[str]) -> list[str]:
    taken = {"time"}
    distinct = []
    for name in names:
        number, unique = 1, name
        while unique in taken:
            number += 1
            unique = f"{name} {number}"
        taken.add(unique)
        distinct.append(unique)
    return distinct
