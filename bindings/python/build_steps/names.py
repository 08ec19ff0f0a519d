"""Converts names and contracts from C to Python."""

from __future__ import annotations

import re
import textwrap
from typing import Dict, Iterable, List, Tuple

from build_steps.headers import PREFIX

# Words that must not be split at their capitals.
WHOLE_WORDS = ("ChaCha", "OAuth", "DoH", "WiFi", "IPv4", "IPv6", "P2P")

# Renamed to avoid a conflict within the package.
RENAMED = {"Error": "ErrorCode"}


def snake(name: str) -> str:
    """Converts setDNSServers to set_dns_servers."""
    for word in WHOLE_WORDS:
        name = name.replace(word, word.capitalize())
    name = re.sub(r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])", "_", name)
    return name.lower()


def constant(name: str) -> str:
    return snake(name).upper()


def class_name(c_name: str) -> str:
    name = c_name[len(PREFIX):]
    return RENAMED.get(name, name)


def method_name(c_name: str) -> str:
    return snake(c_name[len(PREFIX):])


# ---- Contracts -------------------------------------------------------------------------------------------------------

# Sentences, or parts of them, about features that Python does not have: callbacks, null and records by value.
NOT_OF_PYTHON: Tuple[str, ...] = (
    r"With a callback it stays subscribed: [^.]*\.",
    r"The callback runs once\.",
    r"; the callback never runs",
    r"Refuses (?:a )?null (?:`\w+`|texts) (?:with a count above 0 )?with ZephlinkSDK_Error_InvalidArgument\.",
    r"Refuses a null callback with ZephlinkSDK_Error_CallbackRequired\.",
    r"Refuses null texts with ZephlinkSDK_Error_InvalidArgument; empty ones are sent\.",
    r"The record, about 750 KB, [^.]*\.",
    r"About \d+ KB[^.]*\.",
    r"[Tt]he numbers follow `userData`\.",
    r"`handle` has no meaning\.",
    r"; one that fills its array needs no terminator",
    r"The callback gets each sample in turn[^.]*\.",
    r"An error of the call runs the callback once\.",
)

REWORDED: Tuple[Tuple[str, str], ...] = (
    (r"Refuses a null (`\w+`) and ", r"Refuses "),
    (r"Refuses null and a code", "Refuses a code"),
    (r"Refuses null arguments, an empty", "Refuses an empty"),
    (r"every (report_\w+) runs the callback until it returns false", r"the iterator gets every \1"),
    (r"A sample that cannot be read ends the report: the last record then is an error,",
     "Returns the samples in the daemon's order; one that cannot be read fails the call with"),
    (r"the (?:last )?record has the", "returns its"),
    (r"\bnull\b", "None"),
    (r"`runCount` 0", "`runs` is empty"),
    (r"of `?count`? (rules|addresses|entries)", r"of the \1"),
    (r"of `count`", "of them"),
)


def sentences_of_python(text: str) -> str:
    for pattern in NOT_OF_PYTHON:
        text = re.sub(r"\s*" + pattern, "", text)
    for pattern, replacement in REWORDED:
        text = re.sub(pattern, replacement, text)
    return text


class Contracts:
    """Rewrites a contract with Python names. `functions`, `enumerations` and `fields` are the names in C."""

    def __init__(self, functions: Iterable[str], types: Iterable[str], bounds: Dict[str, int]) -> None:
        self.functions, self.types, self.bounds = set(functions), set(types), bounds

    def of(self, text: str) -> str:
        text = sentences_of_python(text)
        text = re.sub(rf"{PREFIX}\w+", self._name, text)
        text = re.sub(r"`([a-zA-Z]\w*)`", lambda found: f"`{snake(found.group(1))}`", text)
        return re.sub(r"[ ]{2,}", " ", text).strip()

    def _name(self, found: "re.Match[str]") -> str:
        name = found.group(0)
        if name in self.functions:
            return f"`{method_name(name)}`"
        if name in self.types:
            return class_name(name)
        if name in self.bounds:
            return str(self.bounds[name])
        owner, _, member = name.rpartition("_")
        if owner in self.types:
            return f"{class_name(owner)}.{constant(member)}"
        raise ValueError(f"{name} is not declared")


def wrapped(text: str, indent: str, width: int = 100) -> List[str]:
    """Returns the lines of a docstring."""
    lines: List[str] = []
    in_list = False
    for paragraph in text.split("\n\n"):
        if lines and not (paragraph.startswith("- ") and in_list):
            lines.append("")
        in_list = paragraph.startswith("- ")
        lines += textwrap.wrap(paragraph, width - len(indent), subsequent_indent="  " if paragraph[:2] == "- " else "",
                               break_long_words=False, break_on_hyphens=False)
    return lines


def docstring(text: str, indent: str, extra: Iterable[str] = ()) -> str:
    lines = [*wrapped(text, indent), *extra]
    quoted = [line.replace("\\", "\\\\").replace('"""', "'''") for line in lines]
    if len(quoted) == 1:
        return f'{indent}"""{quoted[0]}"""\n'
    body = "".join(f"{indent}{line}".rstrip() + "\n" for line in quoted[1:])
    return f'{indent}"""{quoted[0]}\n{body}{indent}"""\n'
