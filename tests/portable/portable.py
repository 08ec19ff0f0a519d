#!/usr/bin/env python3
"""Tests the stripped zephctl in a root directory that contains nothing else, and its lookup of host names.

Runs as root in its own network and mount namespaces, which scripts/portable creates: it has a name server on port 53
and replaces /etc.
"""

import argparse
import asyncio
import fcntl
import os
import pathlib
import re
import shutil
import socket
import struct
import subprocess
import tempfile
import time

HOSTS = "127.0.0.1 hosts.test\n"
# The C library would load a module with that name and query nothing else.
NSSWITCH = "hosts: zephnone\n"
NAME_SERVER = "127.0.0.53"
RESOLV = f"nameserver {NAME_SERVER}\nsearch search.test\n"
NOT_CONNECTED = 3845
TIMEOUT_S = 5
SLACK_S = 1.5

# The name server's answers. None: it does not answer. Other names do not exist.
ADDRESSES = {
    "dns.test": ["127.0.0.1"],
    "two.test": ["127.0.0.2", "127.0.0.1"],  # nothing listens at the first
    "short.search.test": ["127.0.0.1"],
    "silent.test": None,
}


class NameServer(asyncio.DatagramProtocol):
    def __init__(self):
        self.asked = {}  # an event for each name

    def connection_made(self, transport):
        self.transport = transport

    def queried(self, name):
        return self.asked.setdefault(name, asyncio.Event())

    def datagram_received(self, query, sender):
        name, end = self.name_of(query)
        self.queried(name).set()
        addresses = ADDRESSES.get(name, [])
        if addresses is None:
            return
        header = struct.pack("!2sHHHHH", query[:2], 0x8180 if addresses else 0x8183, 1, len(addresses), 0, 0)
        answers = [struct.pack("!HHHIH4s", 0xC00C, 1, 1, 60, 4, socket.inet_aton(address)) for address in addresses]
        self.transport.sendto(header + query[12:end] + b"".join(answers), sender)

    @staticmethod
    def name_of(query):
        """Returns the name and the end of the first question."""
        labels, at = [], 12
        while query[at]:
            labels.append(query[at + 1:at + 1 + query[at]].decode())
            at += 1 + query[at]
        return ".".join(labels), at + 5


class Failed(Exception):
    pass


def expect(condition, what):
    if not condition:
        raise Failed(what)


class Runs:
    """Runs the program, in this root or in another."""

    def __init__(self, program, port):
        self.program, self.port = program, port

    def inside(self, root):
        """Uses the same file name, which the program prints in its usage."""
        return f"{root}/{os.path.basename(self.program)}"

    async def start(self, words, root=None):
        return await asyncio.create_subprocess_exec(
            self.inside("") if root else self.program, *words, stdin=asyncio.subprocess.DEVNULL,
            stdout=asyncio.subprocess.PIPE, stderr=asyncio.subprocess.PIPE, env={},
            preexec_fn=(lambda: os.chroot(root)) if root else None, cwd="/")

    async def finish(self, process):
        out, err = await asyncio.wait_for(process.communicate(), 3 * TIMEOUT_S)
        return process.returncode, out.decode(), err.decode()

    async def output(self, words, root=None):
        status, out, err = await self.finish(await self.start(words, root))
        expect(status == 0 and out and not err, f"zephctl {' '.join(words)}: {status} {out} {err}")
        return out

    def state_of(self, host):
        return ["-i", host, "-p", str(self.port), "state"]


async def check_empty_root(runs, _):
    """Runs in a root directory that contains only the program; the output is the same."""
    with tempfile.TemporaryDirectory() as root:
        shutil.copy(runs.program, runs.inside(root))
        for words in (["help"], runs.state_of("127.0.0.1")):
            expect(await runs.output(words, root) == await runs.output(words), f"{words} prints something else")


async def check_hosts_file(runs, server):
    """Finds a name in the hosts file without querying a name server."""
    await runs.output(runs.state_of("hosts.test"))
    expect(not server.queried("hosts.test").is_set(), "the name server was asked")


