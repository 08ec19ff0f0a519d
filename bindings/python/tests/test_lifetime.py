"""Leaks of memory and threads, and the ends of objects and processes."""

import gc
import os
import time
import tracemalloc
import weakref

import pytest
import zephlink as z
from conftest import Daemon, finished, python, wait_until

BLOCK = "report_safe_browsing_block"


def resident():
    """Returns the resident memory in KiB."""
    gc.collect()
    with open("/proc/self/statm") as statm:
        return int(statm.read().split()[1]) * os.sysconf("SC_PAGE_SIZE") // 1024


def threads():
    return len(os.listdir("/proc/self/task"))


def work(daemon, client):
    for _ in range(500):
        client.get_state()
    for _ in range(20):
        client.subscribe_state()
        client.get_directory()
    with client.listen_for_safe_browsing_block(maxsize=100) as events:
        client.get_state()
        for _ in range(5):
            daemon.send(BLOCK, *[{"host": "a.example"}] * 200)
            events.get(10)


def test_memory_stays_flat(daemon, client):
    for _ in range(3):
        work(daemon, client)
    daemon.requests.clear()
    before = resident()
    tracemalloc.start()
    try:
        work(daemon, client)
        daemon.requests.clear()
        gc.collect()
        first, _ = tracemalloc.get_traced_memory()
        for _ in range(6):
            work(daemon, client)
        daemon.requests.clear()
        gc.collect()
        last, _ = tracemalloc.get_traced_memory()
    finally:
        tracemalloc.stop()
    assert last - first < 64 * 1024
    assert resident() - before < 4096


def test_clients_leave_no_thread_and_no_memory(daemon):
    def use():
        for _ in range(20):
            with z.Client(port=daemon.port) as client:
                client.get_state()
                client.subscribe_state()

    use()
    before, threads_before = resident(), threads()
    for _ in range(5):
        use()
    assert threads() == threads_before
    assert resident() - before < 4096


def test_dropping_everything_ends_it(daemon):
    """Drops live subscriptions, in a reference cycle or not, while the daemon sends to them."""
    before = threads()
    for round in range(30):
        client = z.Client(port=daemon.port)
        subscriptions = [client.listen_for_safe_browsing_block(maxsize=3) for _ in range(20)]
        client.get_state()
        daemon.send(BLOCK, *[{"host": "a.example"}] * 50)
        if round % 2:
            client.cycle = subscriptions
        gone = weakref.ref(client)
        del client, subscriptions
        gc.collect()
        assert gone() is None
    wait_until(lambda: threads() == before)


DROPPED = """
import sys, zephlink
with getattr(zephlink, sys.argv[1])(port=int(sys.argv[2])) as connection:
    states = connection.subscribe_state()
    next(states)
    print("ready", flush=True)
    for _ in range(300):
        dropped = [connection.subscribe_state(maxsize=2) for _ in range(3)]
        next(dropped[0])
        del dropped
    next(states)
print("done")
"""


@pytest.mark.parametrize("kind", ["Client", "Session"])
def test_dropped_subscriptions_get_nothing(daemon, kind):
    """Runs while the daemon keeps sending. Freed memory is overwritten, so that a use after free is detected."""
    process = python("import logging; logging.disable()\n" + DROPPED, kind, daemon.port,
                     env={**os.environ, "MALLOC_PERTURB_": "165"})
    assert process.stdout.readline() == "ready\n"
    end = time.monotonic() + 40
    while process.poll() is None and time.monotonic() < end:
        try:
            daemon.send("report_current_state", *[{"state": 6}] * 20)
        except ConnectionError:  # the process has ended
            break
    assert finished(process) == (0, "done\n", "")


def test_a_subscription_keeps_its_client(daemon):
    events = z.Client(port=daemon.port).subscribe_state()
    gc.collect()
    assert next(events).state is z.State.CONNECTED


FORK = """
import os, sys, warnings, zephlink
warnings.simplefilter("ignore")
client = zephlink.Client(port=int(sys.argv[1]))
states = client.subscribe_state()
next(states)
child = os.fork()
if child == 0:
    for use in (client.get_state, client.erase_logs, client.subscribe_state, lambda: next(states)):
        try:
            use()
        except RuntimeError as error:
            assert "fork" in str(error)
        else:
            sys.exit(3)
    states.close()
    client.close()
    del states, client
    with zephlink.Client(port=int(sys.argv[1])) as own:
        sys.exit(int(own.get_state().state))
_, status = os.waitpid(child, 0)
print(os.waitstatus_to_exitcode(status), client.get_state().state.name, flush=True)
"""


def test_fork(daemon):
    """The child may not use the parent's client, but may drop it and create its own; the parent's still works."""
    assert finished(python(FORK, daemon.port)) == (0, "6 CONNECTED\n", "")


# Ways for a script to end with open objects.
ENDS = {
    "nothing closed": "",
    "in a daemon thread's wait": """
import threading
threading.Thread(target=lambda: [print(each) for each in events], daemon=True).start()
def call():
    try:
        client.get_version()
    except zephlink.ClosedError:
        pass
threading.Thread(target=call, daemon=True).start()
""",
    "an exception": "raise SystemExit(0)",
    "a global cycle": "client.events = events; del client, events",
    "in asyncio": """
import asyncio
async def run():
    task = asyncio.create_task(events.__anext__())
    await asyncio.sleep(0)
asyncio.run(run())
""",
}


@pytest.mark.parametrize("end", ENDS)
def test_the_end_of_the_interpreter(mute, end):
    code = "import sys, zephlink\nclient = zephlink.Client(port=int(sys.argv[1]))\n" \
           "events = client.listen_for_safe_browsing_block()\n" + ENDS[end]
    start = time.monotonic()
    assert finished(python(code, mute.port)) == (0, "", "")
    assert time.monotonic() - start < 5


ENDS_ITS_LOOPS = """
import atexit, sys, threading
atexit.register(lambda: (thread.join(10), print(thread.is_alive())))  # runs after those of zephlink
import zephlink
client = zephlink.Client(port=int(sys.argv[1]))
thread = threading.Thread(target=list, args=[client.listen_for_safe_browsing_block()], daemon=True)
thread.start()
"""


def test_the_end_of_the_interpreter_ends_loops(mute):
    assert finished(python(ENDS_ITS_LOOPS, mute.port)) == (0, "False\n", "")


def test_the_end_of_the_interpreter_under_load(daemon):
    code = "import logging, sys, zephlink\nlogging.disable()\nclient = zephlink.Client(port=int(sys.argv[1]))\n" \
           "events = [client.listen_for_safe_browsing_block(maxsize=1) for _ in range(50)]\n" \
           "next(events[0])\n"
    process = python(code, daemon.port)
    while process.poll() is None:
        try:
            daemon.send(BLOCK, *[{"host": "a.example"}] * 20)
        except ConnectionError:  # the process has ended
            process.wait(20)
    assert finished(process) == (0, "", "")


def test_a_stopped_daemon_does_not_delay_the_end():
    scripted = Daemon(answer=lambda name, members: [])
    scripted.stop()
    code = "import sys, zephlink\nclient = zephlink.Client(port=int(sys.argv[1]))\nclient.erase_logs()\n"
    start = time.monotonic()
    assert finished(python(code, scripted.port)) == (0, "", "")
    assert time.monotonic() - start < 5
