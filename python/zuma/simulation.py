"""The simulated machine of a frame: what a person or the world does to it."""

from __future__ import annotations

from zuma import _zuma
from zuma.arguments import duration
from zuma.names import Named


class Simulation(_zuma.Simulation):
    """Press, contacts, terminals and faults of a frame that was opened with ``sim=True``.

    The press takes metres, newtons and newtons per metre, whatever the units of the sensors.

    >>> import zuma
    >>> with zuma.open(zuma.demo(), sim=True) as frame:
    ...     frame.sim.emergency_button = True
    ...     frame.sim.advance(0.1)
    ...     frame.stopped
    True
    """

    def __init__(
        self,
        session: _zuma.Session,
        sensors: Named[_zuma.Sensor],
        channels: Named[_zuma.Channel],
    ) -> None:
        super().__init__(session)
        self._sensors, self._channels = sensors, channels

    def advance(self, seconds: float) -> None:
        """Lets that many seconds of the frame's time go by, as fast as this computer can.

        Passes run all the while, also through a stop.
        """
        self._advance(duration(seconds))

    def wired(self, name: str) -> _zuma.Terminal:
        """The terminal of a channel by its name, 'board/block/channel', or of a sensor's channel.

        Raises `NoSuchName` for a name that is not there, `UsageError` for a channel without a
        terminal: one of an instrument or a bus.
        """
        sensor = self._sensors.get(name)
        channel = sensor.channel if sensor is not None else None
        return self.terminal(self._channels[channel or name])
