"""A frame that is open: its objects, its passes, its stop."""

from __future__ import annotations

import atexit
import logging
import os
import signal
import tempfile
import threading
import weakref
from dataclasses import dataclass
from types import FrameType, TracebackType
from typing import Any, Callable, Iterable, Iterator, Mapping, NamedTuple, Sequence

import numpy as np
import numpy.typing as npt

from zuma import _zuma
from zuma.arguments import NEVER, duration, period
from zuma.errors import FrameClosed, NoSuchName, Problem
from zuma.names import Named
from zuma.recording import Array, Recording
from zuma.simulation import Simulation

_log = logging.getLogger("zuma")
_open_frames: weakref.WeakSet[Frame] = weakref.WeakSet()


@dataclass(frozen=True)
class Sample:
    """The readings of all sensors at one refresh."""

    time: float  #: seconds since the start of the frame
    values: npt.NDArray[np.float64]  #: in the order of `frame.sensors`; NaN without a reading
    stopped: bool  #: a stop is latched
    ranks: Mapping[str, int]  #: place of each sensor in `values`

    def __getitem__(self, name: str) -> float:
        """The reading of that sensor, in its unit."""
        return float(self.values[self.ranks[name]])


class _Column(NamedTuple):
    """Where a column of a recording comes from."""

    kind: str
    rank: int
    unit: str


class Board:
    """One board or instrument of a frame, with its channels by name."""

    def __init__(self, native: _zuma.Board) -> None:
        self._native = native
        self.channels = Named("channel", [("", c.name, c) for c in native.channels])

    @property
    def name(self) -> str:
        """Name of its row."""
        return self._native.name

    def __repr__(self) -> str:
        return repr(self._native)


