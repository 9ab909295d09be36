"""Drive and watch a materials-testing frame.

>>> import zuma
>>> with zuma.open(zuma.demo(), frame=1, sim=True) as frame:
...     _ = frame.run(seconds=0.5)
...     print(frame.sensors["Déplacement"].unit, frame.stopped)
mm False
"""

from zuma._zuma import Channel, Command, Input, Output, Sensor, Terminal, WatchdogBoard
from zuma.attach import Event, Running, Seen, View, attach, running
from zuma.errors import (
    AlreadyRunning,
    FrameClosed,
    FrameEnded,
    FrameRefused,
    FrameStopped,
    NoSuchName,
    Problem,
    Refused,
    Unreadable,
    UsageError,
    WrongThread,
    ZumaError,
)
from zuma.frame import Board, Frame, Sample, demo
from zuma.frame import open as open  # not in __all__: a star import keeps the builtin
from zuma.names import Named
from zuma.recording import RecordedFile, Recording, read_csv, units
from zuma.simulation import Simulation

__all__ = [
    "AlreadyRunning",
    "Board",
    "Channel",
    "Command",
    "Event",
    "Frame",
    "FrameClosed",
    "FrameEnded",
    "FrameRefused",
    "FrameStopped",
    "Input",
    "Named",
    "NoSuchName",
    "Output",
    "Problem",
    "RecordedFile",
    "Recording",
    "Refused",
    "Running",
    "Sample",
    "Seen",
    "Sensor",
    "Simulation",
    "Terminal",
    "Unreadable",
    "UsageError",
    "View",
    "WatchdogBoard",
    "WrongThread",
    "ZumaError",
    "attach",
    "demo",
    "read_csv",
    "running",
    "units",
]
