"""Reads the library's installed C headers into a model: enumerations, records, callbacks and functions.

The preprocessor expands the headers, pycparser parses the result, and the `///` contracts are read from the files.
Everything in the model comes from the headers.
"""

from __future__ import annotations

import ast
import os
import re
import shlex
import subprocess
from dataclasses import dataclass, field
from pathlib import Path
from typing import Dict, Iterator, List, Optional, Tuple

from pycparser import c_ast, c_generator, c_parser

PREFIX = "ZephlinkSDK_"

INTEGERS = {"int8_t", "uint8_t", "int16_t", "uint16_t", "int32_t", "uint32_t", "int64_t", "uint64_t"}
FLOATS = {"float", "double"}
ADDRESSES = {"in_addr": "AF_INET", "in6_addr": "AF_INET6"}

# Declarations of the system's types, which pycparser does not know.
SYSTEM_TYPES = "\n".join(
    [f"typedef int {name};" for name in sorted(INTEGERS | {"size_t"})]
    + [f"struct {name} {{ int opaque; }};" for name in ADDRESSES]
)


class HeaderError(Exception):
    """A header that the package cannot be generated from."""


@dataclass
class Enumeration:
    name: str
    doc: str
    members: List[Tuple[str, int, str]] = field(default_factory=list)


@dataclass
class Type:
    """A field's or a parameter's type. `kind` is integer, float, bool, text, enum, record, address, or a pointer to
    `of`; `name` is the name of the C type, `count` the length of an array, `size` the bytes of a text."""

    kind: str
    name: str = ""
    size: int = 0
    count: Optional[int] = None


@dataclass
class Field:
    name: str
    type: Type
    doc: str
    # The field with the number of valid entries of an array.
    counted_by: str = ""


@dataclass
class Record:
    name: str
    doc: str
    fields: List[Field]
    has_head: bool = False


@dataclass
class Parameter:
    name: str
    type: Type
    # For a list: the name of the preceding parameter, which is its length.
    counted_by: str = ""


@dataclass
class Argument:
    """A parameter as written in C."""

    name: str
    text: str


@dataclass
class Function:
    name: str
    doc: str
    result: Type
    # Without the callback, its user data and the lengths of lists.
    parameters: List[Parameter]
    # The type of its callback; empty if it has none.
    callback: str
    # All except the object, in the order of C.
    arguments: List[Argument]


@dataclass
class Headers:
    declarations: str
    enumerations: Dict[str, Enumeration]
    records: Dict[str, Record]
    # The record of each callback type.
    callbacks: Dict[str, str]
    functions: Dict[str, Function]
    bounds: Dict[str, int]


def pkg_config(option: str) -> List[str]:
    """Returns the compiler's options for the installed library; empty if pkg-config does not know it."""
    for program in ("pkg-config", "pkgconf"):
        try:
            found = subprocess.run([program, option, "zephlinksdk"], capture_output=True, text=True, check=True)
            return shlex.split(found.stdout)
        except (OSError, subprocess.CalledProcessError):
            continue
    return []


def compiler_options() -> List[str]:
    """Returns the directory of the headers."""
    return [*shlex.split(os.environ.get("CPPFLAGS", "")), *pkg_config("--cflags")]


def preprocess() -> str:
    """Returns the preprocessed headers, with line markers and macro definitions."""
    compiler = shlex.split(os.environ.get("CC", "cc"))
    command = [*compiler, "-E", "-dD", "-std=c11", *compiler_options(), "-x", "c", "-"]
    try:
        done = subprocess.run(command, input="#include <zephlinksdk/zephlinksdk.h>\n", capture_output=True, text=True)
    except OSError as error:
        raise HeaderError(f"No C compiler: {error}") from error
    if done.returncode != 0:
        raise HeaderError(
            "The headers of ZephlinkSDK were not found: install them (Debian: libzephlinksdk-dev), or name the place "
            f"by PKG_CONFIG_PATH or CPPFLAGS.\n{done.stderr}"
        )
    return done.stdout


def own_lines(preprocessed: str) -> Iterator[Tuple[str, str]]:
    """Returns the lines from the library's headers, each with its file."""
    file = ""
    for line in preprocessed.splitlines():
        marker = re.match(r'#\s+\d+\s+"(.*)"', line)
        if marker:
            file = marker.group(1)
        elif Path(file).parent.name == "zephlinksdk":
            yield file, line


def read() -> Headers:
    preprocessed = preprocess()
    lines = list(own_lines(preprocessed))
    text = "\n".join(line for _, line in lines if not line.startswith("#"))
    declarations = re.sub(r"\b__extension__\b", "", text)
    declarations = re.sub(r"\n\s*\n+", "\n", declarations).strip() + "\n"
    macros = [line for _, line in lines if line.startswith(f"#define {PREFIX}")]
    sources = "\n".join(Path(file).read_text(encoding="utf-8") for file in dict.fromkeys(file for file, _ in lines))
    headers = Reader(declarations, macros, Comments(sources)).headers()
    session = Path(lines[0][0]).with_name("session.hpp").read_text(encoding="utf-8")
    status = session_status(session)
    headers.enumerations[status.name] = status
    return headers


