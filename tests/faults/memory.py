#!/usr/bin/env python3
"""Fails each memory allocation in turn, for a set of commands and a host, and checks how every run ends.

A run passes if it ends with status 0 and the output and the requests of a run without a fault ("same"), or with a
status above 0 and an error on standard error ("error"). Everything else is a finding: an abort or another signal, a
hang, other output, a request that an undisturbed run does not send. Each finding is printed with its command line; to
reproduce it, run a daemon with this script and --serve.
"""

import argparse
import asyncio
import collections
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "python"))
import zephtest  # noqa: E402

STORED = {**zephtest.FIREWALL, "domains": [f"stored{number}.example.com" for number in range(5)]}
ANSWERS = {
    **zephtest.ANSWERS,
    "request_directory": ("report_directory", [zephtest.server(number) for number in range(1, 5)]),
    "request_firewall_settings": ("report_firewall_settings", STORED),
    "set_firewall_domains": ("report_firewall_settings", STORED),
}
HOST = ("(host)",)
COMMANDS = [
    ("state",),
    ("show", "servers"),
    ("firewall", "domains", "add", "example.com"),
    ("stats", "1"),
    HOST,
]
# Fails one allocation, or all allocations of the process from that one on.
COUNTS = {"once": 1, "for good": 0}
OUTCOMES = ["same", "error", "abort", "wrong output", "wrong request", "hang"]
PASSED = {"same", "error"}

# Enough for the longest run, two requests with a time-out of 5 seconds each, on a loaded machine.
LIMIT = 25
THREADS = 4
BATCH = 24  # concurrent runs of one chain


class Recorder:
    """A daemon for one run, which stores each received text."""

    def __init__(self, echo=False):
        self.texts, self.links, self.idle, self.echo = [], 0, asyncio.Event(), echo
        self.idle.set()

    async def course(self, link):
        self.links += 1
        self.idle.clear()
        try:
            while True:
                text = await link.text()
                self.texts.append(text.decode(errors="replace"))
                if self.echo:
                    print(self.texts[-1], end="", flush=True)
                name, members, _ = json.loads(text)
                for event, data in zephtest.answers(name, members, ANSWERS):
                    await link.send(event, data)
        finally:
            self.links -= 1
            if self.links == 0:
                self.idle.set()


Outcome = collections.namedtuple("Outcome", "kind detail")
Finding = collections.namedtuple("Finding", "words plan outcome run stack")


def blocks(text):
    """Returns the records of a stream, in any order."""
    return sorted(re.split(r"(?<=\]\n\n)", text))


def is_error(text):
    """Returns whether the text is an error that names the cause: an error object, or one line about memory. Code 3842
    blames the arguments, which were valid."""
    if zephtest.is_error_object(text):
        return json.loads(text)["errorCode"] != 3842
    return re.fullmatch(r"[^\n]*\bmemory\b[^\n]*\n", text) is not None


def is_stream_of_errors(text):
    records = [record for record in re.split(r"(?<=\]\n\n)", text) if record]
    matches = [re.fullmatch(r'\["error",\n(.*)\]\n\n', record, re.DOTALL) for record in records]
    return bool(records) and all(match and is_error(match.group(1)) for match in matches)


def judge(words, run, texts, clean, clean_texts):
    stream = words[0] == "stats"
    if run.status is None:
        return Outcome("hang", f"still running after {run.seconds:.0f} s")
    if run.status < 0:
        return Outcome("abort", f"signal {-run.status}")
    strange = [text for text in texts if text not in clean_texts]
    if strange:
        return Outcome("wrong request", f"sent {strange[0]!r}")
    # A stream repeats its subscription as often as time allows.
    whole = set(texts) == set(clean_texts) if stream else texts == clean_texts
    if run.status == 0 and run.err == "":
        if (blocks(run.out) != blocks(clean.out)) if stream else (run.out != clean.out):
            return Outcome("wrong output", "status 0 with another output")
        return Outcome("same", "") if whole else Outcome("wrong request", f"sent only {texts!r}")
    if stream and run.status == 0:
        known = set(blocks(clean.out))
        if is_stream_of_errors(run.err) and all(block in known for block in blocks(run.out)):
            return Outcome("error", "")
        return Outcome("wrong output", "status 0, neither whole records nor errors")
    if run.status == 0:
        return Outcome("wrong output", "status 0 with a message")
    if not is_error(run.err):
        return Outcome("wrong output", f"status {run.status} without an error that names the cause")
    if not clean.out.startswith(run.out):
        return Outcome("wrong output", f"status {run.status} with another output")
    return Outcome("error", "")


