"""The two kinds of connections: for short scripts, and for long-running programs."""

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
    """A connection to the daemon, for scripts that make some calls and end.

    It starts to connect at once, in the background; the calls raise failures. Methods may be called from any thread. A
    call releases the interpreter's lock while it waits, and Ctrl-C interrupts it. After fork() only the parent process
    may use the client.

    A lost connection is reopened. But a restarted daemon does not know earlier subscriptions, and after a close frame
    from the daemon the client does not reconnect. Long-running programs should use Session.
    """

    def __init__(self, *, address: Optional[str] = None, port: Optional[int] = None, app_name: str = "") -> None:
        """`address` and `port` are the daemon's, by default 127.0.0.1 and 9330. `app_name` is announced to the daemon
        and replaces the product's name in translated texts."""
        super().__init__(lib.zephlink_link_open(config_of(address, port, app_name)))

    def subscribe_stats(self, enable: bool, periods: Sequence[int] = ()) -> None:
        super().subscribe_stats(enable, periods)
        self._statistics = True


class Session(Methods):
    """A connection that keeps itself and its subscriptions alive, for long-running programs.

    After silence it requests a sign of life from the daemon, then reconnects. It subscribes again after a restart of
    the daemon, a close frame or a lost connection, and waits increasingly longer for a daemon that does not answer.
    Subscriptions continue throughout: time-outs do not reach them, but change `status`.

    While there is no connection to try, calls raise Error with ErrorCode.NOT_CONNECTED at once. Everything else is as
    in Client.
    """

    def __init__(self, *, address: Optional[str] = None, port: Optional[int] = None, app_name: str = "",
                 probe_after: Optional[float] = None, quiet_after: Optional[float] = None,
                 renew_after: Optional[float] = None, refresh_every: Optional[float] = None,
                 least_pause: Optional[float] = None, most_pause: Optional[float] = None) -> None:
        """`address`, `port` and `app_name` as in Client. The others are periods in seconds; the defaults suit
        statistics that arrive every second:

        - `probe_after`: silence after which the session requests a sign of life (1.5)
        - `quiet_after`: silence after which the session reconnects; more than `probe_after` (3)
        - `renew_after`: time without unsolicited reports of the daemon after which all requests of the subscriptions
          are repeated, once (2.5)
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
    """A status byte, which has no head."""

    def of(self, record: Any) -> SessionStatus:
        return SessionStatus(ffi.cast(self.c_type, record)[0])


STATUS = StatusAnswer("uint8_t *", SessionStatus)


def milliseconds(seconds: Optional[float]) -> int:
    """Returns 0, which selects the default, only for None."""
    return 0 if seconds is None else max(1, round(seconds * 1000))
