"""Daemons for the tests: zephsim, and a daemon whose reports the test sends."""

import asyncio
import os
import pathlib
import subprocess
import sys
import threading
import time

import pytest

import zephlink

ROOT = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(ROOT / "tests" / "python"))
import zephtest  # noqa: E402

BUILD = pathlib.Path(os.environ.get("ZEPHCTL_BUILD", ROOT / "build" / "release"))


def wait_until(condition, seconds=10.0):
    """Waits for a condition; fails after a time-out."""
    end = time.monotonic() + seconds
    while not condition():
        assert time.monotonic() < end, "waited in vain"
        time.sleep(0.002)


class Simulator:
    """A zephsim and the requests that it has received: pairs of a name and the members as text."""

    def __init__(self, *options):
        self.process = subprocess.Popen(
            [BUILD / "simulator" / "zephsim", "--port", "0", "--fast", "--print", "--print-secrets", *options],
            stdout=subprocess.PIPE, text=True, preexec_fn=zephtest.end_with_the_test)
        self.port = int(self.process.stdout.readline().rsplit(":", 1)[1])
        self.requests = []
        self.reader = threading.Thread(target=self.read)
        self.reader.start()

    def read(self):
        for line in self.process.stdout:
            direction, name, members = line.rstrip("\n").split(" ", 2)
            if direction in "<?":
                self.requests.append((name, members))

    def stop(self):
        self.process.kill()
        self.process.wait()
        self.reader.join()
        self.process.stdout.close()


class Daemon:
    """A daemon on a thread. Answers all requests like zephtest; `send` sends a test's reports to every client."""

    def __init__(self, answer=zephtest.answers):
        self.answer, self.links, self.requests = answer, [], []
        self.loop = asyncio.new_event_loop()
        self.daemon = zephtest.Daemon(self.course)
        self.thread = threading.Thread(target=self.loop.run_forever)
        self.thread.start()
        self.run(self.daemon.__aenter__())
        self.port = self.daemon.port

    def run(self, work):
        return asyncio.run_coroutine_threadsafe(work, self.loop).result(30)

    async def course(self, link):
        self.links.append(link)
        try:
            while True:
                name, members = await link.request()
                self.requests.append(name)
                for event, data in self.answer(name, members):
                    await link.send(event, data)
        finally:
            self.links.remove(link)

    def send(self, event, *data):
        async def to_all():
            for link in list(self.links):
                for each in data:
                    await link.send(event, each)
        self.run(to_all())

    def stop(self):
        async def end():
            self.daemon.server.close()
            others = asyncio.all_tasks() - {asyncio.current_task()}
            for task in others:
                task.cancel()
            await asyncio.gather(*others, return_exceptions=True)
        self.run(end())
        self.loop.call_soon_threadsafe(self.loop.stop)
        self.thread.join()
        self.loop.close()


@pytest.fixture
def simulator():
    simulated = Simulator()
    yield simulated
    simulated.stop()


@pytest.fixture
def daemon():
    scripted = Daemon()
    yield scripted
    scripted.stop()


@pytest.fixture
def mute():
    """A daemon that does not answer."""
    scripted = Daemon(answer=lambda name, members: [])
    yield scripted
    scripted.stop()


@pytest.fixture
def client(daemon):
    with zephlink.Client(port=daemon.port) as opened:
        yield opened


def python(code, *arguments, **options):
    """Runs code in a new process."""
    return run("-c", code, *arguments, **options)


def run(*words, **options):
    """Starts Python. The process is ended with the test."""
    return subprocess.Popen([sys.executable, *map(str, words)], text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE, preexec_fn=zephtest.end_with_the_test,
                            **options)


def finished(process, seconds=20):
    """Returns the status and both outputs of a process."""
    try:
        out, err = process.communicate(timeout=seconds)
    except subprocess.TimeoutExpired:
        process.kill()
        process.communicate()
        raise
    return process.returncode, out, err