class Frame:
    """A frame that runs passes when it is told to, one a millisecond of its own time.

    `zuma.open` makes it. Between two calls that run it (`run`, `step`, `samples`, `record`) no pass
    runs: a simulated machine stands still then, a **real** one goes on with its last set points, no
    limit is watched, and only the watchdog ends it.

    All of it belongs to the thread that opened the frame; any other gets `WrongThread`.
    """

    def __init__(self, choice: _zuma.Choice) -> None:
        self._session = _zuma.Session(choice)
        self._session.on_problem(lambda line: _log.warning("%s", line))
        self._fill()
        _open_frames.add(self)

    def _fill(self) -> None:
        s = self._session
        sensors, commands, inputs, outputs = s.sensors(), s.commands(), s.inputs(), s.outputs()
        self.sensors = Named("sensor", [(o.label, o.name, o) for o in sensors])
        self.commands = Named("command", [(o.label, o.name, o) for o in commands])
        self.inputs = Named("input", [(o.label, o.name, o) for o in inputs])
        self.outputs = Named("output", [(o.label, o.name, o) for o in outputs])
        self.channels = Named(
            "channel", [("", name, o) for name, o in zip(s.channel_names(), s.channels())]
        )
        self.boards = Named("board", [("", b.name, Board(b)) for b in s.boards()])
        self.watchdog = s.watchdog()
        #: the simulated machine; None on a real one
        self.sim: Simulation | None = (
            Simulation(s, self.sensors, self.channels) if s.simulated else None
        )
        self._values = _zuma.Values(s)
        self._columns: dict[str, _Column] = {}
        self._note_columns("sensor", [(o.label, o.name, o.unit) for o in sensors])
        self._note_columns("command", [(o.label, o.name, o.unit) for o in commands])
        self._note_columns("output", [(o.label, o.name, "") for o in outputs])
        self._note_columns("input", [(o.label, o.name, "") for o in inputs])
        self._ranks = {o.label or o.name: i for i, o in reversed([*enumerate(sensors)])}

    def _note_columns(self, kind: str, named: Sequence[tuple[str, str, str]]) -> None:
        for by in (0, 1):  # a label wins over the name of another row
            for rank, entry in enumerate(named):
                if entry[by]:
                    self._columns.setdefault(entry[by], _Column(kind, rank, entry[2]))

    # --- life

    def close(self) -> None:
        """Puts the outputs to rest, waits until links have confirmed it, and releases the frame.

        The end of a ``with`` block calls it. A frame that is closed stays so.
        """
        self._session.close()
        _open_frames.discard(self)

    @property
    def closed(self) -> bool:
        """True once the frame is closed."""
        return not self._session.open

    def __enter__(self) -> Frame:
        if self.closed:
            raise FrameClosed("the frame is closed")
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        error: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        self.close()

    def __repr__(self) -> str:
        if self.closed:
            return "<Frame, closed>"
        state = "stopped: " + self.causes[0] if self.stopped and self.causes else "running"
        return f"<Frame {self.name}, {self.time:.3f} s, {state}>"

    # --- what it is

    @property
    def name(self) -> str:
        """Name of the frame's row."""
        return self._session.name

    @property
    def time(self) -> float:
        """Seconds since the start, by the machine's clock."""
        return self._session.time

    @property
    def passes(self) -> int:
        """Passes since the start."""
        return self._session.passes

    @property
    def refreshes(self) -> int:
        """How often the sensors were refreshed since the start."""
        return self._session.refreshes

    @property
    def rate(self) -> float:
        """How often they are, in hertz."""
        return self._session.rate

    @property
    def publication(self) -> str:
        """File by which other programs look at the frame."""
        return self._session.publication

    @property
    def problems(self) -> list[Problem]:
        """All that the frame told since it was opened, each once; logger "zuma" tells them too."""
        return self._session.problems

    @property
    def model(self) -> Any:
        """The frame as the object model knows it, a `zuma.modele.Chassis`, under its own names."""
        return self._session.model

    def values(self, out: npt.NDArray[np.float64] | None = None) -> npt.NDArray[np.float64]:
        """The readings of all sensors, in the order of `sensors`; NaN where there is none.

        Without `out` it is the same array at each call, with new numbers: copy what is to stay.
        Raises `UsageError` for an `out` of another length.
        """
        return self._values.read(out)

    # --- passes

    def run(
        self,
        seconds: float | None = None,
        until: Callable[[], Any] | None = None,
        *,
        at: float | None = None,
        through_stop: bool = False,
    ) -> bool:
        """Runs passes for `seconds` of the frame's time, until `until()` is true, or for ever.

        `until` is asked behind each refresh of the sensors, or `at` times a second. A stop that is
        fired meanwhile ends the run, unless `through_stop`; one that was latched before does not.
        True when it ended as it was to: `until` was true, or without one the time has gone by.
        False when a stop ended it, or the time before `until`.

        An exception in `until`, Ctrl-C included, fires the stop and reaches the caller.

        >>> import zuma
        >>> with zuma.open(zuma.demo(), sim=True) as frame:
        ...     frame.run(seconds=1)
        True
        """
        end, ends = self._end(seconds), _zuma.Session.End
        if until is None:
            return self._session.advance(NEVER, end, through_stop) == ends.time
        asked = until
        ended = self._session.run(end, period(at), through_stop, lambda: not asked())
        return ended == ends.point

    def step(self, passes: int = 1) -> None:
        """Runs that many passes, also through a stop."""
        self._session.step(passes)

    def samples(
        self,
        seconds: float | None = None,
        *,
        at: float | None = None,
        through_stop: bool = False,
    ) -> Iterator[Sample]:
        """Runs the frame, and gives its readings at each refresh of the sensors, or `at` times a
        second: no pass runs while the caller looks at one. Ends behind `seconds`, and with a stop
        as `run` does.

        >>> import zuma
        >>> with zuma.open(zuma.demo(), sim=True) as frame:
        ...     [round(sample.time, 3) for sample in frame.samples(seconds=0.3, at=10)]
        [0.001, 0.101, 0.201]
        """
        end, due, between = self._end(seconds), self.time, period(at)
        ends = _zuma.Session.End
        while True:
            reached = self._session.advance(due, end, through_stop)
            if reached == ends.time:
                return
            yield Sample(self.time, self.values().copy(), self.stopped, self._ranks)
            if reached == ends.stop:
                return
            due = max(due + between, self.time)

    def _end(self, seconds: float | None) -> float:
        if seconds is None:
            return NEVER
        return self.time + duration(seconds)

    # --- recordings

    def recording(self, names: Iterable[str] | None = None) -> Recording:
        """Records from now on, one row for each refresh of the sensors, until its ``with`` ends.

        `names` are sensors, commands, inputs or outputs; all sensors when it is left out.

        >>> import zuma
        >>> with zuma.open(zuma.demo(), sim=True) as frame:
        ...     with frame.recording(["Force", "Servovalve"]) as rec:
        ...         _ = frame.run(seconds=0.1)
        ...     rec.data.dtype.names, rec.units["Force"]
        (('time', 'Force', 'Servovalve'), 'kN')
        """
        chosen = list(self.sensors) if names is None else list(names)
        columns = [self._column(name) for name in chosen]
        units = {name: column.unit for name, column in zip(chosen, columns)}
        rows = self._session.record([(column.kind, column.rank) for column in columns])
        return Recording(rows, chosen, units)

    def record(
        self,
        seconds: float | None = None,
        until: Callable[[], Any] | None = None,
        *,
        names: Iterable[str] | None = None,
        at: float | None = None,
        through_stop: bool = False,
    ) -> Array:
        """Runs like `run`, and gives what the sensors read meanwhile as a structured array.

        >>> import zuma
        >>> with zuma.open(zuma.demo(), sim=True) as frame:
        ...     _ = frame.run(seconds=1)
        ...     data = frame.record(seconds=1)
        >>> len(data), zuma.units(data)["Déplacement"]
        (200, 'mm')
        """
        with self.recording(names) as recording:
            self.run(seconds, until, at=at, through_stop=through_stop)
        return recording.data

    def _column(self, name: str) -> _Column:
        if name not in self._columns:
            raise NoSuchName(self.sensors.refusal(name))
        return self._columns[name]

    # --- the stop

    def stop(self, cause: str = "stop asked by the program") -> None:
        """Fires the stop: outputs are put to rest in this call, and it stays latched."""
        self._session.stop(cause)

    @property
    def stopped(self) -> bool:
        """A stop is latched: no command reaches its output."""
        return self._session.stopped

    @property
    def causes(self) -> list[str]:
        """The causes of the stop that is latched, in the order in which they came."""
        return self._session.causes

    @property
    def at_rest(self) -> bool:
        """Every output is where the stop put it, as far as its link can tell."""
        return self._session.at_rest

    def acknowledge(self) -> bool:
        """Acknowledges a stop; nothing moves by itself behind it. False while it is being driven.

        A cause that still lasts fires again with the next pass.
        """
        return self._session.acknowledge()

    def resume(self) -> bool:
        """The third act, behind release and acknowledgement: watchdog and copying commands serve
        again. False, and nothing done, while a stop is latched."""
        return self._session.resume()

    def on_stop(self, callback: Callable[[str], Any] | None) -> None:
        """Calls `callback(cause)` behind the pass in which a stop is latched; outputs are at rest
        by then. It may acknowledge, but moves nothing. None: nobody is called."""
        self._session.on_stop(callback)

    def on_problem(self, callback: Callable[[str], Any] | None) -> None:
        """Calls `callback(line)` for each new problem, in place of a warning of logger "zuma"."""
        self._session.on_problem(callback)


