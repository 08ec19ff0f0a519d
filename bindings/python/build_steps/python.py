"""Generates the package's modules: enumerations, records, the names of places, and the methods of a client."""

from __future__ import annotations

import re
from typing import Dict, Iterable, List, Optional

from build_steps import native
from build_steps.headers import ADDRESSES, PREFIX, Enumeration, Field, Function, Headers, Parameter, Record, Type
from build_steps.names import Contracts, class_name, constant, docstring, method_name, snake

# Records without a class: in Python they are arguments of Client, exceptions, and fields of other records.
WITHOUT_CLASS = {"ZephlinkSDK_Config", "ZephlinkSDK_Result", "ZephlinkSDK_RuleLists"}

# Reports that the daemon sends only after a request for statistics (ZephlinkSDK_subscribeStats).
STATISTICS = {"getConnectionStats", "getStreamingStats", "getSessionStats"}

# The defaults of parameters.
DEFAULTS = {("subscribeStats", "periods"): "()"}

HEADER = '''"""Made from the headers of ZephlinkSDK when the package was built."""

from __future__ import annotations

'''


class Generator:
    def __init__(self, headers: Headers) -> None:
        self.headers = headers
        types = [*headers.enumerations, *headers.records, *headers.callbacks]
        self.contracts = Contracts(headers.functions, types, headers.bounds)

    def modules(self) -> Dict[str, str]:
        return {"_types.py": self.types_module(), "_methods.py": self.methods_module()}

    # ---- Enumerations ------------------------------------------------------------------------------------------------

    def types_module(self) -> str:
        enumerations = list(self.headers.enumerations.values())
        records = [record for record in self.headers.records.values() if record.name not in WITHOUT_CLASS]
        functions = [each for each in self.headers.functions.values() if self.is_plain(each)]
        exported = [class_name(each.name) for each in enumerations]
        exported += [class_name(each.name) for each in records]
        exported += [method_name(each.name) for each in functions]
        parts = [
            HEADER,
            "from dataclasses import dataclass, field\nfrom typing import Any\n\n",
            "from zephlink import _convert as convert\nfrom zephlink._convert import Enumeration, Record, make\n",
            "from zephlink._native import ffi, lib\n\n",
            "__all__ = [\n" + "".join(f'    "{name}",\n' for name in exported) + "]\n",
            *(self.enumeration(each) for each in enumerations),
            *(self.record(each) for each in records),
            *(self.reader(each) for each in records),
            *(self.writer(each) for each in records if self.is_argument(each)),
            *(self.plain_function(each) for each in functions),
        ]
        return "".join(parts)

    def enumeration(self, enumeration: Enumeration) -> str:
        name = class_name(enumeration.name)
        notes = [f"- {constant(member)}: {self.contracts.of(doc)}" for member, _, doc in enumeration.members
                 if doc and not re.search("callback|asynchronous", doc)]
        members = "".join(f"    {constant(member)} = {value}\n" for member, value, _ in enumeration.members)
        doc = docstring("\n\n".join([self.contracts.of(enumeration.doc), *notes]), "    ")
        return f"\n\nclass {name}(Enumeration):\n{doc}\n{members}{self.words(enumeration)}"

    def words(self, enumeration: Enumeration) -> str:
        texts = {f"{PREFIX}Error": f"{PREFIX}errorText", f"{PREFIX}SessionStatus": "zephlink_status_text"}
        if enumeration.name in texts:
            return self.text_property(texts[enumeration.name], "The text of the value.")
        for function in self.headers.functions.values():
            if function.name.endswith("FromText") and self.enumeration_of(function) == enumeration.name:
                to_text = function.name.replace("FromText", "Text")
                return self.text_property(to_text, self.contracts.of(self.headers.functions[to_text].doc)) + (
                    "\n    @classmethod\n"
                    f'    def from_text(cls, text: str) -> "{class_name(enumeration.name)}":\n'
                    '        """Returns the value with this text; raises ValueError for any other text."""\n'
                    f"        return cls(convert.value_of(lib.{function.name}, text))\n"
                )
        return ""

    @staticmethod
    def text_property(function: str, doc: str) -> str:
        return (f"\n    @property\n    def text(self) -> str:\n{docstring(doc, '        ')}"
                f"        return convert.constant_text(lib.{function}(self))\n")

    def enumeration_of(self, from_text: Function) -> str:
        """Returns the enumeration whose words a function reads."""
        target = from_text.parameters[1].type.name
        if target in self.headers.enumerations:
            return target
        word = from_text.name[len(PREFIX):-len("FromText")]
        return PREFIX + word[0].upper() + word[1:]

    # ---- Records -----------------------------------------------------------------------------------------------------

    def record(self, record: Record) -> str:
        notes = [f"- `{snake(each.name)}`: {self.contracts.of(each.doc)}" for each in record.fields if each.doc]
        doc = docstring("\n\n".join([self.contracts.of(record.doc), *notes]), "    ")
        fields = "".join(f"    {snake(each.name)}: {self.annotation(each.type)}\n" for each in record.fields)
        if record.has_head:
            fields += '    error_code: int = field(default=0, repr=False)\n'
            fields += '    error_message: str = field(default="", repr=False)\n'
        return f"\n\n@dataclass(frozen=True)\nclass {class_name(record.name)}(Record):\n{doc}\n{fields}"

    def annotation(self, type_: Type) -> str:
        single = {"integer": "int", "float": "float", "bool": "bool", "text": "str", "address": "str"}.get(type_.kind)
        name = single or class_name(type_.name)
        return name if type_.count is None else f"list[{name}]"

    def reader(self, record: Record) -> str:
        values = "".join(f'        "{snake(each.name)}": {self.read(each)},\n' for each in record.fields)
        head = "        **convert.head(c),\n" if record.has_head else ""
        name = class_name(record.name)
        return f"\n\ndef read_{snake(name)}(c: Any) -> {name}:\n    return make({name}, {{\n{values}{head}    }})\n"

    def read(self, each: Field) -> str:
        if each.type.count is None:
            return self.read_one(f"c.{each.name}", each.type)
        entries = f"c.{each.name}[0:c.{each.counted_by}]"
        return f"[{self.read_one('each', each.type)} for each in {entries}]"

    @staticmethod
    def read_one(value: str, type_: Type) -> str:
        if type_.kind == "text":
            return f"convert.decoded({value})"
        if type_.kind == "address":
            return f"convert.address_text(convert.{ADDRESSES[type_.name]}, {value})"
        if type_.kind == "enum":
            return f"{class_name(type_.name)}({value})"
        if type_.kind == "record":
            return f"read_{snake(class_name(type_.name))}({value})"
        return value

    # ---- Records as arguments ----------------------------------------------------------------------------------------

    def is_argument(self, record: Record) -> bool:
        return any(each.type.name == record.name for function in self.headers.functions.values()
                   for each in function.parameters)

    def writer(self, record: Record) -> str:
        name = class_name(record.name)
        lines = "".join(f"    {line}\n" for each in record.fields for line in self.write(each))
        return f"\n\ndef write_{snake(name)}(c: Any, value: {name}) -> None:\n    convert.check({name}, value)\n{lines}"

    @staticmethod
    def write(each: Field) -> Iterable[str]:
        value, target = f"value.{snake(each.name)}", f"c.{each.name}"
        if each.type.kind == "text" and each.type.count is not None:
            return [f"c.{each.counted_by} = convert.write_texts({target}, {value}, {each.type.size})"]
        if each.type.kind == "text":
            return [f"{target} = convert.field_text({value}, {each.type.size})"]
        if each.type.count is not None or each.type.kind in ("record", "address"):
            raise ValueError(f"{each.name} cannot be written")
        return [f"{target} = {value}"]

    # ---- Functions without a connection ------------------------------------------------------------------------------

    @staticmethod
    def is_plain(function: Function) -> bool:
        """Returns the names of places, and the predicates of enumerations."""
        return function.result.name == "size_t" or function.name == f"{PREFIX}isTransportSetting"

    def plain_function(self, function: Function) -> str:
        parameter = function.parameters[0]
        name = snake(parameter.name)
        head = f"\n\ndef {method_name(function.name)}({name}: {self.parameter_annotation(parameter, function)})"
        doc = docstring(self.contracts.of(function.doc), "    ")
        if function.result.kind == "bool":
            return f"{head} -> bool:\n{doc}    return bool(lib.{function.name}({name}))\n"
        argument = self.argument(parameter, function)
        return f"{head} -> str:\n{doc}    return convert.name_of(lib.{function.name}, {argument})\n"

    # ---- Methods -----------------------------------------------------------------------------------------------------

    def methods_module(self) -> str:
        functions = native.methods(self.headers)
        answers = sorted({each.result.name for each in functions} - WITHOUT_CLASS)
        parts = [
            HEADER,
            "from typing import Optional, Sequence\n\n",
            "from zephlink import _convert as convert\nfrom zephlink import _types as types\n",
            "from zephlink._connection import Answer, Connection, Subscription\n",
            "from zephlink._native import ffi, lib\nfrom zephlink._types import *  # noqa: F403\n\n",
            "NOTHING = Answer(\"ZephlinkSDK_Result *\", convert.nothing)\n",
            *(self.answer(each) for each in answers),
            '\n\nclass Methods(Connection):\n    """The services of the daemon."""\n',
            *(self.methods_of(each) for each in functions),
        ]
        return "".join(parts)

    @staticmethod
    def answer(record: str) -> str:
        name = class_name(record)
        return f'{constant(name)} = Answer("{record} *", types.read_{snake(name)})\n'

    def methods_of(self, function: Function) -> str:
        text = ""
        if not native.listens(function):
            text += self.call(function)
        if native.can_subscribe(function):
            text += self.subscription(function)
        return text

    def call(self, function: Function) -> str:
        result = class_name(function.result.name) if function.result.name not in WITHOUT_CLASS else "None"
        verb, answer = "_call", constant(result) if result != "None" else "NOTHING"
        if "ZephlinkSDK_Error_CallbackRequired" in function.doc:  # one report contains many records
            verb, result = "_series", f"list[{result}]"
        start = f"lib.zephlink_{native.verbs(function)[0]}_{native.short(function)}"
        arguments = "".join(f", {self.argument(each, function)}" for each in function.parameters[1:])
        return (f"\n    def {method_name(function.name)}(self{self.parameters(function)}) -> {result}:\n"
                f"{docstring(self.contracts.of(function.doc), '        ')}"
                f"        return self.{verb}({start}, {answer}{arguments})\n")

    def subscription(self, function: Function) -> str:
        short = native.short(function)
        name = method_name(function.name) if native.listens(function) else f"subscribe_{snake(short[len('get'):])}"
        result = class_name(function.result.name)
        statistics = ", statistics=True" if short in STATISTICS else ""
        return (f"\n    def {name}(self, *, maxsize: Optional[int] = None) -> Subscription[{result}]:\n"
                f"{docstring(self.subscription_doc(function), '        ')}"
                f"        return self._subscribe(lib.zephlink_subscribe_{short}, {constant(result)}, maxsize"
                f"{statistics})\n")

    def subscription_doc(self, function: Function) -> str:
        if native.listens(function):
            return self.contracts.of(function.doc)
        report = re.search(r"every later (report_\w+)", function.doc)
        if not report:
            raise ValueError(f"{function.name} names no report")
        method = method_name(function.name)
        text = f"Iterates over what `{method}` returns: the answer, then every later {report.group(1)}."
        if native.short(function) in STATISTICS:
            text += " Asks the daemon to send them, unless `subscribe_stats` was called before."
        return text

    # ---- Parameters --------------------------------------------------------------------------------------------------

    def parameters(self, function: Function) -> str:
        text = ""
        for each in function.parameters[1:]:
            default = DEFAULTS.get((native.short(function), each.name))
            text += f", {snake(each.name)}: {self.parameter_annotation(each, function)}" + (
                f" = {default}" if default else "")
        return text

    def parameter_annotation(self, parameter: Parameter, function: Function) -> str:
        if parameter.type.kind == "pointer":
            element = self.element(parameter.type)
            return f"Sequence[{element}]" if parameter.counted_by else element
        name = self.annotation(parameter.type)
        return f"Optional[{name}]" if self.may_be_none(parameter, function) else name

    @staticmethod
    def element(pointer: Type) -> str:
        if pointer.name in ("text", *ADDRESSES):
            return "str"
        return class_name(pointer.name) if pointer.name.startswith(PREFIX) else "int"

    @staticmethod
    def may_be_none(parameter: Parameter, function: Function) -> bool:
        return re.search(rf"`{parameter.name}` (may be|is) null", function.doc) is not None

    def argument(self, parameter: Parameter, function: Function) -> str:
        """Returns the expression that converts a Python argument to a C argument, or to two for a list."""
        name, type_ = snake(parameter.name), parameter.type
        if type_.kind == "text":
            return f"convert.{'optional_' if self.may_be_none(parameter, function) else ''}text({name})"
        if type_.kind == "bool":
            return f"convert.boolean({name})"
        if type_.kind == "record":
            return f"convert.record({name}, \"{type_.name} *\", types.write_{snake(class_name(type_.name))})[0]"
        if type_.kind == "pointer":
            return self.pointer(name, type_, parameter.counted_by)
        return name

    @staticmethod
    def pointer(name: str, type_: Type, counted_by: Optional[str]) -> str:
        if type_.name == "text":
            return f"*convert.texts({name}, {type_.size})"
        if type_.name in ADDRESSES:
            return f"*convert.addresses(convert.{ADDRESSES[type_.name]}, {name}, \"struct {type_.name}[]\")"
        if not type_.name.startswith(PREFIX):
            return f"*convert.numbers({name}, \"{type_.name}[]\")"
        writer = f"write_{snake(class_name(type_.name))}"
        if counted_by:
            return f"*convert.records({name}, \"{type_.name}[]\", types.{writer})"
        return f"convert.record({name}, \"{type_.name} *\", {writer})"


def modules(headers: Headers) -> Dict[str, str]:
    return Generator(headers).modules()
