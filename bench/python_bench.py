#!/usr/bin/env python3
"""Compares the cost of calls and events of the package with runs of zephctl, on the same zephsim.

    PYTHONPATH=build/python/site LD_LIBRARY_PATH=build/python/prefix/lib /usr/bin/python3 bench/python_bench.py
"""

import argparse
import json
import pathlib
import resource
import subprocess
import time
from contextlib import contextmanager

import zephlink


@contextmanager
def simulator(build, *options):
    process = subprocess.Popen([build / "simulator" / "zephsim", "--port", "0", *options], stdout=subprocess.PIPE,
                               text=True)
    try:
        yield int(process.stdout.readline().rsplit(":", 1)[1])
    finally:
        process.kill()
        process.wait()


def cpu():
    """Returns the CPU seconds of this process and of its finished children."""
    return sum(usage.ru_utime + usage.ru_stime
               for usage in map(resource.getrusage, (resource.RUSAGE_SELF, resource.RUSAGE_CHILDREN)))


def measured(name, count, work):
    wall, used = time.perf_counter(), cpu()
    work(count)
    wall, used = time.perf_counter() - wall, cpu() - used
    print(f"{name:42} {wall / count * 1e6:10.1f} us {used / count * 1e6:10.1f} us")
    return wall / count


def run(build, port, *words):
    done = subprocess.run([build / "zephctl", "-p", str(port), *words], capture_output=True, check=True)
    return json.loads(done.stdout)


def calls(build):
    with simulator(build) as port, zephlink.Client(port=port) as client:
        client.get_state()
        for method, words in ((client.get_state, ["state"]), (client.get_directory, ["show", "servers"])):
            name = method.__name__
            def call(count):
                for _ in range(count):
                    method()

            def start(count):
                for _ in range(count):
                    run(build, port, *words)

            call(100)
            ours = measured(f"client.{name}()", 2000, call)
            theirs = measured(f"subprocess zephctl {' '.join(words)}", 100, start)
            print(f"{'':42} {theirs / ours:9.0f} times")


def by_client(port, count):
    with zephlink.Client(port=port) as client:
        reports = client.subscribe_connection_stats(maxsize=count)
        for _ in range(count):
            reports.get(60)
        assert reports.dropped == 0


def by_zephctl(build, port, count):
    """Reads the output of `zephctl stats`: an array for each report, followed by an empty line."""
    process = subprocess.Popen([build / "zephctl", "-p", str(port), "stats"], stdout=subprocess.PIPE, text=True)
    text, seen = [], 0
    for line in process.stdout:
        if line != "\n":
            text.append(line)
            continue
        json.loads("".join(text))
        text.clear()
        seen += 1
        if seen == count:
            break
    assert seen == count
    process.terminate()
    process.wait()


def connect(port):
    """Connects the tunnel, so that the daemon has statistics to report."""
    with zephlink.Client(port=port) as client:
        client.login("demo@example.com", "demo")
        client.connect(zephlink.ConnectMethod.CLOSEST)


def events(build, count):
    with simulator(build, "--flood", str(count)) as port:
        connect(port)
        ours = measured("an event of subscribe_connection_stats()", count, lambda number: by_client(port, number))
        theirs = measured("an event of subprocess zephctl stats", count, lambda number: by_zephctl(build, port, number))
        print(f"{'':42} {theirs / ours:9.1f} times")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, default=pathlib.Path("build/release"))
    parser.add_argument("--events", type=int, default=10000)
    options = parser.parse_args()
    print(f"{'':42} {'wall':>13} {'CPU':>13}")
    calls(options.build)
    events(options.build, options.events)


if __name__ == "__main__":
    main()
