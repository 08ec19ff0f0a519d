#!/usr/bin/env python3
"""Validates the output of zephctl with the installed schemas: tests/schemas/outputs.py ZEPHCTL ZEPHSIM.

Runs every action of docs/commands.toml with the simulated daemon, in several of its states, and validates the output.
Fails if an output does not match its schema, if a schema matched no output, if a member of docs/fields.toml was never
printed, or if an output would still be valid without the line of one of its members. Exits with status 77 without
python3-jsonschema.
"""

import concurrent.futures
import contextlib
import json
import pathlib
import socket
import subprocess
import sys
import threading

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts"))
from fields_table import Table, printed, read_families  # noqa: E402

try:
    from jsonschema import Draft202012Validator
    from jsonschema.exceptions import best_match
except ImportError:
    print("SKIPPED: python3-jsonschema is not installed")
    sys.exit(77)

SECONDS = 30  # for one run, and for the blocks that a stream must print
PEERS = [f"c1d7b3a0-0f6e-4b59-a2c8-31e5f7094d0{number}" for number in range(1, 5)]

# The actions that read, run in each state of the daemon together with all `show` actions.
READS = [
    "state",
    "version",
    "stats historic",
    "networksharing settings",
    "networksharing availableshares",
    "networksharing discovery",
    "safebrowsing settings",
    "safebrowsing stats",
]
STATES = {
    "signed out": [],
    "refused": ["login demo@example.com wrong"],
    "signed in": ["login team@example.com demo"],
    "connected": ["login demo@example.com demo", "connect us nyc"],
    "private": ["login team@example.com demo", "connect privatede-dusseldorf-1"],
    "after a session": ["login demo@example.com demo", "connect", "disconnect"],
    "over limit": ["login full@example.com demo"],
    "automatic": ["login auto", "connectmethod privatede-dusseldorf-1"],
    "with settings": [
        "ports 8080/tcp 5000/udp",
        "subnets 10.1.0.0/16",
        "adapter encryption wlan0 on",
        "firewall ports set 80/tcp 6000-6010/udp",
        "streamingbypass ports set 6000-6010/udp",
        "dns 192.0.2.53",
        "captiveportal login on wlan0",
    ],
    "with peers": [
        f"networksharing reconnect {PEERS[0]}",
        "networksharing set alwaysOnDiscovery on",
        "networksharing set sameUserAutoPair on",
    ],
}

# Runs that fail, each with a daemon started with the options.
FAILURES = {
    "refused": (
        ["--fast", "--refuse", "set_dev_jumbo_packets"],
        [
            "jumbo on",
            "login oauth expired-token",
            "speedtest",
            "log report nobody slow README.md",
            "log report ann@example.com slow no-file",
            f"networksharing reconnect {PEERS[1]}",
            f"networksharing peer request {PEERS[2]}",
            "safebrowsing token bad-token",
        ],
    ),
    "silent": (["--silent"], ["state"]),
    "silent, stream": (["--silent"], ["stats 1"]),
}
WITHOUT_DAEMON = ["state", "stats 1", "stats historic"]

# The schemas that no run prints, with the reasons.
NEVER = {
    "route-default.json": "the simulated daemon locks the default route",
    "networksharing-set-host.json": "no platform has this switch yet",
    "safebrowsing-errors: error": "the action sends no request that could fail",
    "safebrowsing-redirects: error": "the action sends no request that could fail",
}


