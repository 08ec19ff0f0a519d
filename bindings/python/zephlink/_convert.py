"""Converts between the types of C and Python."""

from __future__ import annotations

import socket
from dataclasses import dataclass
from enum import IntEnum
from typing import Any, Callable, Dict, Optional, Sequence, Tuple, Type, TypeVar, cast

from zephlink._native import ffi, lib

AF_INET, AF_INET6 = socket.AF_INET, socket.AF_INET6


class Enumeration(IntEnum):
    """Numbers with names. Unlisted numbers, for example from a newer daemon, have the name UNLISTED_n."""

    @classmethod
    def _missing_(cls, value: object) -> Optional[Enumeration]:
        if not isinstance(value, int) or not 0 <= value < 2**32:
            return None
        unlisted = int.__new__(cls, value)
        unlisted._name_ = f"UNLISTED_{value}"
        unlisted._value_ = value
        return unlisted

    def __reduce_ex__(self, _: Any) -> Tuple[Type[Enumeration], Tuple[int]]:
        return type(self), (int(self),)


@dataclass(frozen=True)
class Record:
    """A report of the daemon: read-only, compared by value.

    Records that a call returns have two more fields, `error_code` and `error_message`, for a failure that the daemon
    reports without failing the call; otherwise 0 and empty.
    """


R = TypeVar("R", bound=Record)


def make(cls: Type[R], values: Dict[str, Any]) -> R:
    """Makes a record from all its fields, without the cost of the frozen constructor."""
    record = object.__new__(cls)
    record.__dict__.update(values)
    return record


# ---- From C ----------------------------------------------------------------------------------------------------------


def decoded(characters: Any) -> str:
    return cast(bytes, ffi.string(characters)).decode("utf-8", "replace")


def constant_text(pointer: Any) -> str:
    return decoded(pointer)


def address_text(family: int, address: Any) -> str:
    return socket.inet_ntop(family, bytes(ffi.buffer(ffi.addressof(address))))


def head(record: Any) -> Dict[str, Any]:
    """Returns the error fields of a record that is not an error. The code of asynchronous calls means no error."""
    code = record.errorCode
    if code in (lib.ZephlinkSDK_Error_AsyncCall, lib.ZephlinkSDK_Error_None):
        return {"error_code": 0, "error_message": ""}
    return {"error_code": code, "error_message": decoded(record.errorMessage)}


def nothing(_: Any) -> None:
    """The result of calls that have no answer."""


def value_of(from_text: Callable[[bytes, Any], bool], word: str) -> int:
    value = ffi.new("uint32_t *")
    if not from_text(text(word), value):
        raise ValueError(f"{word!r} is not a valid text")
    return int(value[0])


def name_of(function: Callable[[Any, Any, int], int], key: Any) -> str:
    """Returns a text of any length from a function that fills a buffer."""
    size = function(key, ffi.NULL, 0) + 1
    buffer = ffi.new("char[]", size)
    function(key, buffer, size)
    return decoded(buffer)


# ---- To C ------------------------------------------------------------------------------------------------------------


def check(cls: Type[Any], value: object) -> None:
    if not isinstance(value, cls):
        raise TypeError(f"{cls.__name__} expected, got {type(value).__name__}")


def text(value: str) -> bytes:
    check(str, value)
    encoded = value.encode("utf-8")
    if b"\0" in encoded:
        raise ValueError("a text contains a null character")
    return encoded


def optional_text(value: Optional[str]) -> Any:
    return ffi.NULL if value is None else text(value)


def field_text(value: str, size: int) -> bytes:
    """Encodes a text for an array of `size` bytes, including its terminator."""
    encoded = text(value)
    if len(encoded) >= size:
        raise ValueError(f"{value!r} is longer than {size - 1} bytes")
    return encoded


def boolean(value: bool) -> bool:
    check(bool, value)
    return value


def listed(values: Sequence[Any]) -> Sequence[Any]:
    """Rejects a text, which is a sequence too, as a list."""
    if isinstance(values, (str, bytes)):
        raise TypeError(f"a list expected, got {type(values).__name__}")
    return list(values)


def write_texts(array: Any, values: Sequence[str], size: int) -> int:
    """Fills an array of texts and returns their number."""
    for index, value in enumerate(listed(values)):
        array[index] = field_text(value, size)
    return len(values)


def texts(values: Sequence[str], size: int) -> Tuple[int, Any]:
    values = listed(values)
    array = ffi.new(f"char[][{size}]", len(values))
    return write_texts(array, values, size), array


def addresses(family: int, values: Sequence[str], c_type: str) -> Tuple[int, Any]:
    values = listed(values)
    array = ffi.new(c_type, len(values))
    for index, value in enumerate(values):
        ffi.buffer(ffi.addressof(array, index))[:] = packed(family, value)
    return len(values), array


def packed(family: int, address: str) -> bytes:
    try:
        return socket.inet_pton(family, str(address))
    except OSError:
        raise ValueError(f"{address!r} is not an address of this kind") from None


def numbers(values: Sequence[int], c_type: str) -> Tuple[int, Any]:
    values = listed(values)
    return len(values), ffi.new(c_type, values)


def record(value: Any, c_type: str, write: Callable[[Any, Any], None]) -> Any:
    target = ffi.new(c_type)
    write(target, value)
    return target


def records(values: Sequence[Any], c_type: str, write: Callable[[Any, Any], None]) -> Tuple[int, Any]:
    values = listed(values)
    array = ffi.new(c_type, len(values))
    for index, value in enumerate(values):
        write(array[index], value)
    return len(values), array