async def check_dns(runs, server):
    """Looks up names by DNS: one address, several addresses with an unreachable first one, and with the search list."""
    for host, asked in (("dns.test", "dns.test"), ("two.test", "two.test"), ("short", "short.search.test")):
        await runs.output(runs.state_of(host))
        expect(server.queried(asked).is_set(), f"the name server was not asked for {asked}")


async def check_short_address(runs, server):
    """Accepts a short form of an address."""
    await runs.output(runs.state_of("127.1"))
    expect(not server.queried("127.1").is_set(), "the name server was asked")


async def check_unknown_name(runs, server):
    """A name that does not exist ends in the time-out."""
    await expect_timeout(runs, server, "none.test")


async def check_silent_server(runs, server):
    """A name server that never answers delays neither the time-out nor the exit."""
    await expect_timeout(runs, server, "silent.test")


async def expect_timeout(runs, server, host):
    start = time.monotonic()
    status, out, err = await runs.finish(await runs.start(runs.state_of(host)))
    seconds = time.monotonic() - start
    expect(server.queried(host).is_set(), "the name server was not asked")
    expect((status, out) == (1, "") and f'"errorCode" : {NOT_CONNECTED},' in err, f"{status} {out} {err}")
    expect(TIMEOUT_S - 0.1 <= seconds <= TIMEOUT_S + SLACK_S, f"it took {seconds:.1f} s")


async def check_nothing_is_loaded(runs, server):
    """During a lookup, no file except the program is mapped."""
    server.queried("silent.test").clear()
    process = await runs.start(runs.state_of("silent.test"))
    try:
        await asyncio.wait_for(server.queried("silent.test").wait(), TIMEOUT_S)
        maps = pathlib.Path(f"/proc/{process.pid}/maps").read_text()
    finally:
        process.kill()
        await process.wait()
    files = set(re.findall(r" (/.*)", maps))
    expect(files == {runs.program}, f"mapped: {', '.join(sorted(files))}")


def bring_up_loopback():
    with socket.socket() as any_socket:
        up = struct.pack("16sh", b"lo", 1)  # IFF_UP
        fcntl.ioctl(any_socket, 0x8914, up)  # SIOCSIFFLAGS


def replace_etc(directory):
    for name, text in (("hosts", HOSTS), ("resolv.conf", RESOLV), ("nsswitch.conf", NSSWITCH)):
        pathlib.Path(directory, name).write_text(text, encoding="utf-8")
    subprocess.run(["mount", "--bind", directory, "/etc"], check=True)


async def check_all(program, simulator):
    greeting = (await asyncio.wait_for(simulator.stdout.readline(), 20)).decode()
    expect(greeting.startswith("listening on "), "zephsim does not start")
    runs = Runs(program, int(greeting.rsplit(":", 1)[1]))
    _, server = await asyncio.get_running_loop().create_datagram_endpoint(NameServer, (NAME_SERVER, 53))

    async def passes(check):
        try:
            await check(runs, server)
        except (Failed, OSError, asyncio.TimeoutError) as error:
            print(f"FAILED: {check.__doc__}\n  {error!r}", flush=True)
            return False
        print(f"ok: {check.__doc__}", flush=True)
        return True

    one_by_one = (check_empty_root, check_hosts_file, check_dns, check_short_address, check_nothing_is_loaded)
    fine = [await passes(check) for check in one_by_one]
    return all(fine + list(await asyncio.gather(passes(check_unknown_name), passes(check_silent_server))))


async def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--zephctl", required=True, type=os.path.realpath)
    parser.add_argument("--zephsim", required=True)
    options = parser.parse_args()
    bring_up_loopback()
    simulator = await asyncio.create_subprocess_exec(options.zephsim, "--port", "0", stdout=asyncio.subprocess.PIPE)
    try:
        with tempfile.TemporaryDirectory() as directory:
            replace_etc(directory)
            try:
                fine = await check_all(options.zephctl, simulator)
            finally:
                subprocess.run(["umount", "/etc"], check=True)
    finally:
        simulator.kill()
        await simulator.wait()
    raise SystemExit(0 if fine else 1)


asyncio.run(main())