class Coverage:
    """Validates outputs, and records the schemas and members that they matched. Thread-safe."""

    def __init__(self):
        self.table = Table()
        self.prints = printed(read_families())
        self.validators = {path.stem: self.load(path) for path in sorted((ROOT / "packaging/schemas").glob("*.json"))}
        self.lock = threading.Lock()
        self.faults = []
        self.matched = {}  # the number of outputs that matched each schema, and of blocks with each label of a stream
        self.examples = {}  # the first record that contained a member, by the record's name and the member's path

    @staticmethod
    def load(path):
        schema = json.loads(path.read_text())
        Draft202012Validator.check_schema(schema)
        return Draft202012Validator(schema)

    def fault(self, text):
        with self.lock:
            self.faults.append(text)

    def validate(self, where, value, schema):
        """Returns whether the value matches the schema of that name."""
        error = best_match(self.validators[schema].iter_errors(value))
        if error is not None:
            self.fault(f"{where}: does not match {schema}.json at {error.json_path}: {error.message[:300]}")
            return False
        self.count(f"{schema}.json")
        return True

    def count(self, what):
        with self.lock:
            self.matched[what] = self.matched.get(what, 0) + 1

    def record(self, where, value, name):
        if not self.validate(where, value, name):
            return
        with self.lock:
            for path in self.table.seen(self.table.records[name], value):
                self.examples.setdefault((name, path), value)

    def action(self, words):
        """Returns the longest action at the start of a command line; None if it prints no JSON."""
        names = [name for name in self.prints if f"{words} ".startswith(f"{name} ")]
        return max(names, key=len, default=None)

    def block(self, where, block, action):
        schema = action.replace(" ", "-")
        stream = self.table.streams[self.prints[action][0]]
        if self.validate(where, block, schema):
            self.count(f"{schema}: {block[0]}")
            self.record(where, block[1], stream["blocks"][block[0]])

    def output(self, where, value, action):
        if self.validate(where, value, action.replace(" ", "-")):
            names = self.prints[action]
            self.record(where, value, next(name for name in names if self.validators[name].is_valid(value)))

    def run(self, where, words, stdout, stderr):
        """Checks the output of one run."""
        try:
            self.check(where, self.action(words), stdout, stderr)
        except ValueError as error:
            self.fault(f"{where}: printed no JSON: {error}")

    def check(self, where, action, stdout, stderr):
        if action is None:
            if stdout.startswith(("{", "[")):
                self.fault(f"{where}: prints JSON, but has no output in docs/commands.toml")
        elif not stdout and not stderr:
            self.fault(f"{where}: printed nothing")
        elif self.prints[action][0] in self.table.streams:
            for block in blocks(stdout) + blocks(stderr):
                self.block(where, block, action)
        else:
            if stdout:
                self.output(where, json.loads(stdout), action)
            if stderr:
                self.record(where, json.loads(stderr), "error")

    # ---- Whether everything in the table was printed ----

    def members(self):
        """Returns each record's members: the names of the record and the path, and the entry."""
        for name, record in self.table.records.items():
            for path, entry in self.table.paths(record):
                yield name, path, entry

    def check_seen(self):
        expected = {f"{name}.json" for name in self.validators}
        expected |= {f"{name}: {label}" for name, stream in self.table.streams.items() for label in stream["blocks"]}
        for what in expected - self.matched.keys() - NEVER.keys():
            self.fault(f"{what} matched no output")
        for what in NEVER.keys() & self.matched.keys():
            self.fault(f"{what} matched an output, though {NEVER[what]}")
        for name, path, entry in self.members():
            seen = (name, path) in self.examples
            if not seen and "unseen" not in entry:
                self.fault(f"{name}: {path} was never printed")
            if seen and "unseen" in entry:
                self.fault(f"{name}: {path} was printed, but the table says: {entry['unseen']}")

    def check_lines(self):
        """Removes the line of each member in turn: a record that contained the member must become invalid."""
        owners = {id(entry): (part["members"], name)
                  for part in (*self.table.parts.values(), *self.table.records.values())
                  for name, entry in part.get("members", {}).items()}
        for name, path, entry in list(self.members()):
            if id(entry) not in owners or (name, path) not in self.examples:
                continue
            members, member = owners[id(entry)]
            del members[member]
            schema = self.table.schema(self.table.records[name])
            members[member] = entry
            if Draft202012Validator(schema).is_valid(self.examples[name, path]):
                self.fault(f"{name}: without a line for {path} an output with it is still valid")


def blocks(text):
    """Returns the complete blocks of a stream."""
    return [json.loads(block + "]") for block in text.split("]\n\n")[:-1]]


def read_blocks(stream, printed, wanting):
    """Appends the next blocks of a running stream while the labels of all blocks do not yet suffice."""
    text = ""
    while wanting([block[0] for block in printed]) and (line := stream.stdout.readline()):
        text += line
        if line == "\n":
            printed += blocks(text)
            text = ""


@contextlib.contextmanager
def simulator(zephsim, options):
    """Runs a simulated daemon and returns its port. The daemon ends with this script in any case."""
    command = ["setpriv", "--pdeathsig", "KILL", zephsim, "--port", "0", "--seed", "1", *options]
    with subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True) as process:
        try:
            yield process.stdout.readline().strip().rsplit(":", 1)[1]
        finally:
            process.terminate()