def session_status(source: str) -> Enumeration:
    """Returns the enumeration of the C++ header."""
    found = re.search(r"^/// ([^\n]*)\nenum class SessionStatus [^{]*{\n(.*?)^};", source, re.MULTILINE | re.DOTALL)
    members = re.findall(r"^  (\w+), +///< (.*)$", found.group(2), re.MULTILINE) if found else []
    if not found or not members:
        raise HeaderError("session.hpp has no SessionStatus")
    return Enumeration(f"{PREFIX}SessionStatus", found.group(1), [
        (name, value, doc.replace("SessionOptions::quietAfter", "`quietAfter`"))
        for value, (name, doc) in enumerate(members)])


class Comments:
    """The contracts in the headers: `///` blocks before a declaration, and both `///` and `///<` for a field or an
    enumerator."""

    def __init__(self, sources: str) -> None:
        self.blocks: Dict[str, str] = {}
        for block, following in re.findall(r"((?:^///.*\n)+)(?=((?:.*\n){1,2}))", sources, re.MULTILINE):
            name = re.match(r"(?:enum|typedef struct) (\w+)", following) or re.search(rf"\b({PREFIX}\w+)\(", following)
            if name:
                self.blocks[name.group(1)] = unwrap(re.sub(r"^/// ?", "", block, flags=re.MULTILINE))
        body = rf"^(?:typedef struct|enum) ({PREFIX}\w+).*?{{\n(.*?)\n}}"
        bodies = re.findall(body, sources, re.DOTALL | re.MULTILINE)
        # By the names of the structure or enumeration and the member.
        self.members = {(name, member): doc for name, body in bodies for member, doc in self.documented(body)}

    @staticmethod
    def documented(body: str) -> Iterator[Tuple[str, str]]:
        """Returns the members of a body, each with its comment."""
        before: List[str] = []
        member = doc = ""
        for line in body.splitlines():
            code, _, after = line.partition("///<")
            if code.strip().startswith("///"):
                before.append(code.strip()[3:].strip())
            elif code.strip():
                found = re.search(r"(\w+)(?:\[\w+\])*;|(\w+) =", code)
                yield member, doc
                member = (found.group(1) or found.group(2)) if found else ""
                doc, before = after.strip() or phrase(" ".join(before)), []
            else:
                doc = f"{doc} {after.strip()}".strip()
        yield member, doc


def phrase(sentence: str) -> str:
    """Converts a comment of one sentence to the form of a comment after a field."""
    if not sentence or sentence.find(".") != len(sentence) - 1:
        return sentence
    return (sentence[0].lower() if sentence[1:2].islower() else sentence[0]) + sentence[1:-1]


def unwrap(block: str) -> str:
    """Joins the lines of each paragraph; a list entry is a paragraph."""
    paragraphs = re.split(r"\n\s*\n|\n(?=- )", block.strip())
    return "\n\n".join(" ".join(paragraph.split()) for paragraph in paragraphs)


