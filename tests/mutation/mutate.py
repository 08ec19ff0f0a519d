"""Plants faults in the sources, one at a time, and reports those that no test detects.

Each fault is one small change of one line: a comparison, a logical operator, a constant or a statement. The faults are
planted in a copy of the tree. Lines of `survivors.txt` name faults without a visible effect.
"""

import argparse
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time
from typing import Iterator, NamedTuple, Optional

SOURCES = ["base/*.cpp", "cli/*.cpp", "cli/families/*.cpp", "sdk/*.cpp", "sdk/families/*.cpp", "sdk/link/*.cpp",
           "platform/*_posix.cpp", "l10n/translate.cpp"]

# Patterns and their replacements. Spaces around an operator exclude templates and arrows.
REPLACEMENTS = [
    (r" == ", " != "), (r" != ", " == "),
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" && ", " || "), (r" \|\| ", " && "),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
    (r" \+ ", " - "), (r" - ", " + "), (r"\+\+", "--"),
    (r"(?<=[ (=-])\d+(?=[;,) ])", lambda match: str(int(match.group()) + 1)),
    (r"\bbreak;", ";"), (r"\bcontinue;", "break;"),
    (r"^\s+[\w:.>-]+\([^{}]*\);$", ""),
    (r"(?<=\bif \()(?=[^;]*\) )", "false && "),
]


class Fault(NamedTuple):
    """One change of one line."""
    file: str
    line: int
    before: str
    after: str

    def key(self) -> str:
        return f"{self.file} | {self.before.strip()} | {self.after.strip()}"


def faults_of(root: pathlib.Path) -> Iterator[Fault]:
    for pattern in SOURCES:
        for path in sorted(root.glob(pattern)):
            for number, line in enumerate(path.read_text().splitlines()):
                yield from faults_of_line(str(path.relative_to(root)), number, line)


def faults_of_line(file: str, number: int, line: str) -> Iterator[Fault]:
    # Blank out texts and comments without changing any column.
    code = re.sub(r'"(\\.|[^"\\])*"', lambda match: '"' + " " * (len(match.group()) - 2) + '"', line)
    code = re.sub(r"//.*", lambda match: " " * len(match.group()), code)
    if re.match(r"#|.*\b(template|static_assert|using|constexpr char)\b", code):
        return
    for pattern, replacement in REPLACEMENTS:
        for match in re.finditer(pattern, code.rstrip()):
            text = replacement(match) if callable(replacement) else replacement
            yield Fault(file, number, line, line[:match.start()] + text + line[match.end():])


def known_survivors(file: pathlib.Path) -> dict[str, str]:
    """Returns the reasons of the faults without a visible effect, by key."""
    survivors = {}
    for line in file.read_text().splitlines():
        if line and not line.startswith("#"):
            key, _, reason = line.rpartition(" | ")
            survivors[key] = reason
    return survivors


class Tree:
    """A copy of the tracked files that is built and tested."""

    def __init__(self, root: pathlib.Path, copy: pathlib.Path, jobs: int):
        self.path = copy
        self.build = copy / "build" / "mutation"
        self.jobs = jobs
        shutil.rmtree(copy, ignore_errors=True)
        listed = subprocess.run(["git", "ls-files", "-z"], cwd=root, capture_output=True, check=True).stdout.decode()
        for name in listed.strip("\0").split("\0"):
            (copy / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(root / name, copy / name, follow_symlinks=False)
        subprocess.run(["cmake", "-G", "Ninja", "-S", copy, "-B", self.build, "-DCMAKE_BUILD_TYPE=Debug",
                        "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DZEPHCTL_BENCH=OFF", "-DZEPHCTL_EXAMPLES=OFF",
                        "-DZEPHCTL_STATIC_DEPS=" + str(root / "build" / "static-deps"),
                        "--log-level=WARNING"], check=True, stdout=subprocess.DEVNULL)

    def builds(self) -> bool:
        return subprocess.run(["cmake", "--build", self.build], capture_output=True).returncode == 0

    def failing_test(self) -> Optional[str]:
        """Returns the first test that fails, or None. The slow sweeps come last."""
        for chosen in (["-E", "Sweep"], ["-R", "Sweep"]):
            run = subprocess.run(["ctest", "--test-dir", self.build, "--parallel", str(self.jobs), "--stop-on-failure",
                                  "--timeout", "90", *chosen], capture_output=True, text=True)
            if run.returncode != 0:
                failed = re.search(r"Test +#\d+: (\S+).*(\*\*\*|Exception)", run.stdout)
                return failed.group(1) if failed else "ctest"
        return None

    def plant(self, fault: Fault) -> None:
        self.write_line(fault, fault.after)

    def restore(self, fault: Fault) -> None:
        self.write_line(fault, fault.before)

    def write_line(self, fault: Fault, text: str) -> None:
        path = self.path / fault.file
        lines = path.read_text().split("\n")
        lines[fault.line] = text
        path.write_text("\n".join(lines))


def judge(tree: Tree, fault: Fault) -> Optional[str]:
    """Returns whether a fault that compiles was "killed" or "survived"; None for one that does not compile."""
    tree.plant(fault)
    try:
        if not tree.builds():
            return None
        start = time.monotonic()
        failed = tree.failing_test()
    finally:
        tree.restore(fault)
    outcome = f"killed by {failed}" if failed else "SURVIVED"
    print(f"{fault.file}:{fault.line + 1}: {fault.before.strip()}\n    -> {fault.after.strip()}\n    {outcome} after "
          f"{time.monotonic() - start:.0f} s", flush=True)
    return "killed" if failed else "survived"


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("count", type=int)
    parser.add_argument("seed", type=int)
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--jobs", type=int, default=8)
    parser.add_argument("--bound", type=float, default=95.0, help="the least share of killed faults, in percent")
    arguments = parser.parse_args()

    tree = Tree(arguments.root, arguments.root / "build" / "mutants", arguments.jobs)
    if not tree.builds() or (failed := tree.failing_test()):
        print("The tree does not pass its tests without a fault", "" if not tree.builds() else failed)
        return 1
    candidates = list(faults_of(tree.path))
    random.Random(arguments.seed).shuffle(candidates)
    unseen = known_survivors(arguments.root / "tests" / "mutation" / "survivors.txt")

    counts = {"killed": 0, "survived": 0}
    left_out = 0
    survivors = []
    for fault in candidates:
        if sum(counts.values()) == arguments.count:
            break
        if fault.key() in unseen:
            left_out += 1
            continue
        outcome = judge(tree, fault)
        if outcome:
            counts[outcome] += 1
        if outcome == "survived":
            survivors.append(fault)

    share = 100.0 * counts["killed"] / max(1, sum(counts.values()))
    print(f"\n{counts['killed']} killed, {counts['survived']} survived, {left_out} left out as known to change nothing: "
          f"{share:.1f} % of {len(candidates)} possible faults in this sample")
    for fault in survivors:
        print(fault.key())
    return 0 if share >= arguments.bound else 1


if __name__ == "__main__":
    sys.exit(main())
