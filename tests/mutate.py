#!/usr/bin/env python3
"""Makes small mistakes in the sources of the library and tells which no test notices.

    tests/mutate.py [--share PERCENT] [--seconds N] [--survivors] [UNIT ...]

A unit is a source file in VirtualServices/KW4TOOLS.m/src without its ending (none: all of them).
Each mutant is one change: a turned or shifted comparison, an off-by-one, another number, text or
truth value, a negated condition, a dropped statement. The sources are never touched: a mutant is
compiled from a copy in build/mutate and linked into the library there, and the tests of its unit
run until one fails. A change that does not compile, or to what is compiled to the same, is none.

Results are kept in build/mutate/results.txt and not made again while the file is as it was, so that
a run may be stopped at any time and goes on where it was. Survivors that change nothing that can be
observed are named, with the reason, in tests/mutants.txt, and not told again.
"""

import argparse
import hashlib
import os
import re
import shlex
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
SOURCES = ROOT / "VirtualServices/KW4TOOLS.m/src"
BUILD = ROOT / "build/mutate"
COPY = BUILD / "mutated"
RESULTS = BUILD / "results.txt"
HARMLESS = ROOT / "tests/mutants.txt"
LIBRARY = "VirtualServices/KW4TOOLS.m/libKW4TOOLS.so.1.0.0"

STRINGS = "ZORDuxStrings ZORDuxStringsWords ZORDuxStringsModel ZORDuxStringsMemory"
LISTS = "ZORConfigServices SequenceInterval IdentifierTable"
SERVICES = ("ZORDuxServices ZORDuxServicesIdentifiers ZORDuxServicesPaths ZORDuxServicesSchemas "
            "ZORDuxServicesSettings ZORDuxServicesFiles")
ADAPTERS = "ZORDuxServices ZORDuxModel LifeCycleTypes"
STRING_UNITS = ("BytePiece FindWord NewString StrippedPart WordBlocks cswap insert left lower overly pad "
                "pos qstrip right strip substr subword upper word wordlen wordpos")
# The tests of a unit, where it is not the one of its own name.
TESTS = {
    **{unit: STRINGS for unit in STRING_UNITS.split()},
    **{unit: LISTS for unit in ("Identifier", "IdentifierLists", "IdentifierTable",
                                "IntervalRelation", "ZORConfigServices")},
    **{unit: ADAPTERS for unit in ("TIELifeCycleObjectZORDuxServices",
                                   "TIEZORIDuxModelZORDuxModel",
                                   "TIEZORIDuxServicesZORDuxServices", "ZORIDuxServices")},
    "CompanionComponent": "GetMaskEditor GetSecurity",
    "CoverageReport": "ZORDuxTrace MemoryFaults",
    "CreateServices": "ZORDuxServices ComponentMemory",
    "GuardedBlock": "MethodFrame " + SERVICES,
    "LifeCycleTypes": "LifeCycleTypes ZORDuxServices",
    "MethodFrame": "MethodFrame " + SERVICES,
    "ObjInMemory": "ObjInMemory ZORConfigServices",
    "PathList": "ZORDuxServicesPaths",
    "ServicesErrors": SERVICES + " ZORLoadExternalSchema",
    "SettingReader": "ZORDuxServicesSettings ZORDuxServicesPaths",
    "VariableReference": "ZORDuxServicesPaths",
    "ZORDuxModel": "ZORDuxModel ComponentMemory",
    "ZORDuxServices": "ZORDuxServices ComponentMemory LifeCycleTypes",
    "ZORDuxServicesFiles": "ZORDuxServicesFiles ZORDuxServicesSystemCalls",
    "ZORDuxServicesPaths": "ZORDuxServicesPaths ZORDuxServicesSystemCalls",
    "ZORDuxServicesSettings": "ZORDuxServicesSettings ZORDuxServicesSystemCalls",
    "ZORDuxTrace": "ZORDuxTrace ZORDuxTraceStep",
}

# What is looked for in a line of code, and what may stand there instead. Binary operators have
# blanks around them, brackets of templates have none.
CHANGES = [
    ("comparison", r" == ", [" != "]),
    ("comparison", r" != ", [" == "]),
    ("comparison", r" < ", [" <= ", " >= "]),
    ("comparison", r" <= ", [" < ", " > "]),
    ("comparison", r" > ", [" >= ", " <= "]),
    ("comparison", r" >= ", [" > ", " < "]),
    ("operator", r" && ", [" || "]),
    ("operator", r" \|\| ", [" && "]),
    ("operator", r" \+ (?=[\w(*&])", [" - "]),
    ("operator", r" - (?=[\w(*&])", [" + "]),
    ("operator", r" \+= ", [" -= "]),
    ("operator", r" -= ", [" += "]),
    ("truth", r"\btrue\b", ["false"]),
    ("truth", r"\bfalse\b", ["true"]),
    ("negation", r"(?<=[(\s])!(?=[\w(*])", [""]),
]


