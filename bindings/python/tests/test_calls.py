"""Failing calls, interrupted calls, and many concurrent calls."""

import concurrent.futures
import os
import pickle
import signal
import threading
import time

import pytest
import zephlink as z
from conftest import Daemon, finished, python, wait_until
from zephlink._missing import explained

PORTS = [z.ProtocolPortPair(z.PortProtocol.TCP, 80, 0)]

# Calls that must not send a request: method, arguments, exception.
WRONG = [
    ("set_mode", ["speed"], TypeError),
    ("set_mode", [1.0], TypeError),
    ("set_mode", [None], TypeError),
    ("set_mode", [-1], OverflowError),
    ("set_mode", [], TypeError),
    ("set_jumbo_packets", ["on"], TypeError),
    ("set_jumbo_packets", [1], TypeError),
    ("set_jumbo_packets", [None], TypeError),
    ("set_max_redundant_sends", [2**32], OverflowError),
    ("set_max_redundant_sends", ["2"], TypeError),
    ("set_overflow_threshold", ["2"], TypeError),
    ("set_connection_rate_limit", [7, 1], TypeError),
    ("set_connection_rate_limit", [None, 1], TypeError),
    ("set_connection_rate_limit", [b"eth0", 1], TypeError),
    ("set_connection_rate_limit", ["eth0\0", 1], ValueError),
    ("set_connection_rate_limit", ["\ud800", 1], UnicodeEncodeError),
    ("set_connection_rate_limit", ["eth0", 2**63], OverflowError),
    ("set_firewall_domains", ["a.example"], TypeError),
    ("set_firewall_domains", [["a.example", None]], TypeError),
    ("set_firewall_domains", [["a" * 50]], ValueError),
    ("set_firewall_domains", [7], TypeError),
    ("set_firewall_domains", [["a"] * 70000], OverflowError),
    ("set_firewall_ipv4", [["fe80::1"]], ValueError),
    ("set_firewall_ipv4", [["localhost"]], ValueError),
    ("set_firewall_ipv6", [["10.0.0.1"]], ValueError),
    ("set_firewall_ports", [[(0, 80, 0)]], TypeError),
    ("set_firewall_ports", [[z.ProtocolPortPair(z.PortProtocol.TCP, 65536, 0)]], OverflowError),
    ("set_downstream_subnets", [PORTS], TypeError),
    ("set_downstream_subnets", [[z.Subnet("1" * 46, 8)]], ValueError),
    ("set_daemon_log_settings", [None], TypeError),
    ("subscribe_stats", [True, [-1]], OverflowError),
    ("subscribe_stats", [True, [1] * 300], OverflowError),
    ("subscribe_state", [5], TypeError),
]


@pytest.mark.parametrize("method, arguments, exception", WRONG)
def test_wrong_arguments_send_nothing(client, daemon, method, arguments, exception):
    with pytest.raises(exception):
        getattr(client, method)(*arguments)
    client.get_state()
    assert daemon.requests == ["request_current_state"]


@pytest.mark.parametrize("options, exception", [
    ({"port": 65536}, OverflowError), ({"port": "9330"}, TypeError), ({"address": "1" * 46}, ValueError),
    ({"address": 7}, TypeError), ({"app_name": "x" * 32}, ValueError), ({"nonsense": 1}, TypeError),
])
def test_wrong_options(options, exception):
    with pytest.raises(exception):
        z.Client(**options)


def test_an_error_has_code_type_and_text(client, daemon):
    daemon.answer = lambda name, members: [
        ("report_settings_error", {"setting": name, "type": 11, "msg": "not \u00e4 here"})]
    with pytest.raises(z.Error) as raised:
        client.set_jumbo_packets(True)
    error = raised.value
    assert (error.code, error.type, error.text) == (11, "Setting locked by server configuration", "not \u00e4 here")
    assert error.code is z.ErrorCode.LOCKED_BY_SERVER and not isinstance(error, z.ClosedError)
    assert str(error) == "not \u00e4 here (Setting locked by server configuration, 11)"
    copy = pickle.loads(pickle.dumps(error))
    assert (copy.code, copy.text) == (error.code, error.text)
    daemon.answer = lambda name, members: [("report_settings_error", {"setting": name, "type": -1, "msg": ""})]
    with pytest.raises(z.Error) as raised:
        client.set_jumbo_packets(True)
    assert raised.value.code == 2**32 - 1


