"""Generates the sources of the extension module: declarations for cffi, and a starting function per method."""

from __future__ import annotations

import re
from pathlib import Path
from typing import List

import cffi

from build_steps.headers import ADDRESSES, PREFIX, Argument, Function, Headers, Type

HERE = Path(__file__).resolve().parent.parent
NATIVE = HERE / "native"


def is_method(function: Function) -> bool:
    """Returns whether the function performs a service of the daemon."""
    first = function.parameters[0].type if function.parameters else Type("other")
    return first == Type("pointer", PREFIX[:-1]) and function.result.kind == "record"


def methods(headers: Headers) -> List[Function]:
    return [function for function in headers.functions.values() if is_method(function)]


def can_subscribe(function: Function) -> bool:
    """Returns whether the callback runs repeatedly: `get...` functions that stay subscribed, and listeners."""
    return listens(function) or (function.name.startswith(f"{PREFIX}get") and "it stays subscribed" in function.doc)


def listens(function: Function) -> bool:
    return function.doc.startswith("Subscribes to ")


def short(function: Function) -> str:
    return function.name[len(PREFIX):]


def verbs(function: Function) -> List[str]:
    """Returns the ways to use a method: a call without a callback, one with a callback, a subscription."""
    if not function.callback:
        return ["ask"]
    return [*([] if listens(function) else ["start"]), *(["subscribe"] if can_subscribe(function) else [])]


# ---- The functions that Python calls ---------------------------------------------------------------------------------


def bound(function: Function) -> List[Argument]:
    """Returns the arguments that the caller passes."""
    return [each for each in function.arguments if each.name not in ("callback", "userData")]


def is_array(argument: Argument) -> bool:
    """Converts pointers to arrays, which cffi's C code cannot express, to void pointers."""
    return "(*" in argument.text


def signature(function: Function, verb: str) -> str:
    declared = [f"const void* {each.name}" if is_array(each) else each.text for each in bound(function)]
    parameters = ", ".join(["zephlink_box* box", *declared]).replace("_Bool", "bool")
    return f"int zephlink_{verb}_{short(function)}({parameters})"


def passed(argument: Argument) -> str:
    if not is_array(argument):
        return argument.name
    return f"static_cast<{argument.text.replace(f'*{argument.name}', '*')}>({argument.name})"


def call(function: Function) -> str:
    """Returns the function with its arguments bound, in C++."""
    if function.callback and not bound(function):
        return function.name
    parameters = "ZephlinkSDK* sdk" + (", auto callback, void* userData" if function.callback else "")
    arguments = ", ".join(["sdk", *map(passed, function.arguments)])
    return f"[=]({parameters}) {{ return {function.name}({arguments}); }}"


def definitions(headers: Headers) -> List[str]:
    """Returns the C++ functions, one for each way to use a method."""
    lines = []
    for function in methods(headers):
        for verb in verbs(function):
            body = f"zephlink::{verb}<{function.result.name}>(box, {call(function)})"
            lines.append(f"{signature(function, verb)} {{ return {body}; }}")
    return lines


def source(headers: Headers) -> str:
    return "\n".join(['#include "link.h"', "", 'extern "C" {', *definitions(headers), "}", ""])


# ---- What cffi reads -------------------------------------------------------------------------------------------------


def prototypes(headers: Headers) -> str:
    return "\n".join(line.split(" {")[0] + ";" for line in definitions(headers)) + "\n"


def own_header() -> str:
    text = (NATIVE / "zephlink.h").read_text(encoding="utf-8")
    return re.sub(r"/\*.*?\*/", "", text, flags=re.DOTALL)


def without_methods(headers: Headers) -> str:
    """Returns the library's declarations, except functions with an object, which only the functions above call."""
    kept = [each for each in re.split(r"(?<=;)\n(?=\S)", headers.declarations) if f"({PREFIX[:-1]}* sdk" not in each]
    return "\n".join(kept) + "\n"


def cdef(headers: Headers) -> str:
    addresses = "".join(f"struct {name} {{ ...; }};\n" for name in ADDRESSES)
    return addresses + without_methods(headers) + own_header() + prototypes(headers)


def preamble(headers: Headers) -> str:
    """Returns the head of the C file that cffi generates."""
    return "#include <zephlinksdk/zephlinksdk.h>\n" + (
        NATIVE / "zephlink.h").read_text(encoding="utf-8") + prototypes(headers)


def write_module(headers: Headers, path: Path) -> None:
    """Writes the source of the extension module."""
    ffi = cffi.FFI()
    ffi.cdef(cdef(headers))
    ffi.set_source("zephlink._native", preamble(headers))
    ffi.emit_c_code(str(path))
