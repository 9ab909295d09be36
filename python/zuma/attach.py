"""Looking at a frame that any program of this machine runs, or ran: it never notices."""

from __future__ import annotations

import os
import time
from dataclasses import dataclass
from typing import Iterator, Mapping

import numpy as np
import numpy.typing as npt

from zuma import _zuma
from zuma.errors import NoSuchName, Unreadable, UsageError
from zuma.frame import Frame
from zuma.recording import Array, structured


@dataclass(frozen=True)
class Running:
    """A frame that is published on this machine."""

    file: str  #: its publication, for `attach`
    alive: bool  #: its program runs; False for what a program left that died
    name: str  #: of the frame
    database: str  #: its configuration
    frame: int  #: "Index" of the frame
    simulated: bool  #: it runs on twins
    program: str  #: name of the program
    pid: int  #: its process


@dataclass(frozen=True)
class Seen:
    """What a sample of a publication says."""

    number: int  #: of the sample, from 0
    time: float  #: seconds since the start of the frame
    pass_: int  #: number of the last pass before it
    stopped: bool  #: a stop is latched
    refreshed: bool  #: the sensors were refreshed since the sample before
    missed: int  #: samples between the one before and this one that nobody can read any more
    values: npt.NDArray[np.float64]  #: one for each object; NaN without a reading
    ages: npt.NDArray[np.float64]  #: seconds
    ranks: Mapping[str, int]  #: place of each object

    def __getitem__(self, name: str) -> float:
        """The value of that object, by label or name."""
        return float(self.values[self.ranks[name]])


@dataclass(frozen=True)
class Event:
    """Something that happened to the frame."""

    number: int  #: from 0
    time: float  #: seconds since the start
    kind: str  #: 'stop', 'cause', 'at rest', 'acknowledged', 'set point', ...
    object: str  #: its name; empty for none
    value: float  #: set point or state; 0 without one
    text: str  #: cause of a stop, line of a problem
    line: str  #: all of it in words


