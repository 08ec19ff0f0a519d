"""Shared by the tests that are scripts: a daemon under full control, and a runner of zephctl.

Standard library only. Everything is on loopback.
"""

import asyncio
import base64
import ctypes
import hashlib
import json
import os
import signal
import struct
import time
from collections import namedtuple


def server(number):
    return {"country": "de", "city": "frankfurt", "num": str(number), "dc": "fra-1", "torrent": "yes"}


def connection(number):
    return {"guid": f"adapter{number}", "key": number, "cnnct": True, "ltMs": 20, "sndBytes": 1, "rcvBytes": 2}


FIREWALL = {"mode": "off", "domains": [], "ipv4": [], "ipv6": [], "ports": []}
ANSWERS = {
    "request_current_state": ("report_current_state", {"state": 6}),
    "request_version_data": ("report_version_data", {"maj": 1, "min": 2, "bug": 3, "build": 4}),
    "request_directory": ("report_directory", [server(number) for number in range(1, 40)]),
    "request_firewall_settings": ("report_firewall_settings", FIREWALL),
    "set_firewall_domains": ("report_firewall_settings", FIREWALL),
    "request_networks": ("report_networks", [{"guid": "wlan0", "name": "Wi-Fi", "type": "Wi-Fi"}]),
    "request_connection_stats": ("report_connection_stats", {"time": 1, "connections": [connection(1)]}),
    "request_session_stats": ("report_session_stats", {}),
    "request_streaming_stats": ("report_streaming_stats", {"streams": []}),
}


def answers(name, members, table=ANSWERS):
    """Returns the reports that answer a request: always the same, with the values that the request sets."""
    if name not in table:
        return []
    event, data = table[name]
    return [(event, {**data, **members} if members else data)]


def text_of(event, data):
    return json.dumps([event, data, "daemon"])


def frame(text, opcode=1):
    payload = text.encode() if isinstance(text, str) else text
    size = len(payload)
    if size < 126:
        head = struct.pack("!BB", 0x80 | opcode, size)
    elif size < 65536:
        head = struct.pack("!BBH", 0x80 | opcode, 126, size)
    else:
        head = struct.pack("!BBQ", 0x80 | opcode, 127, size)
    return head + payload


class Disconnected(Exception):
    """The peer has closed the connection, or does not follow the protocol."""


class Connection:
    def __init__(self, reader, writer):
        self.reader, self.writer = reader, writer

    async def upgrade(self):
        head = (await self.reader.readuntil(b"\r\n\r\n")).decode()
        fields = dict(line.split(": ", 1) for line in head.split("\r\n")[1:] if ": " in line)
        if not head.startswith("GET / HTTP/1.1\r\n") or "Sec-WebSocket-Key" not in fields:
            raise Disconnected
        digest = hashlib.sha1((fields["Sec-WebSocket-Key"] + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11").encode())
        self.write(
            "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
            f"Sec-WebSocket-Accept: {base64.b64encode(digest.digest()).decode()}\r\n"
            "Sec-WebSocket-Protocol: event-protocol\r\n\r\n"
        )

    def write(self, data):
        self.writer.write(data.encode() if isinstance(data, str) else data)

    async def send(self, event, data):
        self.write(frame(text_of(event, data)))
        await self.writer.drain()

    async def text(self):
        """Returns the next text message, unparsed."""
        while True:
            first, second = await self.reader.readexactly(2)
            size = second & 0x7F
            if size == 126:
                (size,) = struct.unpack("!H", await self.reader.readexactly(2))
            elif size == 127:
                (size,) = struct.unpack("!Q", await self.reader.readexactly(8))
            if not second & 0x80 or not first & 0x80:
                raise Disconnected
            key = await self.reader.readexactly(4)
            payload = bytes(byte ^ key[at % 4] for at, byte in enumerate(await self.reader.readexactly(size)))
            if first & 0x0F == 8:
                raise Disconnected
            if first & 0x0F == 1:
                return payload

    async def request(self):
        """Returns the name and members of the next request."""
        text = await self.text()
        name, members, source = json.loads(text)
        if source != "zephlink_sdk" or not text.endswith(b"\n"):
            raise Disconnected
        return name, members


async def answer_all(link):
    """The behaviour of a correct daemon."""
    while True:
        name, members = await link.request()
        for event, data in answers(name, members):
            await link.send(event, data)


class Daemon:
    """Upgrades each connection, runs `course` on it, then closes it. Drops a client that does not finish its upgrade
    within a second, as servers do."""

    def __init__(self, course=answer_all):
        self.course, self.port = course, 0

    async def __aenter__(self):
        self.server = await asyncio.start_server(self.serve, "127.0.0.1", self.port, limit=1 << 20, backlog=1000)
        self.port = self.server.sockets[0].getsockname()[1]
        return self

    async def __aexit__(self, *_):
        self.server.close()

    async def serve(self, reader, writer):
        link = Connection(reader, writer)
        try:
            await asyncio.wait_for(link.upgrade(), 1)
            await self.course(link)
        except (Disconnected, OSError, EOFError, ValueError, asyncio.TimeoutError, asyncio.LimitOverrunError,
                asyncio.CancelledError):
            pass
        finally:
            writer.close()


PR_SET_PDEATHSIG = 1
LIBC = ctypes.CDLL(None)
PARENT = os.getpid()


def end_with_the_test():
    """Runs in the child: the system ends it when the test ends in any way."""
    LIBC.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)
    if os.getppid() != PARENT:
        os._exit(127)


async def start(program, *words, **streams):
    """Starts a program that ends with the test, in its own process group."""
    return await asyncio.create_subprocess_exec(
        program, *words, **{"stdin": asyncio.subprocess.DEVNULL, **streams},
        start_new_session=True, preexec_fn=end_with_the_test)


async def stop(process):
    """Ends a program and its children."""
    if process.returncode is None:
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
    await process.wait()


Run = namedtuple("Run", "status out err seconds")


async def run(program, port, words, limit, env=None):
    """Runs zephctl once. The status is negative after a signal, and None if it was killed after `limit` seconds. The
    arguments may start with -i and a host."""
    begin = time.monotonic()
    options = 2 if words[:1] == ("-i",) else 0
    process = await start(program, *words[:options], "-p", str(port), *words[options:], stdout=asyncio.subprocess.PIPE,
                          stderr=asyncio.subprocess.PIPE, env={**os.environ, **(env or {})})
    try:
        out, err = await asyncio.wait_for(process.communicate(), limit)
        status = process.returncode
    except asyncio.TimeoutError:
        await stop(process)
        out, err = await process.communicate()
        status = None
    return Run(status, out.decode(), err.decode(), time.monotonic() - begin)


def is_error_object(text):
    """Returns whether the text is exactly one error object as zephctl prints it."""
    try:
        return json.loads(text).keys() == {"errorCode", "errorType", "errorMessage"}
    except (ValueError, AttributeError):
        return False
