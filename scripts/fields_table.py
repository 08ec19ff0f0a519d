"""The table docs/fields.toml, which describes every member of each JSON output of zephctl, as JSON Schemas and paths.

Reads bounds and words from the library's headers, and the outputs of actions from docs/commands.toml.
"""

import functools
import pathlib
import re
import tomllib

ROOT = pathlib.Path(__file__).resolve().parent.parent
DIALECT = "https://json-schema.org/draft/2020-12/schema"
INTEGERS = {
    "i32": (-(2**31), 2**31 - 1),
    "i64": (None, None),
    "u8": (0, 2**8 - 1),
    "u16": (0, 2**16 - 1),
    "u32": (0, 2**32 - 1),
    "u64": (0, None),
}


def fail(text):
    raise SystemExit(f"docs/fields.toml: {text}")


def read_families():
    """Reads docs/commands.toml. Adds to each action its names, without arguments, and the names of its outputs."""
    families = tomllib.loads((ROOT / "docs/commands.toml").read_text())["family"]
    for family in families:
        for action in family["action"]:
            name = re.split(r" [<\[]", action.get("usage") or action["form"])[0]
            action["names"] = [name, *action.get("also", [])]
            prints = action.get("prints", family["prints"])
            action["prints"] = [prints] if isinstance(prints, str) else prints
    return families


def printed(families):
    """Returns the names of the outputs of each action that prints JSON."""
    actions = [action for family in families for action in family["action"] if action["prints"]]
    return {name: action["prints"] for action in actions for name in action["names"]}


class Headers:
    """The bounds and enumerations of the public headers."""

    def __init__(self):
        self.records = (ROOT / "include/zephlinksdk/records.h").read_text()
        self.tables = re.findall(r"k\w+Words = wordTable<.*?\);", (ROOT / "sdk/word_tables.h").read_text(), re.DOTALL)
        self.bounds = dict(re.findall(r"ZEPHLINKSDK_BOUND\(ZephlinkSDK_(\w+), (\d+)\)", self.records))

    def bound(self, value):
        if isinstance(value, str) and value not in self.bounds:
            fail(f"records.h has no bound {value}")
        return int(self.bounds.get(value, value))

    @functools.cache
    def words(self, enumeration):
        """Returns the words of an enumeration and their meanings, ordered by value."""
        row = re.compile(r"\{ZephlinkSDK_" + enumeration + r'_(\w+), "([^"]*)"\}')
        rows = [found for table in self.tables if (found := row.findall(table))]
        if len(rows) != 1:
            fail(f"word_tables.h has {len(rows)} tables of words for {enumeration}")
        return {word: self.meaning(f"ZephlinkSDK_{enumeration}_{value}") for value, word in rows[0]}

    def meaning(self, enumerator):
        """Returns the comment of an enumerator, from the end of its line or from the line above."""
        if found := re.search(rf"\b{enumerator} = \d+,\s+///< (.*)", self.records):
            return found.group(1)
        if found := re.search(rf"/// (.*)\.\n\s*{enumerator} = \d+,", self.records):
            sentence = re.sub(r", see ZephlinkSDK_\w+", "", found.group(1))
            return sentence[0].lower() + sentence[1:]
        return fail(f"records.h does not document {enumerator}")