class View:
    """A frame, read from outside. Nothing of it operates anything.

    >>> import zuma
    >>> with zuma.open(zuma.demo(), sim=True) as frame:
    ...     _ = frame.run(seconds=0.1)
    ...     with_view = zuma.attach(frame)
    ...     with_view["Force"] == frame.sensors["Force"].value
    True
    """

    def __init__(self, file: str) -> None:
        self._reader = _zuma.Reader(file)
        self._describe()

    def _describe(self) -> None:
        about = self._reader.description()
        self.objects = about["objects"]  #: each with kind, label, name, unit, limits, calibration
        self.name: str = about["name"]  #: of the frame
        self.database: str = about["database"]  #: its configuration
        self.frame: int = about["frame"]  #: "Index" of the frame
        self.simulated: bool = about["simulated"]  #: it runs on twins
        self.rate: float = about["rate"]  #: of the sensors, hertz
        self.program: str = about["program"]  #: that runs it
        self._ranks: dict[str, int] = {}
        for rank, thing in enumerate(self.objects):
            for name in (thing["label"], thing["full_name"], thing["name"]):
                if name:
                    self._ranks.setdefault(name, rank)
        self._values = np.empty(len(self.objects))
        self._ages = np.empty(len(self.objects))

    @property
    def file(self) -> str:
        """Its publication."""
        return self._reader.file

    @property
    def pid(self) -> int:
        """Process that runs the frame, or ran it."""
        return self._reader.pid

    @property
    def ended(self) -> bool:
        """Its program has ended, as it should or not."""
        return self._reader.ended

    def rank(self, name: str) -> int:
        """Place of an object by label, name or 'board/block/channel'; 'sensor:NAME' chooses a kind.

        Raises `NoSuchName` with the nearest names.
        """
        if name in self._ranks:
            return self._ranks[name]
        try:
            return self._reader.find(name)[0]
        except UsageError as error:
            raise NoSuchName(str(error)) from None

    def unit(self, name: str) -> str:
        """Unit of an object."""
        unit: str = self.objects[self.rank(name)]["unit"]
        return unit

    def latest(self) -> Seen:
        """The last sample. Raises `Unreadable` while there is none."""
        if self._reader.refresh():
            self._describe()
        while self._reader.next > 0:
            seen = self._read(self._reader.next - 1, 0)
            if isinstance(seen, Seen):
                return seen
        raise Unreadable(f"{self.file} holds no sample yet")

    def state(self, name: str) -> str:
        """The state of an object in the last sample, as `Sensor.state` tells it."""
        self.latest()
        return self._reader.states()[self.rank(name)]

    def __getitem__(self, name: str) -> float:
        """The value of an object in the last sample."""
        rank = self.rank(name)
        return float(self.latest().values[rank])

    def samples(
        self, *, seconds: float | None = None, rate: float | None = None, since: float | None = None
    ) -> Iterator[Seen]:
        """Each sample from now on, or from `since` seconds of the frame's time on, as it comes.

        Ends behind `seconds` of the frame's time, and once its program has ended. With `rate` it
        looks that many times a second, and gives the last sample alone. What the writer turned over
        meanwhile is told by `missed`: it waits for nobody.
        """
        number = self._reader.next if since is None else self._reader.since(since)
        first: float | None = None
        missed = 0
        while True:
            ended = self.ended
            if rate is not None:
                number = max(number, self._reader.next - 1)
            seen = self._read(number, missed)
            if isinstance(seen, Seen):
                first = seen.time if first is None else first
                if seconds is not None and seen.time > first + seconds:
                    return
                yield seen
                number, missed = number + 1, 0
            elif seen == "gone":
                oldest = max(self._reader.first, number + 1)
                missed += oldest - number
                number = oldest
                continue
            elif ended:
                return
            if rate is not None or seen == "later":
                time.sleep(1 / rate if rate is not None else 0.005)

    def history(self, seconds: float | None = None, names: list[str] | None = None) -> Array:
        """What the ring holds of the last `seconds`, copied and in order, as a structured array:
        "time", then each object that `names` tells, or all sensors. Rows that the writer turned
        over meanwhile are left out."""
        chosen = names if names is not None else self._labels("sensor")
        ranks = [self.rank(name) for name in chosen]
        start = self._reader.first
        if seconds is not None:
            start = max(start, self._reader.since(self.latest().time - seconds))
        seen = (self._read(number, 0) for number in range(start, self._reader.next))
        rows = [[s.time, *s.values[ranks]] for s in seen if isinstance(s, Seen) and s.refreshed]
        block = np.array(rows, dtype=np.float64).reshape(len(rows), len(chosen) + 1)
        return structured(block, chosen, {name: self.unit(name) for name in chosen})

    def ring(self) -> Array:
        """The ring of samples where it lies, nothing copied: one record for each place.

        Record `number % len(ring)` holds sample `number`, and its field "sequence" is
        ``2 * number + 2`` then: one whose sequence is odd, or another one behind the look than
        before it, was being written and counts for nothing. Fields "value", "state" and "age" have
        one place for each object. The memory stays for as long as the array does.
        """
        words = self._reader.ring()
        objects = len(self.objects)
        head = ["sequence", "time", "monotonic", "pass", "duration", "stopped", "refreshed",
                "refreshes", "clock"]  # fmt: skip
        real = {"time", "duration", "clock"}
        each = np.dtype([("value", "<f8"), ("state", "<u4"), ("age", "<f4")])
        names = [*head, "objects"]
        formats = [*("<f8" if name in real else "<u8" for name in head), (each, (objects,))]
        record = np.dtype(
            {
                "names": names,
                "formats": formats,
                "offsets": [8 * i for i in range(len(names))],
                "itemsize": 8 * words.shape[1],
            }
        )
        return words.view(record)[:, 0]

    def events(self, since: int = 0) -> list[Event]:
        """The events that are still there, from number `since` on."""
        found = []
        for entry in self._reader.events(since):
            rank = entry["object"]
            name = "" if rank is None else self.objects[rank]["full_name"]
            found.append(
                Event(entry["number"], entry["time"], entry["kind"], name, entry["value"],
                      entry["text"], entry["line"])
            )  # fmt: skip
        return found

    def _labels(self, kind: str) -> list[str]:
        return [o["label"] or o["name"] for o in self.objects if o["kind"] == kind]

    def _read(self, number: int, missed: int) -> Seen | str:
        found = self._reader.read(number, self._values, self._ages)
        if found != "good":
            return found
        _, at, passed, stopped, refreshed, _ = self._reader.header()
        return Seen(
            number, at, passed, stopped, refreshed, missed,
            self._values.copy(), self._ages.copy(), self._ranks,
        )  # fmt: skip

    def __repr__(self) -> str:
        state = "ended" if self.ended else f"process {self.pid}"
        return f"<View of {self.name}, {state}>"


def attach(where: Frame | str | os.PathLike[str] | None = None, frame: int | None = None) -> View:
    """Looks at a frame: one of this process, a publication, what a program left that died (a black
    box), or the database of a frame that runs, with the number of the frame among several.

    Without anything it is the only one that runs on this machine. Raises `UsageError`, with what
    there is, where none is meant by it, and `Unreadable` for a file that is no publication.
    """
    if isinstance(where, Frame):
        return View(where.publication)
    return View(_zuma.publication("" if where is None else os.fspath(where), frame))


def running() -> list[Running]:
    """The frames that are published on this machine, those that run first."""
    found = []
    for file, alive in _zuma.publications():
        try:
            view = View(file)
        except Unreadable:  # its host loads it still
            continue
        found.append(
            Running(file, alive, view.name, view.database, view.frame, view.simulated,
                    view.program, view.pid)
        )  # fmt: skip
    return found
