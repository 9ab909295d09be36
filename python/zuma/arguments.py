"""Numbers that a caller gives, looked at before anything moves."""

from __future__ import annotations

from zuma.errors import UsageError

NEVER = float("inf")


def duration(seconds: float) -> float:
    """A time to run for: 0 s or more, and finite."""
    if not 0 <= seconds < NEVER:
        raise UsageError(f"a run takes a time of 0 s or more, not {seconds}")
    return seconds


def period(rate: float | None) -> float:
    """Seconds between two looks at a rate in hertz; 0 without one: at each refresh."""
    if rate is None:
        return 0.0
    if not 0 < rate < NEVER:
        raise UsageError(f"a rate is above 0 Hz, not {rate}")
    return 1 / rate