def test_a_dead_daemon():
    scripted = Daemon()
    scripted.stop()
    with z.Client(port=scripted.port) as client:
        start = time.monotonic()
        with pytest.raises(z.Error) as raised:
            client.get_state()
        assert raised.value.code is z.ErrorCode.NOT_CONNECTED and 4 < time.monotonic() - start < 8
        client.erase_logs()  # has no answer, so it succeeds


def test_a_daemon_that_answers_nothing(mute):
    with z.Client(port=mute.port) as client:
        with pytest.raises(z.Error) as raised:
            client.get_state()
        assert raised.value.code is z.ErrorCode.TIMEOUT


def test_after_close():
    client = z.Client()
    subscription = client.subscribe_state()
    client.close()
    client.close()
    assert subscription.closed and list(subscription) == []
    for use in (client.get_state, client.erase_logs, client.subscribe_state, client.get_historic_connection_stats,
                lambda: client.set_mode(z.BondingMode.SPEED)):
        with pytest.raises(z.ClosedError):
            use()


def test_close_ends_calls_that_wait(mute):
    client = z.Client(port=mute.port)
    with concurrent.futures.ThreadPoolExecutor(10) as pool:
        calls = [pool.submit(client.get_state) for _ in range(10)]
        wait_until(lambda: len(mute.requests) == 10)
        start = time.monotonic()
        client.close()
        for call in calls:
            with pytest.raises(z.ClosedError):
                call.result()
    assert time.monotonic() - start < 2


INTERRUPTED = """
import sys, time, zephlink
client = zephlink.Client(port=int(sys.argv[1]))
events = client.listen_for_safe_browsing_block()
try:
    print("waiting", flush=True)
    {wait}
except KeyboardInterrupt:
    print("interrupted")
"""


@pytest.mark.parametrize("wait", ["client.get_state()", "next(events)", "events.get(100)",
                                  "client.get_historic_connection_stats()"])
def test_ctrl_c_ends_a_wait_at_once(mute, wait):
    process = python(INTERRUPTED.format(wait=wait), mute.port)
    assert process.stdout.readline() == "waiting\n"
    wait_until(lambda: open(f"/proc/{process.pid}/stat").read().split()[2] == "S")  # sleeping
    start = time.monotonic()
    process.send_signal(signal.SIGINT)
    assert finished(process) == (0, "interrupted\n", "")
    assert time.monotonic() - start < 3


def test_fifty_threads(daemon, client):
    barrier = threading.Barrier(50)

    def work(number):
        barrier.wait(20)
        for _ in range(20):
            assert client.get_state().state is z.State.CONNECTED
            assert len(client.get_directory().servers) == 39
        return number

    with concurrent.futures.ThreadPoolExecutor(50) as pool:
        assert list(pool.map(work, range(50))) == list(range(50))
    # A report ends all calls that wait for it, so the last requests may not have arrived yet.
    wait_until(lambda: len(daemon.requests) == 2000)


def test_other_threads_run_while_a_call_waits(mute):
    with z.Client(port=mute.port) as client:
        with concurrent.futures.ThreadPoolExecutor(1) as pool:
            call = pool.submit(client.get_state)
            wait_until(lambda: mute.requests)
            turns = 0
            while not call.done():
                turns += 1
            assert turns > 1000
            assert isinstance(call.exception(), z.Error)


def test_a_missing_library_is_named(tmp_path):
    # The package with an extension module for a version of the library that does not exist.
    package = os.path.dirname(z.__file__)
    for name in os.listdir(package):
        if os.path.isfile(os.path.join(package, name)):
            content = open(os.path.join(package, name), "rb").read()
            (tmp_path / "zephlink").mkdir(exist_ok=True)
            (tmp_path / "zephlink" / name).write_bytes(content.replace(b"libzephlinksdk.so.14\0",
                                                                       b"libzephlinksdk.so.99\0"))
    status, _, err = finished(python("import zephlink", env={**os.environ, "PYTHONPATH": str(tmp_path)}))
    assert status == 1
    assert "ImportError: zephlink needs the shared library libzephlinksdk.so.99" in err
    assert "LD_LIBRARY_PATH" in err
    other = ImportError("another reason")
    assert explained(other) is other