class Mutant:
    def __init__(self, file, line, kind, old, new):
        self.file, self.line, self.kind, self.old, self.new = file, line, kind, old, new

    def key(self):
        """Does not depend on the place in the file, so that it outlives edits elsewhere."""
        return f"{self.file.name}: {self.old.strip()} -> {self.new.strip() or '(nothing)'}"

    def show(self):
        return f"{self.file.relative_to(ROOT)}:{self.line}: {self.old.strip()}\n" \
               f"    {self.kind}: {self.new.strip() or '(nothing)'}"


def blank_out(text):
    """The text with comments and the insides of literals as blanks, every place kept."""
    pattern = r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\''

    def blank(match):
        found = match.group()
        if found[0] in "\"'":
            return found[0] + " " * (len(found) - 2) + found[0]
        return re.sub(r"[^\n]", " ", found)

    return re.sub(pattern, blank, text, flags=re.S)


def closing(text, start):
    """Where the bracket closes that is open at the place; -1 when it does not."""
    depth = 1
    for place in range(start, len(text)):
        depth += {"(": 1, ")": -1}.get(text[place], 0)
        if depth == 0:
            return place
    return -1


def changes_of_line(line, code):
    """(kind, new line) for every change of one line; `code` is the line with literals blank."""
    for kind, pattern, replacements in CHANGES:
        for match in re.finditer(pattern, code):
            for new in replacements:
                yield kind, line[:match.start()] + new + line[match.end():]
    for match in re.finditer(r"\b(?:if|while) \(", code):
        end = closing(code, match.end())
        if end > 0 and ";" not in code[match.end():end] and "* const" not in code[match.end():end] \
                and not re.search(r"[^=!<>]=[^=]", code[match.end():end]):
            yield "condition", line[:match.end()] + "!(" + line[match.end():end] + ")" + line[end:]
    for match in re.finditer(r"(?<![\w.\"'])(\d+)(?![\w.'])", code):
        yield "number", line[:match.start()] + str(int(match.group()) + 1) + line[match.end():]
    for match in re.finditer(r'"( *)"', code):
        text = line[match.start() + 1:match.end() - 1]
        new = "~" + text if not text or text[0] == "\\" else "~" + text[1:]
        yield "text", line[:match.start() + 1] + new + line[match.end() - 1:]
    for match in re.finditer(r"'( +)'", code):
        new = "~" if line[match.start() + 1] != "~" else "^"
        yield "character", line[:match.start()] + f"'{new}'" + line[match.end():]
    statement = re.match(r"\s+(?:[\w:>.\-\[\]]+\(.*\)|\(?\*?\w[\w.>\[\]-]* (?:[-+|]?=) .*"
                         r"|(?:\+\+|--)[\w.>-]+|[\w.>-]+(?:\+\+|--))(;)$", code)
    if statement and not re.match(r"\s+(?:return|throw|delete|using|static_assert)\b", code):
        indent = len(line) - len(line.lstrip())
        yield "dropped", line[:indent] + ";"


def mutants_of(file):
    text = file.read_text()
    lines, codes = text.splitlines(), blank_out(text).splitlines()
    begun = True  # whether a statement begins in this line
    for number, (line, code) in enumerate(zip(lines, codes), 1):
        if not re.match(r"\s*(#|template\b|using\b|static_assert\b|$)", code):
            for kind, new in changes_of_line(line, code):
                if kind != "dropped" or begun:
                    yield Mutant(file, number, kind, line, new)
        stripped = code.strip()
        if stripped:
            begun = stripped[-1] in ";{}:" or stripped.endswith(")") and bool(
                re.match(r"(if|for|while)\b", stripped)) or stripped == "else"


def run(command, **more):
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **more)