class Reader:
    def __init__(self, declarations: str, macros: List[str], comments: Comments) -> None:
        self.declarations, self.macros, self.comments = declarations, macros, comments
        self.constants: Dict[str, int] = {}
        self.enumerations: Dict[str, Enumeration] = {}
        self.records: Dict[str, Record] = {}
        self.callbacks: Dict[str, str] = {}
        self.functions: Dict[str, Function] = {}
        self.bounds: Dict[str, int] = {}

    def headers(self) -> Headers:
        tree = c_parser.CParser().parse(SYSTEM_TYPES + "\n" + self.declarations.replace("_Bool", "_Bool "))
        for node in tree.ext:
            self.declaration(node)
        for macro in self.macros:
            self.macro(macro)
        return Headers(self.declarations, self.enumerations, self.records, self.callbacks, self.functions,
                       self.bounds)

    def declaration(self, node: c_ast.Node) -> None:
        if not isinstance(node, (c_ast.Decl, c_ast.Typedef)):
            raise HeaderError(f"Not a declaration: {node}")
        name, inner = node.name or "", node.type
        if isinstance(inner, c_ast.Enum):
            self.enumeration(inner)
        elif isinstance(inner, c_ast.FuncDecl) and name.startswith(PREFIX):
            self.function(name, inner)
        elif isinstance(inner, c_ast.PtrDecl) and isinstance(inner.type, c_ast.FuncDecl):
            self.callbacks[name] = self.type_of(inner.type.args.params[0].type).name
        elif isinstance(inner, c_ast.TypeDecl) and isinstance(inner.type, c_ast.Struct) and inner.type.decls:
            if name.startswith(PREFIX):
                self.record(name, inner.type)

    # ---- Enumerations and bounds ----

    def enumeration(self, node: c_ast.Enum) -> None:
        values = [(item.name, self.number(item.value)) for item in node.values.enumerators]
        self.constants.update(values)
        if node.name is None:
            self.bounds.update(values)
            return
        members = [(name[len(node.name) + 1:], value, self.comments.members.get((node.name, name), ""))
                   for name, value in values]
        self.enumerations[node.name] = Enumeration(node.name, self.comments.blocks.get(node.name, ""), members)

    def macro(self, line: str) -> None:
        """An enumerator that C cannot declare, as a macro: `#define Enumeration_Name ((Enumeration)number)`."""
        found = re.match(r"#define (\w+) \(\((\w+)\)(\w+)\)$", line)
        if not found or found.group(2) not in self.enumerations:
            return
        name, enumeration, value = found.groups()
        number = 2**32 - 1 if value == "UINT32_MAX" else int(ast.literal_eval(value))
        self.enumerations[enumeration].members.append((name[len(enumeration) + 1:], number, ""))

    def number(self, node: c_ast.Node) -> int:
        if isinstance(node, c_ast.Constant):
            return int(node.value.rstrip("uUlL"), 0)
        if isinstance(node, c_ast.ID):
            return self.constants[node.name]
        raise HeaderError(f"Not a number: {node}")

    # ---- Records ----

    def record(self, name: str, node: c_ast.Struct) -> None:
        members = node.decls
        has_head = isinstance(members[0].type, c_ast.Union)
        fields = [self.field(name, member) for member in self.flattened(members[1:] if has_head else members)]
        self.records[name] = Record(name, self.comments.blocks.get(name, ""), self.counted(name, fields), has_head)

    def flattened(self, members: List[c_ast.Decl]) -> Iterator[c_ast.Decl]:
        """Returns the members; replaces a union by the members of its unnamed structure."""
        for member in members:
            if isinstance(member.type, c_ast.Union):
                inner = [each.type for each in member.type.decls if each.name is None]
                yield from inner[0].decls
            else:
                yield member

    def field(self, record: str, member: c_ast.Decl) -> Field:
        return Field(member.name, self.type_of(member.type), self.comments.members.get((record, member.name), ""))

    def counted(self, record: str, fields: List[Field]) -> List[Field]:
        """Assigns to each array its count, which is the preceding field, and removes the counts."""
        kept: List[Field] = []
        for each in fields:
            if each.type.count is not None:
                if not kept or not kept[-1].name.lower().endswith("count"):
                    raise HeaderError(f"No count before {record}.{each.name}")
                each.counted_by = kept.pop().name
            if each.type.kind == "integer":
                each.type = self.enumeration_in(each)
            kept.append(each)
        return kept

    def enumeration_in(self, each: Field) -> Type:
        """Returns the enumeration as the type of an integer whose comment names it."""
        found = re.match(rf"an? ({PREFIX}\w+)", each.doc)
        return Type("enum", found.group(1)) if found and found.group(1) in self.enumerations else each.type

    # ---- Functions ----

    def function(self, name: str, node: c_ast.FuncDecl) -> None:
        declared = node.args.params
        arguments = [Argument(each.name or "", c_generator.CGenerator().visit(each)) for each in declared]
        callback = ""
        kept: List[Parameter] = []
        for each in declared:
            type_ = self.type_of(each.type)
            if type_.name in self.callbacks:
                callback = type_.name
            elif type_ == Type("pointer", "void"):
                continue  # the callback's user data
            elif type_.kind == "pointer" and kept and kept[-1].name.lower().endswith("count"):
                kept.append(Parameter(each.name, type_, counted_by=kept.pop().name))
            else:
                kept.append(Parameter(each.name or "", type_))
        doc = self.comments.blocks.get(name, "")
        if not doc:
            raise HeaderError(f"{name} has no contract")
        self.functions[name] = Function(name, doc, self.type_of(node.type), kept, callback, arguments[1:])

    # ---- Types ----

    def type_of(self, node: c_ast.Node) -> Type:
        if isinstance(node, c_ast.TypeDecl):
            return self.named(node.type)
        if isinstance(node, c_ast.ArrayDecl):
            inner = self.type_of(node.type)
            count = self.number(node.dim)
            return Type("text", size=count) if inner.name == "char" and not inner.size else self.array(inner, count)
        if isinstance(node, c_ast.PtrDecl):
            inner = self.type_of(node.type)
            if inner.name == "char" and not inner.size:
                return Type("text")
            return Type("pointer", inner.name or inner.kind, inner.size)
        raise HeaderError(f"Unknown type: {node}")

    @staticmethod
    def array(inner: Type, count: int) -> Type:
        return Type(inner.kind, inner.name, inner.size, count)

    def named(self, node: c_ast.Node) -> Type:
        if isinstance(node, c_ast.Struct):
            return Type("address", node.name)
        name = " ".join(node.names)
        if name in self.enumerations:
            return Type("enum", name)
        if name in self.records:
            return Type("record", name)
        if name in INTEGERS | {"size_t"}:
            return Type("integer", name)
        if name in FLOATS:
            return Type("float", name)
        kinds = {"_Bool": "bool", "char": "char", "void": "void"}
        return Type(kinds.get(name, "other"), name)