class Table:
    """The table, with all names resolved. An entry describes a value: a member, a part or a record."""

    def __init__(self, content=None):
        content = content or tomllib.loads((ROOT / "docs/fields.toml").read_text())
        self.headers = Headers()
        self.records, self.parts, self.streams = content["record"], content["part"], content["stream"]
        for entry in (*self.parts.values(), *self.records.values()):
            entry.setdefault("type", "object")
        for record in self.records.values():
            record.setdefault("members", {})

    def part(self, name):
        return self.parts.get(name) or fail(f"there is no part {name}")

    def record(self, name):
        return self.records.get(name) or fail(f"there is no record {name}")

    def members(self, entry):
        """Returns the members of an object, in the order in which they are printed."""
        if "of" in entry:
            return self.members(self.part(entry["of"]))
        included = self.members(self.part(entry["include"])) if "include" in entry else {}
        return dict(sorted({**included, **entry["members"]}.items()))

    def words(self, entry):
        """Returns the possible words of an entry and their meanings."""
        words = dict(self.headers.words(entry["of"]))
        for word in entry.get("except", []):
            del words[word]
        if "other" in entry:
            words[entry["other"]] = "any other value"
        return words

    def bounds(self, entry):
        """Returns the minimum and maximum of an integer; None for a bound that is not shown."""
        least, largest = INTEGERS[entry["type"]]
        return entry.get("min", least), entry.get("max", largest)

    def most(self, entry):
        """Returns the bound of a text, a list or a map; None for a text without a bound."""
        if entry["type"] == "text":
            return self.headers.bound(entry["size"]) - 1 if "size" in entry else None
        return self.headers.bound(entry["most"])

    # ---- Paths ----

    def paths(self, entry, path=""):
        """Yields the path and the entry of each nested member, and of each element that is not an object."""
        kind = entry["type"]
        if kind == "object":
            for name, member in self.members(entry).items():
                below = f"{path}.{name}".removeprefix(".")
                yield below, member
                yield from self.paths(member, below)
        elif kind in ("list", "map"):
            part = self.part(entry["of"])
            below = f"{path}[]" if kind == "list" else f"{path}<{entry['key']}>"
            if part["type"] != "object":
                yield below, part
            yield from self.paths(part, below)

    def seen(self, entry, value, path=""):
        """Yields the paths of all members and elements of a printed value."""
        kind = entry["type"]
        if kind == "object":
            for name, member in self.members(entry).items():
                if name in value:
                    below = f"{path}.{name}".removeprefix(".")
                    yield below
                    yield from self.seen(member, value[name], below)
        elif kind in ("list", "map"):
            part = self.part(entry["of"])
            below = f"{path}[]" if kind == "list" else f"{path}<{entry['key']}>"
            for element in value if kind == "list" else value.values():
                yield below
                yield from self.seen(part, element, below)

    # ---- Schemas ----

    def describe(self, entry):
        """Returns the description of an entry for a schema, without markup."""
        parts = [entry["about"]] if "about" in entry else []
        if "unit" in entry:
            parts.append("unit: defined by the daemon" if entry["unit"] == "daemon's" else f"unit: {entry['unit']}")
        parts += [f"{value or 'empty'}: {meaning}" for value, meaning in entry.get("sentinels", {}).items()]
        return re.sub(r"\[(.*?)\]\(.*?\)", r"\1", "; ".join(parts)).replace("`", "")

    def schema(self, entry):
        make = getattr(self, f"_{entry['type']}", self._integer)
        description = self.describe(entry)
        return {**({"description": description} if description else {}), **make(entry)}

    def _bool(self, _):
        return {"type": "boolean"}

    def _real(self, _):
        return {"type": "number"}

    def _integer(self, entry):
        if entry["type"] not in INTEGERS:
            fail(f"there is no type {entry['type']}")
        bounds = zip(("minimum", "maximum"), self.bounds(entry))
        return {"type": "integer", **{name: bound for name, bound in bounds if bound is not None}}

    def _text(self, entry):
        most = self.most(entry)
        return {"type": "string", **({"maxLength": most} if most is not None else {})}

    def _word(self, entry):
        return {"type": "string", "enum": list(self.words(entry))}

    def _list(self, entry):
        return {"type": "array", "maxItems": self.most(entry), "items": self.schema(self.part(entry["of"]))}

    def _map(self, entry):
        return {
            "type": "object",
            "maxProperties": self.most(entry),
            "patternProperties": {entry["keys"]: self.schema(self.part(entry["of"]))},
            "additionalProperties": False,
        }

    def _object(self, entry):
        members = self.members(entry)
        always = [name for name, member in members.items() if "when" not in member and not member.get("optional")]
        schema = {
            "type": "object",
            "properties": {name: self.schema(member) for name, member in members.items()},
            "required": always,
            "additionalProperties": False,
        }
        conditions = self._conditions(members)
        return {**schema, **({"allOf": conditions} if conditions else {})}

    @staticmethod
    def _conditions(members):
        """Returns the conditions of members that depend on other values: each group is required or forbidden."""
        groups = {}
        for name, member in members.items():
            if "when" in member:
                groups.setdefault(tuple(member["when"].items()), []).append(name)
        return [
            {
                "if": {"properties": {name: {"const": value} for name, value in values}},
                "then": {"required": names},
                "else": {"properties": {name: False for name in names}},
            }
            for values, names in groups.items()
        ]

    # ---- Outputs ----

    def block(self, label, record):
        """Returns the schema of a stream's block: its label and its record."""
        items = [{"const": label}, self.schema(self.record(record))]
        return {"type": "array", "prefixItems": items, "items": False, "minItems": 2}

    def output(self, names):
        """Returns the schema of an action's output: one of these records, or any block of a stream."""
        if len(names) == 1 and names[0] in self.streams:
            stream = self.streams[names[0]]
            blocks = [self.block(label, record) for label, record in stream["blocks"].items()]
            return {"$schema": DIALECT, "title": names[0], "description": stream["about"], "oneOf": blocks}
        if len(names) == 1:
            return {"$schema": DIALECT, "title": names[0], **self.schema(self.record(names[0]))}
        records = [{"title": name, **self.schema(self.record(name))} for name in names]
        return {"$schema": DIALECT, "title": " or ".join(names), "oneOf": records}

    def outputs(self, families):
        """Returns the outputs of each schema, by file name: all records, streams and actions."""
        outputs = {name: [name] for name in (*self.records, *self.streams)}
        for name, prints in printed(families).items():
            if outputs.setdefault(name.replace(" ", "-"), prints) != prints:
                fail(f"the action {name} prints {prints} and has the same name as another output")
        return outputs