class Library:
    """The library of the build directory and the tests, and how to make them anew with some
    sources changed."""

    def __init__(self, tests):
        commands = subprocess.run(["ninja", "-C", str(BUILD), "-t", "commands", "KW4TOOLS", *tests],
                                  check=True, capture_output=True, text=True).stdout.splitlines()
        self.compile, self.includes, self.unchanged = {}, {}, {}
        for command in commands:
            words = shlex.split(command)
            source = Path(words[words.index("-c") + 1]) if "-c" in words else None
            if source and (source.parent == SOURCES or source.stem in tests):
                self.compile[source.name] = words
        self.links = {LIBRARY: next(each for each in commands if f" -o {LIBRARY} " in each)}
        shutil.rmtree(COPY, ignore_errors=True)
        COPY.mkdir()
        headers = {file.name for file in SOURCES.glob("*.h")}
        for source in [*SOURCES.iterdir(), *(ROOT / f"tests/{test}.cpp" for test in tests)]:
            shutil.copy(source, COPY)
            found = set(re.findall(r'#include "(\w+\.h)"', source.read_text()))
            self.includes[source.name] = found & headers
        for test in tests:
            if self.includes[f"{test}.cpp"]:
                [link] = [each for each in commands if f" -o tests/{test} " in each]
                self.links[f"tests/{test}"] = link.split(" && cd ")[0]
        self.linked = set(self.links)  # those with changes, which a run leaves that was killed
        self.restore()

    def users_of(self, name):
        """What is compiled with that file in it."""
        users = {name}
        while more := {each for each, names in self.includes.items() if names & users} - users:
            users |= more
        return sorted(users & self.compile.keys())

    def compiled(self, name, ending):
        """The object made of the copy of a source as it is now; none when it does not compile."""
        made = COPY / (name + ending)
        words = [each.replace(str(SOURCES), str(COPY)) for each in self.compile[name]
                 if each not in ("ccache", "-Werror")] + ["-w"]
        words[words.index("-o") + 1] = str(made)
        words[words.index("-c") + 1] = str(COPY / name)
        words[words.index("-MF") + 1] = str(made) + ".d"
        return made if run(words, cwd=BUILD).returncode == 0 else None

    def before(self, name):
        """What the compiler makes of the source itself."""
        if name not in self.unchanged:
            self.unchanged[name] = self.compiled(name, ".before.o").read_bytes()
        return self.unchanged[name]

    def make(self, mutant):
        """Whether there is such a mutant: it compiles, and to something else."""
        users = self.users_of(mutant.file.name)
        before = [self.before(name) for name in users]
        copy = COPY / mutant.file.name
        lines = mutant.file.read_text().splitlines()
        lines[mutant.line - 1] = mutant.new
        copy.write_text("\n".join(lines) + "\n")
        try:
            made = [self.compiled(name, ".o") for name in users]
        finally:
            shutil.copy(mutant.file, copy)
        if None in made or [each.read_bytes() for each in made] == before:
            return False
        objects = {words[words.index("-o") + 1]: str(each)
                   for words, each in zip(map(self.compile.get, users), made)}
        is_made = True
        for target, link in self.links.items():
            changed = set(link.split()) & objects.keys()
            for each in changed:
                link = link.replace(each, objects[each])
            if changed or target in self.linked:
                is_made &= run(link, shell=True, cwd=BUILD).returncode == 0
            (self.linked.add if changed else self.linked.discard)(target)
        return is_made

    def restore(self):
        for target in self.linked:
            run(self.links[target], shell=True, cwd=BUILD, check=True)
        self.linked = set()


def tests_of(unit):
    return [name + "_test" for name in TESTS.get(unit, unit).split()]


def program(test):
    return str(BUILD / "tests" / test)


def passes(test, options, seconds):
    process = subprocess.Popen(
        [program(test), "--gtest_fail_fast", "--gtest_brief=1", *options], cwd=BUILD / "tests",
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        start_new_session=True)
    try:
        return process.wait(seconds) == 0
    except subprocess.TimeoutExpired:
        return False
    finally:
        try:
            os.killpg(process.pid, signal.SIGKILL)  # what the test started goes with it
        except ProcessLookupError:
            pass
        process.wait()


def one_by_one(test):
    """The options that run each test of a program in a process of its own."""
    suite, options = "", []
    listed = subprocess.run([program(test), "--gtest_list_tests"], capture_output=True, text=True)
    for line in listed.stdout.splitlines():
        if not line.startswith(" "):
            suite = line
        else:
            options.append([f"--gtest_filter={suite}{line.split('#')[0].strip()}"])
    return options


class Ways:
    """How to run a test program: (options, seconds it may take), each in a process of its own."""

    def __init__(self, test):
        self.single = [self.way(test, options) for options in one_by_one(test)]
        if None in self.single:
            sys.exit(f"{test} fails without any change")
        # All its tests in one process, which is faster, where they do not mind.
        together = self.way(test, [])
        self.together = [together] if together else []

    @staticmethod
    def way(test, options):
        begin = time.monotonic()
        passed = passes(test, options, 300)
        return (options, 5 + 3 * (time.monotonic() - begin)) if passed else None


def is_caught(unit, ways):
    """A test may see only in a process of its own what those before it would set right."""
    tests = tests_of(unit)
    return any(not passes(test, *way) for test in tests for way in ways[test].together) or \
        any(not passes(test, *way) for test in tests for way in ways[test].single)


def known_results():
    lines = RESULTS.read_text().splitlines() if RESULTS.exists() else []
    return dict(reversed(line.split(" ", 1)) for line in lines)


def harmless():
    lines = HARMLESS.read_text().splitlines() if HARMLESS.exists() else []
    return {line for line in lines if line and not line.startswith("#")}


