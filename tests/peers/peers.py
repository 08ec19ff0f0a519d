#!/usr/bin/env python3
"""Runs zephctl with servers on other WebSocket implementations: its output must be the same as with ours."""

import argparse
import asyncio
import json
import os
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "python"))
import zephtest  # noqa: E402

MANY = 5000  # servers in the directory: a report of several hundred kilobytes

COMMANDS = [
    ("state",),
    ("version",),
    ("show", "servers"),
    ("show", "adapters"),
    ("firewall", "domains", "add", "example.com"),
    ("stats", "1"),
    ("daemon", "exit"),
]


def reports():
    answers = {
        **zephtest.ANSWERS,
        "set_firewall_domains": ("report_firewall_settings", {**zephtest.FIREWALL, "domains": ["example.com"]}),
        "request_directory": ("report_directory", [zephtest.server(number) for number in range(1, MANY)]),
    }
    return {request: [zephtest.text_of(*answer)] for request, answer in answers.items()}


def as_lines(table):
    return "".join(f"{request}\n{text}\n" for request, texts in table.items() for text in texts)


async def outputs(program, port):
    return [(await zephtest.run(program, port, words, 30))[:3] for words in COMMANDS]


async def try_peer(program, name, command, wanted):
    process = await zephtest.start(*command, stdout=asyncio.subprocess.PIPE)
    try:
        greeting = (await asyncio.wait_for(process.stdout.readline(), 20)).decode()
        if not greeting.startswith("listening on 127.0.0.1:"):
            print(f"{name}: FAILED: it does not start")
            return False
        got = await outputs(program, int(greeting.rsplit(":", 1)[1]))
    finally:
        await zephtest.stop(process)
    fine = True
    for words, ours, theirs in zip(COMMANDS, wanted, got):
        if ours != theirs:
            fine = False
            print(f"{name}: FAILED: zephctl {' '.join(words)}: {str(theirs)[:400]}")
    print(f"{name}: {len(COMMANDS)} commands, {'as it should be' if fine else 'NOT as it should be'}", flush=True)
    return fine


async def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--zephctl", required=True)
    parser.add_argument("--work", required=True, help="a directory for the answers")
    parser.add_argument("--peer", nargs="+", action="append", required=True, metavar=("NAME", "COMMAND"))
    options = parser.parse_args()

    table = reports()
    files = {kind: os.path.join(options.work, f"answers.{kind}") for kind in ("json", "lines")}
    for kind, text in (("json", json.dumps(table)), ("lines", as_lines(table))):
        pathlib.Path(files[kind]).write_text(text, encoding="utf-8")

    async def course(link):
        while True:
            name, _ = await link.request()
            for text in table.get(name, []):
                link.write(zephtest.frame(text))
                await link.writer.drain()

    async with zephtest.Daemon(course) as daemon:
        wanted = await outputs(options.zephctl, daemon.port)
    bad = [words for words, run in zip(COMMANDS, wanted) if run[0] != 0 or run[2]]
    if bad:
        raise SystemExit(f"against our own daemon already these fail: {bad}")
    fine = [await try_peer(options.zephctl, name, [word.format(**files) for word in command], wanted)
            for name, *command in options.peer]
    raise SystemExit(0 if all(fine) else 1)


asyncio.run(main())
