"""Sessions: they survive failures of the daemon."""

import gc
import os
import threading
import time

import pytest
import zephlink as z
import zephtest
from conftest import Daemon, wait_until

# Short, so that a test sees several attempts.
PERIODS = {"probe_after": 0.3, "quiet_after": 0.8, "renew_after": 0.5, "refresh_every": 20, "least_pause": 0.1,
           "most_pause": 0.5}


@pytest.fixture
def session(daemon):
    with z.Session(port=daemon.port, **PERIODS) as opened:
        yield opened


def threads():
    return len(os.listdir("/proc/self/task"))


def drop(daemon):
    """Drops the connection, like a restarted daemon."""
    daemon.loop.call_soon_threadsafe(lambda: [link.writer.transport.abort() for link in daemon.links])


def send_close(daemon):
    daemon.loop.call_soon_threadsafe(lambda: [link.write(zephtest.frame(b"", 8)) for link in daemon.links])


def test_calls_are_those_of_a_client(session):
    assert session.get_state().state is z.State.CONNECTED
    assert session.set_firewall_domains([]).domains == []
    with pytest.raises(TypeError):
        session.set_mode("speed")
    session.erase_logs()


@pytest.mark.parametrize("lose", [drop, send_close])
def test_subscriptions_outlive_a_connection(daemon, session, lose):
    states, stats = session.subscribe_state(), session.subscribe_connection_stats()
    assert states.get(10).state is z.State.CONNECTED and stats.get(10).connections
    wait_until(lambda: "stat_subscribe" in daemon.requests)
    for _ in range(3):
        # Unsolicited reports from the daemon, which then stop.
        daemon.send("report_current_state", *[{"state": 6}] * 3)
        states.get(10)
        daemon.requests.clear()
        lose(daemon)
        # Subscribed again, including statistics.
        wait_until(lambda: {"request_current_state", "request_connection_stats", "stat_subscribe"}
                   <= set(daemon.requests))
        wait_until(lambda: session.status is z.SessionStatus.LIVE)
    while True:
        daemon.send("report_current_state", {"state": 2})
        if states.get(10).state is z.State.LOGGED_IN:
            break


def test_status(daemon, session):
    with session.subscribe_status() as statuses:
        assert (seen := statuses.get(10)) in (z.SessionStatus.CONNECTING, z.SessionStatus.LIVE)
        while seen is not z.SessionStatus.LIVE:
            seen = statuses.get(10)
        daemon.answer = lambda name, members: []
        assert statuses.get(10) is z.SessionStatus.QUIET and session.status.text in ("quiet", "mute")
        # A call does not hang and does not block the session.
        with pytest.raises(z.Error):
            session.get_state()
        assert statuses.get(20) is z.SessionStatus.MUTE
        daemon.answer = zephtest.answers
        assert statuses.get(20) is z.SessionStatus.LIVE
    with pytest.raises(z.ClosedError):
        statuses.get()


def test_close_ends_everything(mute):
    session = z.Session(port=mute.port, **PERIODS)
    wait_until(lambda: mute.requests)
    subscriptions = [session.subscribe_state(), session.listen_for_safe_browsing_block()]
    got = []

    def call():
        try:
            session.get_version()
        except z.Error as error:
            got.append(error)

    waiting = [threading.Thread(target=list, args=[each]) for each in subscriptions] + [threading.Thread(target=call)]
    for thread in waiting:
        thread.start()
    start = time.monotonic()
    session.close()
    for thread in waiting:
        thread.join(10)
    assert len(got) == 1 and time.monotonic() - start < 3
    for use in (session.get_state, session.subscribe_state, session.subscribe_status, session.erase_logs,
                lambda: session.subscribe_stats(True), lambda: session.status):
        with pytest.raises(z.ClosedError):
            use()


def test_dropping_a_session_ends_it(daemon):
    before = threads()
    for _ in range(20):
        session = z.Session(port=daemon.port, **PERIODS)
        session.cycle = [session.subscribe_state(), session.subscribe_status()]
        next(session.cycle[0])
        daemon.send("report_current_state", *[{"state": 6}] * 10)
        del session
        gc.collect()
    wait_until(lambda: threads() == before)


def test_an_unreachable_daemon():
    scripted = Daemon()
    scripted.stop()
    with z.Session(port=scripted.port, **PERIODS) as session:
        states = session.subscribe_state()
        statuses = session.subscribe_status()
        assert [statuses.get(20) for _ in range(2)] == [z.SessionStatus.CONNECTING, z.SessionStatus.UNREACHABLE]
        with pytest.raises(TimeoutError):
            states.get(0)