def chosen_of(unit, share):
    """That part of the unit's mutants in percent, rounded up: the same each time, and from all
    over the unit."""
    mutants = [each for file in sorted(SOURCES.glob(f"{unit}.*")) for each in mutants_of(file)]
    mutants.sort(key=lambda each: hashlib.sha256(each.key().encode()).digest())
    return sorted(mutants[:-(-len(mutants) * share // 100)],
                  key=lambda each: (each.file, each.line))


def identity(mutant):
    """Of a mutant in this state of its file."""
    state = hashlib.sha256(mutant.file.read_bytes()).hexdigest()[:12]
    return f"{state} {mutant.line} {mutant.key()}"


def build(tests):
    if not (BUILD / "build.ninja").exists():
        subprocess.run(["cmake", "-S", ROOT, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=",
                        "-DCMAKE_CXX_FLAGS=-O0"], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["ninja", "-C", BUILD, "KW4TOOLS", *tests], check=True,
                   stdout=subprocess.DEVNULL)


def units():
    """Those that have a test, by name."""
    stems = {file.stem for file in SOURCES.iterdir() if file.suffix in (".h", ".cpp")}
    return {stem for stem in stems
            if all((ROOT / "tests" / f"{test}.cpp").exists() for test in tests_of(stem))}


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--share", type=int, default=100, metavar="PERCENT",
                        help="try only that part of all mutants, the same each time")
    parser.add_argument("--seconds", type=int, default=0, help="stop after that time")
    parser.add_argument("--survivors", action="store_true", help="try those again that survived")
    parser.add_argument("units", nargs="*", metavar="UNIT")
    arguments = parser.parse_args()

    chosen = arguments.units or sorted(units())
    if unknown := set(chosen) - units():
        sys.exit(f"mutate: no such unit, or one without a test: {', '.join(sorted(unknown))}")
    known, named = known_results(), harmless()
    todo, results = [], {}
    for unit in chosen:
        for mutant in chosen_of(unit, arguments.share):
            key = identity(mutant)
            results[key] = (unit, mutant)
            if key not in known or arguments.survivors and known[key] == "survived" \
                    and mutant.key() not in named:
                todo.append((unit, key, mutant))
    signal.signal(signal.SIGTERM, signal.default_int_handler)
    try_all(todo, known, arguments.seconds)
    everything = {each.key() for unit in units() for each in chosen_of(unit, 100)}
    for key in sorted(named - everything):
        print(f"tests/mutants.txt names what is no mutant now: {key}")
    return report(results, known, named)


def try_all(todo, known, seconds):
    if not todo:
        return
    tests = sorted({test for unit, _, _ in todo for test in tests_of(unit)})
    build(tests)
    library, ways = Library(tests), {}
    end = time.monotonic() + seconds if seconds else float("inf")
    try:
        with RESULTS.open("a") as log:
            for unit, key, mutant in todo:
                if time.monotonic() > end:
                    break
                for test in set(tests_of(unit)) - ways.keys():
                    library.restore()
                    ways[test] = Ways(test)
                if not library.make(mutant):
                    known[key] = "none"
                else:
                    known[key] = "caught" if is_caught(unit, ways) else "survived"
                if known[key] == "survived":
                    print(mutant.show(), flush=True)
                print(known[key], key, file=log, flush=True)
    except KeyboardInterrupt:
        pass
    finally:
        library.restore()


class Tally:
    """Of a unit, or of all."""

    def __init__(self):
        self.caught = self.harmless = self.survived = self.left = 0

    def add(self, state, is_named):
        if state == "caught":
            self.caught += 1
        elif state == "survived":
            self.harmless += is_named
            self.survived += not is_named
        elif state is None:
            self.left += 1

    def made(self):
        return self.caught + self.harmless + self.survived

    def share(self):
        matter = self.caught + self.survived
        return f"{100 * self.caught / matter:.1f} %" if matter else "-"

    def row(self, name):
        return f"{name:36} {self.made():6} {self.caught:7} {self.harmless:9} {self.survived:9} " \
               f"{self.share():>8}"


def report(results, known, named):
    tallies, total, survivors = {}, Tally(), []
    for key, (unit, mutant) in results.items():
        state, is_named = known.get(key), mutant.key() in named
        for tally in (tallies.setdefault(unit, Tally()), total):
            tally.add(state, is_named)
        if state == "survived" and not is_named:
            survivors.append(mutant)
    print(f"\n{'unit':36} {'made':>6} {'caught':>7} {'harmless':>9} {'survived':>9} {'caught':>8}")
    for unit, tally in tallies.items():
        print(tally.row(unit))
    print(total.row("all"))
    if total.left:
        print(f"{total.left} are left to try.")
    if survivors:
        print("\nSurvivors:")
    for mutant in survivors:
        print(mutant.show())
    return 1 if survivors else 0


if __name__ == "__main__":
    sys.exit(main())
