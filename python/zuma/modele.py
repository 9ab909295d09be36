"""The object model of a frame, under its own French names."""

from zuma._zuma.modele import *  # type: ignore[import]  # noqa: F403