async def serve():
    """The daemon for --serve: prints its port, then each received text, until it is interrupted."""
    recorder = Recorder(echo=True)
    async with zephtest.Daemon(recorder.course) as daemon:
        print(f"PORT is {daemon.port}", flush=True)
        await asyncio.Event().wait()


class Sweep:
    def __init__(self, options, directory):
        self.options, self.directory = options, directory
        self.gate = asyncio.Semaphore(options.jobs)
        self.clean, self.findings, self.slowest = {}, [], 0.0
        self.table = {(words, name): collections.Counter() for words in COMMANDS for name in COUNTS}

    def command(self, words):
        return (self.options.host, ()) if words is HOST else (self.options.zephctl, words)

    async def run(self, words, plan=""):
        """Makes one run. Returns its outcome, the texts that its daemon received, and the stack of the first failure,
        or ""."""
        fired = pathlib.Path(self.directory, "-".join(words) + plan.replace(":", "-"))
        env = {"LD_PRELOAD": self.options.preload, "FAULT_FIRED": str(fired), **({"FAULT": plan} if plan else {})}
        recorder = Recorder()
        program, arguments = self.command(words)
        async with self.gate, zephtest.Daemon(recorder.course) as daemon:
            run = await zephtest.run(program, daemon.port, arguments, LIMIT, env)
            await asyncio.wait_for(recorder.idle.wait(), LIMIT)
        stack = fired.read_text(encoding="utf-8") if fired.exists() else ""
        return run, recorder.texts, stack

    async def one(self, words, name, thread, use):
        """Fails this allocation. Returns false if the thread makes fewer allocations."""
        plan = f"alloc:ENOMEM:{use}:{COUNTS[name]}:{thread}"
        run, texts, stack = await self.run(words, plan)
        if not stack:
            return False
        self.slowest = max(self.slowest, run.seconds)
        outcome = judge(words, run, texts, *self.clean[words])
        self.table[words, name][outcome.kind] += 1
        if outcome.kind not in PASSED:
            self.findings.append(Finding(words, plan, outcome, run, stack))
        return True

    async def chain(self, words, name, thread):
        """Fails all allocations of one thread, or every Nth."""
        use = 1
        while True:
            uses = [use + self.options.every * at for at in range(BATCH)]
            if not any(await asyncio.gather(*(self.one(words, name, thread, use) for use in uses))):
                return
            use = uses[-1] + self.options.every

    async def all(self):
        for words in COMMANDS:
            run, texts, _ = await self.run(words)
            if run.status != 0 or run.err or not run.out:
                raise SystemExit(f"{' '.join(words)} fails without a fault: {run}")
            self.clean[words] = run, texts
        await asyncio.gather(*(self.chain(words, name, thread)
                               for words in COMMANDS for name in COUNTS for thread in range(THREADS)))

    def print_table(self):
        print(f"{'command':40}{'refused':10}{'allocations':>12}" + "".join(f"{kind:>14}" for kind in OUTCOMES))
        rows = [(" ".join(words), name, counts) for (words, name), counts in self.table.items()]
        for name in COUNTS:
            rows.append(("all", name, sum((counts for (_, row), counts in self.table.items() if row == name),
                                          collections.Counter())))
        for title, name, counts in rows:
            print(f"{title:40}{name:10}{counts.total():12}" + "".join(f"{counts[kind]:14}" for kind in OUTCOMES))
        print(f"the slowest run took {self.slowest:.1f} s")

    def print_findings(self):
        frames = Frames(self.findings)
        for finding in sorted(self.findings, key=lambda finding: (finding.words, finding.plan.split(":")[3:],
                                                                  int(finding.plan.split(":")[2]))):
            program, arguments = self.command(finding.words)
            print(f"{finding.outcome.kind.upper()}: {finding.outcome.detail}")
            print(f"  FAULT={finding.plan} LD_PRELOAD={self.options.preload} {program} -p PORT {' '.join(arguments)}")
            print(f"  in {' < '.join(frames.names(finding.stack)) or 'unknown'}")
            if finding.run.err:
                print(f"  err {finding.run.err[-200:]!r}")
        for kind in OUTCOMES:
            sites = collections.Counter(" < ".join(frames.names(finding.stack)) for finding in self.findings
                                        if finding.outcome.kind == kind)
            for site, count in sites.most_common(self.options.sites):
                print(f"{count:5} {kind}: {site}")


