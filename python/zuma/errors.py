"""What goes wrong with a frame, as exceptions.

All of them are `ZumaError`: one `except zuma.ZumaError` takes whatever the frame itself refuses.
"""

from __future__ import annotations

from dataclasses import dataclass
from typing import Sequence


@dataclass(frozen=True)
class Problem:
    """One thing that is wrong with a configuration or was told by a frame.

    Fields that do not apply are empty texts.
    """

    table: str  #: table of the row
    row: str  #: "Index" of the row
    column: str  #: column of the value
    found: str  #: value found
    expected: str  #: value expected
    object: str  #: class, key and name of the object concerned
    text: str  #: what is wrong
    origin: str  #: 'file', 'data', 'message' (a box of the library) or 'failure'
    warning: bool  #: it works, and may not be meant so
    line: str  #: all of it as one line

    def __str__(self) -> str:
        return self.line


class ZumaError(Exception):
    """The parent of all errors of this package."""


class UsageError(ZumaError, ValueError):
    """What was asked cannot be done as asked; the text says what to do instead."""


class NoSuchName(ZumaError, KeyError):
    """Nothing of that name is in the frame; the text tells the nearest ones."""

    def __str__(self) -> str:
        return str(self.args[0]) if self.args else ""


class FrameRefused(ZumaError):
    """A frame whose load, link or start left entries; its outputs are at rest.

    `problems` holds each with table, row, column, value found and value expected.
    """

    def __init__(self, text: str, problems: Sequence[Problem] = ()) -> None:
        lines = "".join(f"\n  {problem}" for problem in problems)
        super().__init__(text + lines)
        self.problems: list[Problem] = list(problems)


class AlreadyRunning(ZumaError):
    """Another process runs the frame, which must not have two masters; `pid` is its number."""

    def __init__(self, text: str, pid: int = 0) -> None:
        super().__init__(text)
        self.pid = pid


class FrameClosed(ZumaError):
    """The frame, or an object of it that was kept, belongs to a frame that is closed."""


class WrongThread(ZumaError):
    """A frame belongs to the one thread that opened it."""


class FrameStopped(ZumaError):
    """A stop is latched: nothing moves before it is acknowledged."""


class FrameEnded(ZumaError):
    """A device asked for the end of the program."""


class Refused(ZumaError):
    """The frame refused an act; the text is what it put in its error record."""


class Unreadable(ZumaError):
    """A file is no publication of a frame, or none that can be read here."""