def open(  # noqa: A001
    database: str | os.PathLike[str],
    frame: int = 1,
    sim: bool = False,
    *,
    create: bool = False,
    realtime: bool = False,
    rate: float | None = None,
    start_anyway: bool = False,
    ports: Mapping[int, str] | None = None,
    can: Mapping[tuple[int, int], str] | None = None,
    stops: str | os.PathLike[str] | bool = True,
    parameters: Mapping[int, str] | None = None,
    drivers: Sequence[str | os.PathLike[str]] = (),
    faults: Sequence[str] = (),
    seed: int = 0,
) -> Frame:
    """Opens, loads, links and starts a frame of a configuration database.

    `sim`: on the simulated machine, whose time is as fast as this computer can; `realtime` runs it
    at the pace of a real one, `rate` at so many times that. `create` writes the demo database where
    `database` does not exist. `ports` names serial devices by number, `can` interfaces by (card,
    port). `stops` is the folder that keeps each stop as a case, beside the database when it is
    True; False keeps none. `parameters` are shared ones by index, which win over the file beside
    the database. `drivers` are libraries of drivers, `faults` those of the simulated machine from
    its start on, and `seed` its luck.

    Raises `UsageError` for a file or a frame that is not there, `FrameRefused` with all problems
    for one whose load, link or start left entries (`start_anyway` takes it all the same, behind a
    stop), `AlreadyRunning` when another process runs it.

    From the first frame of the main thread on, SIGTERM and SIGHUP end the program by SystemExit, so
    that the outputs come to rest.

    >>> import zuma
    >>> with zuma.open(zuma.demo(), frame=1, sim=True) as frame:
    ...     _ = frame.run(seconds=0.1)
    ...     frame.sensors["Force"].unit
    'kN'
    """
    path = os.fspath(database)
    if create and not os.path.exists(path):
        demo(path)
    choice = _zuma.Choice()
    choice.file, choice.frame, choice.simulation = path, frame, sim
    choice.rate = float(rate if rate is not None else realtime)
    choice.start_anyway, choice.seed = start_anyway, seed
    choice.keep_stops = stops is not False
    choice.stops = "" if isinstance(stops, bool) else os.fspath(stops)
    choice.ports = [f"{number}={device}" for number, device in (ports or {}).items()]
    choice.can = [f"{card}:{port}={name}" for (card, port), name in (can or {}).items()]
    choice.parameters = [f"{index}={value}" for index, value in (parameters or {}).items()]
    choice.drivers = [os.fspath(library) for library in drivers]
    choice.faults = list(faults)
    _end_by_exit()
    return Frame(choice)


def demo(path: str | os.PathLike[str] | None = None) -> str:
    """Writes the demo database with its five frames, as ``zuma init`` does, and gives its path.

    Without a path it goes into a new folder, which is removed at the end of the program. Raises
    `UsageError` for a file that is there.
    """
    if path is None:
        folder = tempfile.TemporaryDirectory(prefix="zuma-")
        atexit.register(folder.cleanup)
        path = os.path.join(folder.name, "demo.db")
    _zuma.write_demo(os.fspath(path))
    return os.fspath(path)


def _close_all() -> None:
    for frame in list(_open_frames):
        try:
            frame._session.close_at_exit()
        except Exception:  # the others are still to come to rest
            _log.exception("a frame did not close")


def _leave_to_parent() -> None:
    for frame in list(_open_frames):
        frame._session.abandon()
    _open_frames.clear()


def _exit(number: int, at: FrameType | None) -> None:
    raise SystemExit(128 + number)


def _end_by_exit() -> None:
    """A signal that kills the process would leave the outputs as they are."""
    if threading.current_thread() is not threading.main_thread():
        return
    for number in (signal.SIGTERM, signal.SIGHUP):
        if signal.getsignal(number) is signal.SIG_DFL:
            signal.signal(number, _exit)


atexit.register(_close_all)
os.register_at_fork(after_in_child=_leave_to_parent)