class Frames:
    """Returns the functions of the stacks, from the symbols of the programs. Omits frames of the C++ and JSON
    libraries: the first own function is the relevant one."""

    FRAME = re.compile(r"(.*)\(\+(0x[0-9a-f]+)\)\[")
    FOREIGN = re.compile(r"^(Json|std|void std|bool std|__gnu_cxx|operator)\b|std::_Rb_tree|\?\?|^_start$")
    DEEPEST = 4

    def __init__(self, findings):
        wanted = collections.defaultdict(set)
        for finding in findings:
            for path, at in self.parts(finding.stack):
                wanted[path].add(at)
        self.known = {}
        for path, places in wanted.items():
            places = sorted(places)
            names = subprocess.run(["addr2line", "-f", "-C", "-e", path, *places], capture_output=True, text=True,
                                   check=True).stdout.splitlines()[::2]
            self.known.update({(path, at): self.short(name) for at, name in zip(places, names)})

    def parts(self, stack):
        for line in stack.splitlines():
            match = self.FRAME.match(line)
            if match and "libfault_shim" not in match.group(1) and "/lib/" not in match.group(1):
                # The return address minus one: the address itself may belong to the next function.
                yield match.group(1), hex(int(match.group(2), 16) - 1)

    @staticmethod
    def short(name):
        """Removes arguments and irrelevant namespaces."""
        for noise in ("zephlinksdk::", "(anonymous namespace)::", "[abi:cxx11]"):
            name = name.replace(noise, "")
        return re.sub(r"\(.*", "", name)

    def names(self, stack):
        names = [self.known[part] for part in self.parts(stack)]
        return [name for name in names if not self.FOREIGN.search(name)][:self.DEEPEST]


async def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    sweeps = "--serve" not in sys.argv
    parser.add_argument("--serve", action="store_true", help="only run the daemon, to reproduce a finding")
    parser.add_argument("--zephctl", required=sweeps)
    parser.add_argument("--host", required=sweeps)
    parser.add_argument("--preload", required=sweeps, help="the shim")
    parser.add_argument("--every", type=int, default=1, help="only every Nth allocation")
    parser.add_argument("--sites", type=int, default=10, help="how many places to print for each kind of finding")
    parser.add_argument("--jobs", type=int, default=16 * (os.cpu_count() or 1), help="number of concurrent runs")
    options = parser.parse_args()
    if options.serve:
        return await serve()
    with tempfile.TemporaryDirectory() as directory:
        sweep = Sweep(options, directory)
        await sweep.all()
    sweep.print_findings()
    sweep.print_table()
    if any(not counts for counts in sweep.table.values()):
        raise SystemExit("no allocation failed: the shim is not between")
    raise SystemExit(1 if sweep.findings else 0)


asyncio.run(main())
