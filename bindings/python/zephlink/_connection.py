"""Calls and subscriptions, common to all methods.

No Python runs on the library's channel thread. Each call and each subscription has a box (native/box.h), into which
records are copied. Python threads wait for the box; freeing the box ends its subscription.
"""

from __future__ import annotations

import asyncio
import atexit
import errno
import logging
import os
import time
import weakref
from typing import Any, Callable, Generic, Optional, Sequence, TypeVar

from zephlink._convert import decoded
from zephlink._error import ClosedError, Error
from zephlink._native import ffi, lib

T = TypeVar("T")
C = TypeVar("C", bound="Connection")

logger = logging.getLogger("zephlink")

# Waits return to Python after this time, in case a signal arrived in another thread. Usually a signal interrupts the
# wait itself.
SLICE_MS = 200

# The default bound of a subscription's queue: as many records as fit into QUEUE_BYTES, but at most QUEUE_RECORDS.
QUEUE_BYTES = 16 << 20
QUEUE_RECORDS = 1000


class Answer(Generic[T]):
    """The result of a call: its pointer type in C, and the conversion to a Python object."""

    def __init__(self, c_type: str, read: Callable[[Any], T]) -> None:
        self.c_type, self.read = ffi.typeof(c_type), read

    def of(self, record: Any) -> T:
        """Returns the Python object of a record, or raises its error."""
        c = ffi.cast(self.c_type, record)
        if c.hasError:
            raise Error(c.errorCode, decoded(c.errorMessage))
        return self.read(c)

    def queue_length(self) -> int:
        size: int = ffi.sizeof(self.c_type.item)
        return max(1, min(QUEUE_RECORDS, QUEUE_BYTES // size))


def forked() -> RuntimeError:
    return RuntimeError("This client was opened before fork(): only the parent process may use it. Open another one")


class Box:
    """The queue of records of one call or subscription."""

    __slots__ = ("c", "process")

    def __init__(self, link: Any, capacity: int, once: bool) -> None:
        self.process = os.getpid()
        c = lib.zephlink_box_new(link, capacity, once)
        if c == ffi.NULL:
            if ffi.errno == errno.ENOMEM:
                raise MemoryError
            raise OSError(ffi.errno, os.strerror(ffi.errno))
        self.c = ffi.gc(c, lib.zephlink_box_free)

    def start(self, function: Any, arguments: Any) -> bool:
        """Returns whether the call was started; otherwise the box contains its error."""
        status = function(self.c, *arguments)
        if status == lib.ZEPHLINK_FORKED:
            raise forked()
        return bool(status == lib.ZEPHLINK_STARTED)

    def wait(self, timeout: Optional[float] = None) -> bool:
        """Waits for a record or for the end of the box; returns false after the time-out."""
        if timeout is None:
            while not self._wait(SLICE_MS):
                pass
            return True
        deadline = time.monotonic() + timeout
        while True:
            left = max(0.0, deadline - time.monotonic())
            if self._wait(min(SLICE_MS, int(left * 1000) + (left > 0))):
                return True
            if left <= 0:
                return False

    def _wait(self, milliseconds: int) -> bool:
        if os.getpid() != self.process:
            raise forked()
        return bool(lib.zephlink_box_wait(self.c, milliseconds))

    def take(self) -> Any:
        """Returns the oldest record, or None."""
        record = lib.zephlink_box_take(self.c)
        return None if record == ffi.NULL else ffi.gc(record, lib.zephlink_record_free)

    def finish(self) -> None:
        lib.zephlink_box_finish(self.c)

    def close(self) -> None:
        lib.zephlink_box_close(self.c)

    def closed(self) -> bool:
        return bool(lib.zephlink_box_closed(self.c))

    def dropped(self) -> int:
        return int(lib.zephlink_box_dropped(self.c))

    def descriptor(self) -> int:
        return int(lib.zephlink_box_descriptor(self.c))


class Subscription(Generic[T]):
    """The records of a subscription, for `for` and `async for`.

    The queue is bounded by `maxsize`, an argument of the subscribing method. If it is full, the oldest record is
    dropped: `dropped` counts these, and each gap is logged as a warning of the logger "zephlink". A record that reports
    an error raises Error; the subscription continues, and the next record can be read.

    A subscription ends with `close` (or `with`), from any thread, with its client, or when no reference to it remains.
    Iteration then stops.
    """

    def __init__(self, connection: Connection, box: Box, answer: Answer[T]) -> None:
        self._connection = connection  # keeps it open
        self._box = box
        self._answer = answer
        self._reported = 0

    @property
    def dropped(self) -> int:
        """The number of records dropped because the queue was full."""
        return self._box.dropped()

    @property
    def closed(self) -> bool:
        """Whether the subscription has ended."""
        return self._box.closed()

    def close(self) -> None:
        """Ends the subscription and drops its queue. Thread-safe; does not wait for the daemon."""
        self._box.close()

    def get(self, timeout: Optional[float] = None) -> T:
        """Returns the next record. Waits for it at most `timeout` seconds, then raises TimeoutError. Raises ClosedError
        if the subscription has ended."""
        while self._box.wait(timeout):
            record = self._box.take()
            if record is not None:
                return self._read(record)
            if self._box.closed():
                raise ClosedError(text="The subscription is closed")
        raise TimeoutError("no record arrived in time")

    def __iter__(self) -> Subscription[T]:
        return self

    def __next__(self) -> T:
        try:
            return self.get()
        except ClosedError:
            raise StopIteration from None

    def __aiter__(self) -> Subscription[T]:
        return self

    async def __anext__(self) -> T:
        while True:
            if self._box.wait(0):
                record = self._box.take()
                if record is not None:
                    return self._read(record)
                if self._box.closed():
                    raise StopAsyncIteration
            else:
                await readable(self._box.descriptor())

    def __enter__(self) -> Subscription[T]:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def _read(self, record: Any) -> T:
        dropped = self._box.dropped()
        if dropped != self._reported:
            logger.warning("%d records were dropped: the queue of a subscription was full", dropped - self._reported)
            self._reported = dropped
        return self._answer.of(record)


async def readable(descriptor: int) -> None:
    """Waits for a descriptor. Uses a copy, so that tasks and loops do not interfere and the box may be freed."""
    loop = asyncio.get_running_loop()
    copy = os.dup(descriptor)
    try:
        came = asyncio.Event()
        loop.add_reader(copy, came.set)
        await came.wait()
    finally:
        loop.remove_reader(copy)
        os.close(copy)


class Connection:
    """The base of all clients: a link to the daemon, and calls on it."""

    def __init__(self, link: Any) -> None:
        if link == ffi.NULL:
            raise MemoryError
        self._link = ffi.gc(link, lib.zephlink_link_free)
        self._statistics = False
        _open.add(self)

    def __enter__(self: C) -> C:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def close(self) -> None:
        """Ends all subscriptions, all waiting calls in any thread, and the connection. Queued requests are still
        written if the daemon is connected. May be called again. Does nothing in a child process.
        """
        lib.zephlink_link_close(self._link)

    def subscribe_stats(self, enable: bool, periods: Sequence[int] = ()) -> None:
        raise NotImplementedError

    def _call(self, start: Any, answer: Answer[T], *arguments: Any) -> T:
        box = Box(self._link, 1, True)
        box.start(start, arguments)
        return answer.of(self._awaited(box))

    def _series(self, start: Any, answer: Answer[T], *arguments: Any) -> list[T]:
        """Makes a call whose report contains many records and repeats the last one. All of them have arrived after the
        first record has arrived and the call was ended, which waits for the end of the report."""
        box = Box(self._link, 0, False)
        if not box.start(start, arguments):
            answer.of(box.take())
        records = [self._awaited(box)]
        box.finish()
        records += iter(box.take, None)
        answer.of(records.pop())
        return [answer.of(record) for record in records]

    def _subscribe(self, start: Any, answer: Answer[T], maxsize: Optional[int],
                   statistics: bool = False) -> Subscription[T]:
        if maxsize is not None and maxsize < 1:
            raise ValueError("maxsize must be at least 1")
        box = Box(self._link, answer.queue_length() if maxsize is None else maxsize, False)
        if not box.start(start, ()):
            answer.of(box.take())
        if box.closed():
            raise ClosedError
        if statistics and not self._statistics:
            self.subscribe_stats(True)
        return Subscription(self, box, answer)

    @staticmethod
    def _awaited(box: Box) -> Any:
        box.wait()
        record = box.take()
        if record is not None:
            return record
        if box.dropped():
            raise MemoryError
        raise ClosedError


# The clients to close when the interpreter ends: their threads must not outlive the library's static data.
_open: weakref.WeakSet[Connection] = weakref.WeakSet()


@atexit.register
def _close_all() -> None:
    for connection in list(_open):
        connection.close()
