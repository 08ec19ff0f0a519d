#!/usr/bin/env python3
"""Runs zephctl under load and for a long time: daemons that flood, trickle, restart and answer late, and many runs.

Every status and every output must be right; a long run must not grow in memory, descriptors or threads.
"""

import argparse
import asyncio
import os
import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "python"))
import zephtest  # noqa: E402

FULL = 600  # seconds: the length for which the counts below are given; shorter runs are scaled
GROWTH = 1024  # KiB by which the second half of a run may exceed the first
RECORD_END = b"]\n\n"

failures = []


def check(fine, text):
    if not fine:
        failures.append(text)
        print(f"FAILED: {text}", flush=True)


class Watched:
    """A long run: counts its records and samples its resources continuously."""

    def __init__(self, program, port, words):
        self.command = (program, "-p", str(port), *words)
        self.records, self.samples = 0, []

    async def __aenter__(self):
        self.process = await zephtest.start(*self.command, stdout=asyncio.subprocess.PIPE,
                                            stderr=asyncio.subprocess.DEVNULL)
        self.tasks = [asyncio.create_task(self.count()), asyncio.create_task(self.sample())]
        return self

    async def __aexit__(self, *_):
        await zephtest.stop(self.process)
        await asyncio.wait(self.tasks, timeout=5)

    async def count(self):
        tail = b""
        while data := await self.process.stdout.read(1 << 20):
            data = tail + data
            self.records += data.count(RECORD_END)
            tail = data[-2:]

    async def sample(self):
        proc = pathlib.Path(f"/proc/{self.process.pid}")
        while self.process.returncode is None:
            try:
                fields = dict(line.split(":", 1) for line in (proc / "status").read_text().splitlines())
                self.samples.append((int(fields["VmRSS"].split()[0]), int(fields["Threads"]),
                                     len(os.listdir(proc / "fd"))))
            except (OSError, KeyError, ValueError):
                return
            await asyncio.sleep(0.1)

    async def until(self, records, patience):
        end = time.monotonic() + patience
        while self.records < records and time.monotonic() < end and self.process.returncode is None:
            await asyncio.sleep(0.02)
        return self.records >= records

    def check(self, name):
        # The first tenth and second belong to the start.
        samples = self.samples[max(10, len(self.samples) // 10):]
        if len(samples) < 6:
            check(False, f"{name}: too short to tell anything")
            return ""
        half = len(samples) // 2
        memory = [max(sample[0] for sample in part) for part in (samples[:half], samples[half:])]
        threads, files = ({sample[at] for sample in samples} for at in (1, 2))
        check(memory[1] - memory[0] <= GROWTH, f"{name}: memory grew from {memory[0]} to {memory[1]} KiB")
        check(max(threads) <= 3, f"{name}: {max(threads)} threads")
        check(max(files) <= min(files) + 1, f"{name}: descriptors from {min(files)} to {max(files)}")
        return f"memory {memory[0]} then {memory[1]} KiB, {max(threads)} threads, {max(files)} descriptors"


def statistics(number):
    return {"time": number, "connections": [zephtest.connection(key) for key in range(3)]}


async def flood(program, seconds):
    """Sends as many reports as the client accepts."""
    frames = b"".join(zephtest.frame(zephtest.text_of("report_connection_stats", statistics(n))) for n in range(200))

    async def course(link):
        while True:
            link.write(frames)
            await link.writer.drain()

    async with zephtest.Daemon(course) as daemon, Watched(program, daemon.port, ("stats", str(seconds))) as run:
        try:
            await asyncio.wait_for(run.process.wait(), seconds + 20)
        except asyncio.TimeoutError:
            check(False, "flood: the stream's end was held up")
        check(run.process.returncode == 0, f"flood: status {run.process.returncode}")
        print(f"flood: {run.records} records in {seconds} s; {run.check('flood')}", flush=True)
        check(run.records > 1000, "flood: hardly a record")


async def day(program, reports):
    """A day of statistics, one report per second of it, sent as fast as the client accepts: none may be lost."""
    subscribed = asyncio.Event()

    async def course(link):
        while (await link.request())[0] != "request_connection_stats":
            pass
        subscribed.set()
        for number in range(reports):
            link.write(zephtest.frame(zephtest.text_of("report_connection_stats", statistics(number))))
            if number % 100 == 0:
                await link.writer.drain()
                await asyncio.sleep(0)
        await link.writer.drain()
        await link.reader.read()

    start = time.monotonic()
    async with zephtest.Daemon(course) as daemon, Watched(program, daemon.port, ("stats",)) as run:
        whole = await run.until(reports, 600)
        took = time.monotonic() - start
        await asyncio.sleep(3.5)  # some samples after the burst
        check(whole and run.records == reports, f"day: {run.records} of {reports} reports were printed")
        print(f"day: {reports} reports in {took:.1f} s; {run.check('day')}", flush=True)


async def large(program, megabytes):
    """Large messages do not leave memory in use: a report, an event that no call waits for, and a ping with its
    pong."""
    payload = b"x" * (megabytes * 1000000)
    small = zephtest.frame(zephtest.text_of("report_current_state", {"state": 6}))
    big = [
        zephtest.frame(b'["report_current_state",{"state":6,"more":"' + payload + b'"}]'),
        zephtest.frame(b'["report_unawaited",{"more":"' + payload + b'"}]'),
        zephtest.frame(payload, 9),
    ]
    begin, memory = asyncio.Event(), []

    async def course(link):
        while (await link.request())[0] != "request_streaming_stats":
            pass
        link.write(small)
        await begin.wait()
        pong = asyncio.create_task(link.reader.readexactly(len(payload)))
        for frame in big:
            link.write(frame)
        await link.writer.drain()
        await pong
        link.write(small)
        await link.reader.read()

    async with zephtest.Daemon(course) as daemon, Watched(program, daemon.port, ("stats",)) as run:
        check(await run.until(1, 30), "large: no first record")
        memory.append(run.samples[-1][0] if run.samples else 0)
        begin.set()
        check(await run.until(3, 120), "large: records are lost")
        seen = len(run.samples)
        while len(run.samples) < seen + 3 and run.process.returncode is None:
            await asyncio.sleep(0.05)
        memory.append(run.samples[-1][0])
        check(memory[1] - memory[0] <= 4 * GROWTH, f"large: memory grew from {memory[0]} to {memory[1]} KiB")
        print(f"large: messages of {megabytes} MB; memory {memory[0]} then {memory[1]} KiB", flush=True)


async def restarts(program, times):
    """A daemon that restarts: each instance sends one report, which must be printed."""
    lives = 0

    async def course(link):
        nonlocal lives
        lives += 1
        if lives == 1:
            # Read all initial requests, so that unread data does not turn the close into a reset.
            while (await link.request())[0] != "request_streaming_stats":
                pass
        await link.send("report_current_state", {"state": 6})
        link.writer.write_eof()
        await link.reader.read()

    async with zephtest.Daemon(course) as daemon, Watched(program, daemon.port, ("stats",)) as run:
        end = time.monotonic() + 30 + times
        while lives < times and time.monotonic() < end:
            await asyncio.sleep(0.5)
            if lives % 10 == 9:
                # Stay away for longer than a pause between two attempts, then return on the same port.
                daemon.server.close()
                await daemon.server.wait_closed()
                await asyncio.sleep(0.6)
                await daemon.__aenter__()
        await asyncio.sleep(0.5)
        check(lives >= times, f"restarts: only {lives} lives of {times}")
        check(run.records >= lives - 1, f"restarts: {run.records} records of {lives} lives")
        check(run.process.returncode is None, f"restarts: ended with {run.process.returncode}")
        print(f"restarts: {lives} lives, {run.records} records; {run.check('restarts')}", flush=True)


def slow(start, between):
    async def course(link):
        while True:
            name, members = await link.request()
            await asyncio.sleep(start)
            for event, data in zephtest.answers(name, members):
                for byte in zephtest.frame(zephtest.text_of(event, data)):
                    link.write(bytes([byte]))
                    await link.writer.drain()
                    await asyncio.sleep(between)
    return course


async def late(program, name, course, in_time):
    async with zephtest.Daemon(course) as daemon:
        result = await zephtest.run(program, daemon.port, ("state",), 30)
    if in_time:
        check(result.status == 0 and "CONNECTED" in result.out, f"{name}: {result}")
    else:
        check(result.status == 1 and zephtest.is_error_object(result.err) and '"Timeout"' in result.err,
              f"{name}: {result}")
        check(4.9 < result.seconds < 8, f"{name}: ended after {result.seconds:.1f} s")
    print(f"{name}: status {result.status} after {result.seconds:.1f} s", flush=True)


async def many(program, times, side_by_side):
    wanted, wrong, slowest = None, 0, 0.0
    start = time.monotonic()
    async with zephtest.Daemon() as daemon:
        async def worker(count):
            nonlocal wanted, wrong, slowest
            for _ in range(count):
                result = await zephtest.run(program, daemon.port, ("state",), 30)
                wanted = wanted or result.out
                slowest = max(slowest, result.seconds)
                wrong += result.status != 0 or result.out != wanted or result.err != ""
        await asyncio.gather(*(worker(times // side_by_side) for _ in range(side_by_side)))
    took = time.monotonic() - start
    name = f"{times // side_by_side * side_by_side} runs, {side_by_side} side by side"
    check(wanted is not None and "CONNECTED" in wanted and wrong == 0, f"{name}: {wrong} wrong")
    print(f"{name}: {took:.1f} s, the slowest {slowest * 1000:.0f} ms", flush=True)


async def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--zephctl", required=True)
    parser.add_argument("--seconds", type=int, default=40)
    options = parser.parse_args()
    share = min(1.0, options.seconds / FULL)
    program = options.zephctl
    await asyncio.gather(
        flood(program, max(6, options.seconds // 3)),
        restarts(program, max(20, int(1000 * share))),
        late(program, "late", slow(6, 0), False),
        late(program, "trickle, a byte a second", slow(0, 1), False),
        late(program, "trickle, a byte in 20 ms", slow(0, 0.02), True),
    )
    await large(program, 50)
    await day(program, max(4000, int(86400 * share)))
    await many(program, max(300, int(10000 * share)), 1)
    await many(program, max(300, int(10000 * share)), 50)
    print(f"{len(failures)} failures")
    raise SystemExit(1 if failures else 0)


asyncio.run(main())
