#!/usr/bin/env python3
"""Tests the bounds of the schemas with a daemon that respects none: tests/schemas/extremes.py ZEPHCTL ZEPHSIM.

Changes all values in the reports of the simulated daemon, and validates zephctl's output for them. Exits with status 77
without python3-jsonschema.
"""

import asyncio
import json
import pathlib
import subprocess
import sys
import threading

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "python"))
from outputs import READS, STATES, Coverage  # noqa: E402
from zephtest import Daemon, run  # noqa: E402

SECONDS = 30
LISTS = ["firewall domains set a.example", "firewall ipv4 set 192.0.2.1", "firewall ipv6 set 2001:db8::1"]
CHANGES = [*STATES["private"], *STATES["with settings"], *LISTS]


def reads(coverage):
    """Returns a read-only command line for each output that has one."""
    names = [name for name in coverage.prints if name in READS or name.startswith("show ")]
    return [*{tuple(coverage.prints[name]): name for name in names}.values(), "stats 1 day"]


def captured(zephctl, zephsim, commands):
    """Returns the simulated daemon's report for each request of the commands."""
    command = ["setpriv", "--pdeathsig", "KILL", zephsim, "--port", "0", "--seed", "1", "--fast", "--print"]
    with subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True) as process:
        port = process.stdout.readline().strip().rsplit(":", 1)[1]
        lines = []
        reader = threading.Thread(target=lambda: lines.extend(process.stdout))
        reader.start()
        for words in commands:
            subprocess.run([zephctl, "--port", port, *words.split()], capture_output=True, timeout=SECONDS, check=True)
        process.terminate()
        reader.join()
    return first_answers(lines)


def first_answers(lines):
    """Returns the report that follows each request in the messages that the simulated daemon received (<) and sent
    (>)."""
    answers, request = {}, None
    for line in lines:
        direction, name, members = line.rstrip("\n").split(" ", 2)
        if direction == "<":
            request = name
        elif direction == ">" and name.startswith("report_"):
            answers.setdefault(request, (name, json.loads(members)))
            request = None
    return answers


def changed(value, number, text, counts=(4, 4)):
    """Returns a report with these values for all of its numbers and texts. Its lists, and the lists in their elements,
    have `counts` elements."""
    if isinstance(value, dict):
        return {name: changed(member, number, text, counts) for name, member in value.items()}
    if isinstance(value, list):
        elements = [changed(element, number, text, counts[1:]) for element in value[:4]]
        return (elements * counts[0])[: counts[0]]
    if isinstance(value, str):
        return text
    return value if isinstance(value, bool) else number


VARIANTS = {
    "nothing": lambda data: {},
    "no object": lambda data: "x",
    "empty elements": lambda data: [{}] * 1100,
    "large": lambda data: changed(data, 2**64 - 1, "x" * 300, (1100, 20)),
    "small": lambda data: changed(data, -(2**63), ""),
    "real": lambda data: changed(data, 1.7e308, "é" * 150),
    "mistyped": lambda data: changed(data, "7", True),
}


async def check(zephctl, coverage, answers, slots, title, change):
    """Runs the reading commands with a daemon that answers with changed reports."""
    reports = {request: (event, change(data)) for request, (event, data) in answers.items()}

    async def course(link):
        while True:
            request, _ = await link.request()
            if request in reports:
                await link.send(*reports[request])

    async def read(words):
        async with slots:
            done = await run(zephctl, daemon.port, words.split(), SECONDS)
        coverage.run(f"{title}: {words}", words, done.out, done.err)
        # Changed samples of historic statistics may be unreadable: an error is correct.
        if not done.out and words != "stats historic":
            coverage.fault(f"{title}: {words}: printed no record: {done.err}")

    async with Daemon(course) as daemon:
        await asyncio.gather(*map(read, reads(coverage)))


async def check_all(zephctl, zephsim):
    coverage = Coverage()
    answers = captured(zephctl, zephsim, [*CHANGES, *reads(coverage)])
    slots = asyncio.Semaphore(8)  # for concurrent runs
    await asyncio.gather(*(check(zephctl, coverage, answers, slots, *variant) for variant in VARIANTS.items()))
    print(*sorted(coverage.faults), sep="\n", end="\n" if coverage.faults else "")
    print(f"{len(answers)} reports, each in {len(VARIANTS)} variants")
    return int(bool(coverage.faults))


if __name__ == "__main__":
    sys.exit(asyncio.run(check_all(*(str(pathlib.Path(path).resolve()) for path in sys.argv[1:3]))))
