"""The two kinds of a connection: for scripts that end, and for programs that run long."""

from __future__ import annotations

from typing import Any, Optional, Sequence

from zephlink import _convert as convert
from zephlink._connection import Answer, Subscription
from zephlink._error import ClosedError
from zephlink._methods import NOTHING, Methods
from zephlink._native import ffi, lib
from zephlink._types import SessionStatus


def config_of(address: Optional[str], port: Optional[int], app_name: str) -> Any:
    config = ffi.new("ZephlinkSDK_Config *")
    lib.ZephlinkSDK_defaultConfig(config)
    if address is not None:
        config.address = convert.field_text(address, ffi.sizeof(config.address))
    if port is not None:
        config.port = port
    config.appName = convert.field_text(app_name, ffi.sizeof(config.appName))
    return config


class Client(Methods):
    """A connection to the daemon, for scripts that ask and end.

    It begins to connect at once, in the background; failures are raised by the calls. Methods may be called from any
    thread. A call releases the interpreter's lock while it waits, and Ctrl-C ends it. After fork() only the parent
    process may use the client.

    A lost connection is opened again, but a daemon that was restarted knows nothing of earlier subscriptions, and one
    that ended the connection by a close frame is not asked again. A program that runs for long uses Session.
    """

    def __init__(self, *, address: Optional[str] = None, port: Optional[int] = None, app_name: str = "") -> None:
        """`address` and `port` are those of the daemon, 127.0.0.1 and 9330 by default. A name in `app_name` is
        announced to the daemon and replaces the product's name in translated texts."""
        super().__init__(lib.zephlink_link_open(config_of(address, port, app_name)))

    def subscribe_stats(self, enable: bool, periods: Sequence[int] = ()) -> None:
        super().subscribe_stats(enable, periods)
        self._statistics = True


class Session(Methods):
    """A connection that keeps itself and its subscriptions alive, for whatever runs long.

    After silence it asks the daemon for a sign of life and then connects anew; it subscribes again after a restart of
    the daemon, after a close frame and after a lost connection, and waits longer and longer for a daemon that does not
    answer. Subscriptions go on through all of this: time-outs do not reach them, but appear as `status`.

    Calls raise Error with ErrorCode.NOT_CONNECTED at once while there is no connection to try. All else is as in
    Client.
    """

    def __init__(self, *, address: Optional[str] = None, port: Optional[int] = None, app_name: str = "",
                 probe_after: Optional[float] = None, quiet_after: Optional[float] = None,
                 renew_after: Optional[float] = None, refresh_every: Optional[float] = None,
                 least_pause: Optional[float] = None, most_pause: Optional[float] = None) -> None:
        """`address`, `port` and `app_name` as in Client. The others are periods in seconds, whose defaults fit
        statistics that come every second:

        - `probe_after`: silence after which the daemon is asked for a sign of life (1.5)
        - `quiet_after`: silence after which the session connects anew; more than `probe_after` (3)
        - `renew_after`: time without reports that the daemon sent on its own, after which all requests of the
          subscriptions are repeated, once (2.5)
        - `refresh_every`: the period in which they are repeated in any case (30)
        - `least_pause`, `most_pause`: bounds of the pause before another attempt (1 and 60)
        """
        periods = ffi.new("zephlink_periods *", {
            "probe_after": milliseconds(probe_after), "quiet_after": milliseconds(quiet_after),
            "renew_after": milliseconds(renew_after), "refresh_every": milliseconds(refresh_every),
            "least_pause": milliseconds(least_pause), "most_pause": milliseconds(most_pause)})
        super().__init__(lib.zephlink_session_open(config_of(address, port, app_name), periods))

    @property
    def status(self) -> SessionStatus:
        """The latest status. Raises ClosedError after `close`."""
        status = lib.zephlink_session_status(self._link)
        if status < 0:
            raise ClosedError
        return SessionStatus(status)

    def subscribe_status(self, *, maxsize: Optional[int] = None) -> Subscription[SessionStatus]:
        """Iterates over the status: the current one, then each change."""
        return self._subscribe(lib.zephlink_subscribe_status, STATUS, maxsize)

    def subscribe_stats(self, enable: bool, periods: Sequence[int] = ()) -> None:
        hours = convert.numbers(periods, "uint32_t[]")
        self._call(lib.zephlink_session_stats, NOTHING, convert.boolean(enable), *hours)
        self._statistics = True


class StatusAnswer(Answer[SessionStatus]):
    """A byte, without the head of a record."""

    def of(self, record: Any) -> SessionStatus:
        return SessionStatus(ffi.cast(self.c_type, record)[0])


STATUS = StatusAnswer("uint8_t *", SessionStatus)


def milliseconds(seconds: Optional[float]) -> int:
    """0, which chooses the default, only for None."""
    return 0 if seconds is None else max(1, round(seconds * 1000))
