#!/usr/bin/env python3
"""Fails each system call at its Nth use, for a set of commands, and checks how every run ends.

A run passes if it ends with status 0 and the output of a run without a fault, or with status 1, nothing on standard
output and one error object on standard error. A stream passes if it prints only whole records. A run must end within
its time-outs plus slack, and never by a signal.
"""

import argparse
import asyncio
import os
import pathlib
import re
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "python"))
import zephtest  # noqa: E402

# Arguments, and the number of consecutive requests that each makes, with 5 seconds for each. A host name is looked up.
COMMANDS = [
    (("state",), 1),
    (("-i", "localhost", "state"), 1),
    (("version",), 1),
    (("show", "servers"), 1),
    (("firewall", "domains", "add", "example.com"), 2),
    (("daemon", "exit"), 0),
    (("stats", "1"), 1),
]

FAULTS = {
    "socket": ["EMFILE", "ENOBUFS"],
    "connect": ["ECONNREFUSED", "ETIMEDOUT", "EINTR", "EINPROGRESS"],
    "send": ["ECONNRESET", "EPIPE", "EINTR", "EAGAIN", "ENOBUFS", "short"],
    "recv": ["ECONNRESET", "EINTR", "EAGAIN", "ENOMEM", "short", "eof"],
    "poll": ["EINTR", "ENOMEM", "none"],
    "getsockopt": ["ENOBUFS"],
    "setsockopt": ["ENOBUFS"],
    "pipe2": ["EMFILE"],
    "write": ["EINTR", "EAGAIN"],
    "read": ["EINTR", "EAGAIN"],
    "getaddrinfo": ["EAI_NONAME", "EAI_AGAIN", "EAI_MEMORY"],
    "pthread_create": ["EAGAIN"],
}

TIME_OUT = 5.0
SLACK = 15.0


def blocks(text):
    """Returns the records of a stream; an incomplete rest is the last element."""
    return re.split(r"(?<=\]\n\n)", text)


class Sweep:
    def __init__(self, options, port, directory):
        self.options, self.port, self.directory = options, port, directory
        self.gate = asyncio.Semaphore(options.jobs)
        self.runs = self.failed_runs = 0
        self.findings, self.clean, self.struck = 0, {}, set()
        self.slowest = 0.0

    async def run(self, words, requests, plan):
        fired = os.path.join(self.directory, "-".join(words) + plan.replace(":", "-"))
        env = {"LD_PRELOAD": self.options.preload, "FAULT_FIRED": fired, **({"FAULT": plan} if plan else {})}
        async with self.gate:
            limit = TIME_OUT * max(requests, 1) + (1 if words[0] == "stats" else 0) + SLACK
            return await zephtest.run(self.options.zephctl, self.port, words, limit, env), os.path.exists(fired)

    def judge(self, words, result):
        if result.status is None:
            return f"did not end in {result.seconds:.0f} s"
        if words[0] == "stats":
            return self.judge_stream(words, result)
        if result.status == 0:
            whole = result.out == self.clean[words].out and result.err == ""
            return None if whole else "status 0 with another output"
        if result.status != 1:
            return f"status {result.status}"
        self.failed_runs += 1
        return None if result.out == "" and zephtest.is_error_object(result.err) else "status 1 without its error"

    def judge_stream(self, words, result):
        if result.status != 0:
            return f"status {result.status}"
        known = set(blocks(self.clean[words].out))
        if any(block not in known for block in blocks(result.out)):
            return "a record that is not whole"
        errors = [block for block in blocks(result.err) if block]
        pattern = re.compile(r'\["error",\n(.*)\]\n\n', re.DOTALL)
        self.failed_runs += bool(errors)
        for block in errors:
            match = pattern.fullmatch(block)
            if match is None or not zephtest.is_error_object(match.group(1)):
                return "something else than errors on standard error"
        return None if result.out or errors else "neither records nor errors"

    async def chain(self, words, requests, call, kind, count):
        """Fails the first, second, third... use until there is no further use."""
        for use in range(1, self.options.uses + 1):
            plan = f"{call}:{kind}:{use}:{count}"
            result, fired = await self.run(words, requests, plan)
            if not fired:
                return
            self.runs += 1
            self.struck.add(call)
            self.slowest = max(self.slowest, result.seconds)
            finding = self.judge(words, result)
            if finding:
                self.findings += 1
                print(f"FOUND: FAULT={plan} zephctl {' '.join(words)}: {finding}", flush=True)
                print(f"  status {result.status}\n  out {result.out[-300:]!r}\n  err {result.err[-300:]!r}", flush=True)

    async def all(self):
        for words, requests in COMMANDS:
            self.clean[words], _ = await self.run(words, requests, "")
            if self.clean[words].status != 0 or self.clean[words].err:
                raise SystemExit(f"zephctl {' '.join(words)} fails without a fault: {self.clean[words]}")
        chains = []
        for words, requests in COMMANDS:
            for call, kinds in FAULTS.items():
                for kind in kinds:
                    for count in self.options.counts:
                        # No system interrupts a call forever.
                        chains.append(self.chain(words, requests, call, kind,
                                                 count if count or kind != "EINTR" else 500))
        await asyncio.gather(*chains)


async def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--zephctl", required=True)
    parser.add_argument("--preload", required=True, help="the shim, after a sanitizer's libraries")
    parser.add_argument("--uses", type=int, default=3, help="the last use of each call to fail")
    parser.add_argument("--counts", type=int, nargs="+", default=[1], help="number of consecutive uses; 0: all later")
    parser.add_argument("--jobs", type=int, default=32, help="number of concurrent runs")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as directory:
        async with zephtest.Daemon() as daemon:
            sweep = Sweep(options, daemon.port, directory)
            await sweep.all()
    print(f"{sweep.runs} runs with a fault, {sweep.failed_runs} of them ended in an error, "
          f"the slowest after {sweep.slowest:.1f} s; {sweep.findings} findings")
    missed = set(FAULTS) - sweep.struck
    if missed:
        raise SystemExit(f"these calls never failed, the shim is not between: {sorted(missed)}")
    raise SystemExit(1 if sweep.findings else 0)


asyncio.run(main())