class Runs:
    """Runs of zephctl whose outputs are checked."""

    def __init__(self, zephctl, zephsim):
        self.zephctl, self.zephsim = zephctl, zephsim
        self.coverage = Coverage()

    def command(self, port, words):
        return [self.zephctl, "--port", str(port), *words.split()]

    def run(self, port, where, words):
        done = subprocess.run(self.command(port, words), cwd=ROOT, stdin=subprocess.DEVNULL, capture_output=True,
                              text=True, timeout=SECONDS)
        self.coverage.run(f"{where}: {words}", words, done.stdout, done.stderr)

    def family(self, family):
        with simulator(self.zephsim, family.get("simulator", [])) as port:
            for words in family.get("before", []):
                self.run(port, family["title"], words)
            for action in family["action"]:
                for words in action["run"]:
                    self.run(port, family["title"], words.removeprefix("! "))

    def state(self, title, before):
        with simulator(self.zephsim, ["--fast"]) as port:
            for words in before:
                self.run(port, title, words)
            for name in [*READS, *(name for name in self.coverage.prints if name.startswith("show "))]:
                self.run(port, title, name)

    def failures(self, title, options, runs):
        with simulator(self.zephsim, options) as port:
            for words in runs:
                self.run(port, title, words)

    def without_daemon(self, words):
        # Bound but not listening: no other process can get the port, and connections are refused.
        with socket.socket() as reserved:
            reserved.bind(("127.0.0.1", 0))
            self.run(reserved.getsockname()[1], "without a daemon", words)

    def peers(self):
        """Runs a stream with all its labels, while peers are found, connect, fail to connect and ask to pair."""
        wanted = set(self.coverage.table.streams["stats"]["blocks"]) - {"error"}
        words = "stats 0 networksharing current day week month total"
        with simulator(self.zephsim, ["--fast"]) as port, contextlib.ExitStack() as stack:
            for before in ("login demo@example.com demo", "connect us nyc"):
                self.run(port, "peers", before)
            stream = stack.enter_context(subprocess.Popen(self.command(port, words), stdout=subprocess.PIPE, text=True))
            stack.callback(stream.kill)
            guard = threading.Timer(SECONDS, stream.kill)
            stack.callback(guard.cancel)
            guard.start()
            printed = []
            # The second statistics arrive when all listeners are registered.
            read_blocks(stream, printed, lambda labels: labels.count("session_stats") < 2)
            for change in (f"reconnect {PEERS[1]}", f"reconnect {PEERS[0]}", "startdiscovery"):
                self.run(port, "peers", f"networksharing {change}")
            read_blocks(stream, printed, lambda labels: not wanted <= set(labels))
        for block in printed:
            self.coverage.block("peers: stats", block, "stats")


def jobs(runs):
    """Returns the concurrent jobs; those that wait for a time-out come first."""
    yield from ((runs.without_daemon, words) for words in WITHOUT_DAEMON)
    yield from ((runs.failures, title, *failure) for title, failure in reversed(FAILURES.items()))
    yield (runs.peers,)
    yield from ((runs.family, family) for family in read_families())
    yield from ((runs.state, title, before) for title, before in STATES.items())


def main():
    runs = Runs(*(pathlib.Path(path).resolve() for path in sys.argv[1:3]))
    with concurrent.futures.ThreadPoolExecutor(max_workers=12) as pool:
        for job in [pool.submit(*job) for job in jobs(runs)]:
            job.result()
    coverage = runs.coverage
    coverage.check_seen()
    coverage.check_lines()
    members = {(name, path) for name, path, _ in coverage.members()}
    schemas = [what for what in coverage.matched if what.endswith(".json")]
    print(*sorted(coverage.faults), sep="\n", end="\n" if coverage.faults else "")
    print(f"values validated: {sum(coverage.matched[schema] for schema in schemas)}")
    print(f"schemas matched: {len(schemas)} of {len(coverage.validators)}")
    print(f"members printed: {len(members & coverage.examples.keys())} of {len(members)}")
    return int(bool(coverage.faults))


if __name__ == "__main__":
    sys.exit(main())
