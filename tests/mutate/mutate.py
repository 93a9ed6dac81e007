#!/usr/bin/env python3
"""Breaks the sources of a folder in one place at a time, and lists the places where no test notices.

Works on a copy of the tree in build/mutate, which stays for the next time. Comparisons shift or turn around,
`&&` and `||` change places, numbers grow by one, truth values and conditions are negated. What does not compile,
or to the same program, is not counted; what runs ten times as long as it should counts as noticed.
"""
import argparse
import collections
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORK = ROOT / "build/mutate"
TREE, BUILD = WORK / "tree", WORK / "build"

CODEC_TESTS = [f"bin/{name}_test" for name in ("runtime", "structure", "message", "array", "dynamic_array", "union",
                                               "vectors", "inspect", "property", "paths", "fast_path")]
OWN_CODECS = ("bin/paths_test", "bin/fast_path_test")  # which are built with rules of their own
FOLDERS = {  # what a folder's sources make, and what is run to test it, the likely killers first
    "runtime": (["lib/libtlvmsg.so", "lib/libtlvmsg_inspect.so"], CODEC_TESTS),
    "rules": (["lib/libtlvmsg.so", "lib/libtlvmsg_inspect.so"], CODEC_TESTS),
    "inspect": (["lib/libtlvmsg_inspect.so"], ["bin/inspect_test", "bin/property_test", "bin/typed_test", "bin/forms_test",
                                               "bin/tool_test"]),
    "forms": (["lib/libtlvmsg_forms.so"], ["bin/forms_test", "ctest -R ^cli_"]),
    "cli": (["bin/tlv", "bin/tlvc"], ["ctest -R ^cli_"]),
    "tools": (["bin/tlv"], ["bin/tool_test", "ctest -R ^cli_"]),
    "compiler": (["bin/tlvc"], ["bin/compiler_tests", "bin/compiler_command_tests", "ctest -R random_schema.[12]$"]),
}
# Rules are compiled in every family, by two libraries. Most mutants are noticed when only these objects, quick to
# compile, have them.
OBJECTS = {"lib/libtlvmsg.so": "CMakeFiles/tlvmsg_objects.dir",
           "lib/libtlvmsg_inspect.so": "inspect/CMakeFiles/tlvmsg_bounded_objects.dir"}
QUICK = re.compile(r"/(runtime/\w+|(common|qos|server|switch|voice)_(codecs|bounded))\.cpp\.o$")

TOKENS = re.compile(r"""
      (?P<skipped> //[^\n]* | /\*.*?\*/ | "(?:\\.|[^"\\\n])*" | '(?:\\.|[^'\\\n])*' | static_assert\(.*?\);
                 | ^[ ]*\#(?:\\\n|[^\n])* )
    | (?P<operator> (?<=[ ])(?:==|!=|<=|>=|<|>|&&|\|\|)(?=\s) )
    | (?P<number> \b(?:0x[0-9A-Fa-f]+|[0-9]+)(?=[uUlL]*\b) )
    | (?P<truth> \b(?:true|false)\b )
    | (?P<condition> \b(?:if|if\ constexpr|while)\ \( )""", re.M | re.S | re.X)
SWAPPED = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "&&": "||", "||": "&&",
           "true": "false", "false": "true"}

Mutant = collections.namedtuple("Mutant", "file begin end instead")


def condition(text, begin):
    """Where the condition whose parenthesis opens before `begin` lies, without declarations before it."""
    depth = 1
    for at in range(begin, len(text)):
        depth += {"(": 1, ")": -1}.get(text[at], 0)
        if text[at] == ";" and depth == 1:
            begin = at + 2
        if depth == 0:
            return begin, at


def mutants_of(file):
    text = (TREE / file).read_text()
    for token in TOKENS.finditer(text):
        begin, end = token.span()
        kind, word = token.lastgroup, token.group()
        if kind in ("operator", "truth"):
            yield Mutant(file, begin, end, SWAPPED[word])
        elif kind == "number":
            yield Mutant(file, begin, end, str(int(word, 0) + 1))
        elif kind == "condition":
            begin, end = condition(text, end)
            inside = text[begin:end]
            if not re.search(r" (==|!=|<=|>=|<|>) ", inside) or re.search(r"&&|\|\|", inside):
                yield Mutant(file, begin, end, f"!({inside})")  # a lone comparison is turned around anyway


def described(mutant, text):
    line = text.count("\n", 0, mutant.begin) + 1
    was = " ".join(text[mutant.begin:mutant.end].split())
    context = text.splitlines()[line - 1].strip()
    return f"{mutant.file}:{line}: {was} -> {' '.join(mutant.instead.split())}    | {context}"


def run(command, limit=None):
    """Whether the command succeeds, within the time if there is a limit."""
    with subprocess.Popen(command, shell=isinstance(command, str), cwd=BUILD, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, start_new_session=True) as process:
        try:
            return process.wait(limit) == 0
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, 9)
            return False


class Builder:
    def __init__(self, folder, jobs):
        self.products, self.tests = FOLDERS[folder]
        self.jobs = jobs
        self.of_codecs = folder in ("rules", "runtime")
        self.quick_objects = []
        self.quick_links = []

    def base(self):
        """Builds what there is and sees that nothing fails without a mutant."""
        copy_tree()
        BUILD.mkdir(parents=True, exist_ok=True)
        run(["cmake", "-G", "Ninja", "-S", TREE, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Release",
             "-DCMAKE_C_FLAGS_RELEASE=-O1", "-DCMAKE_CXX_FLAGS_RELEASE=-O1",
             "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"])
        if not self.ninja(self.products):
            sys.exit(f"mutate: 'ninja -C {BUILD}' fails without a mutant")
        self.sound = self.made()
        self.limits = {}
        for test in self.tests:
            start = time.monotonic() if self.build(test) else None
            if start is None or not run(self.command(test)):
                sys.exit(f"mutate: {test} fails without a mutant")
            self.limits[test] = 10 * (time.monotonic() - start) + 20
        if self.of_codecs:
            self.copy_objects(BUILD, WORK / "objects")
            for library in self.products:
                self.prepare_quick(library)

    def made(self):
        return [(BUILD / product).read_bytes() for product in self.products]

    @staticmethod
    def copy_objects(origin, target):
        for directory in OBJECTS.values():
            shutil.copytree(origin / directory, target / directory, dirs_exist_ok=True)

    def prepare_quick(self, library):
        commands = subprocess.run(["ninja", "-t", "commands", library], cwd=BUILD, text=True, capture_output=True,
                                  check=True).stdout.splitlines()
        link = next(line for line in commands if " -shared " in line and f"/{pathlib.Path(library).name}." in line)
        quick = [word for word in link.split() if word.startswith(OBJECTS[library]) and QUICK.search(word)]
        for each in quick:  # what several objects define is taken from the first
            link = link.replace(" " + each, "")
        self.quick_objects += quick
        self.quick_links.append(re.sub(r"(-o \S+)", r"\1 " + " ".join(quick), link, count=1))

    def ninja(self, targets):
        return run(["ninja", "-j", str(self.jobs), *targets])

    def build(self, test):
        return self.ninja([test] if test.startswith("bin/") else [])

    def command(self, test):
        if test.startswith("bin/"):
            return [BUILD / test, "--gtest_fail_fast", "--gtest_brief=1"]
        return test.split() + ["--stop-on-failure", "-j", str(self.jobs)]

    def passes(self, test):
        return run(self.command(test), self.limits[test])

    def noticed(self):
        """Whether any test fails; None when there is no mutant: it does not compile, or to nothing else."""
        if self.of_codecs:
            if not self.ninja(self.quick_objects):
                return None
            others = [test for test in self.tests if test not in OWN_CODECS]
            if not all(map(run, self.quick_links)) or not all(map(self.passes, others)):
                return True
        if not self.ninja(self.products):
            return None
        noticed = None
        if self.made() != self.sound:
            noticed = not all(self.build(test) and self.passes(test) for test in self.tests)
        if self.of_codecs:
            self.copy_objects(WORK / "objects", BUILD)
        return noticed


def copy_tree():
    """What git knows or would, as it lies there; unchanged files keep their time, so that little is built anew."""
    names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT, text=True,
                           capture_output=True, check=True).stdout.split("\0")
    wanted = {name for name in names if (ROOT / name).is_file()}
    for there in [path for path in TREE.rglob("*") if path.is_file()]:
        if str(there.relative_to(TREE)) not in wanted:
            there.unlink()
    for name in wanted:
        if not (TREE / name).exists() or (TREE / name).read_bytes() != (ROOT / name).read_bytes():
            (TREE / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(ROOT / name, TREE / name)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", choices=sorted(FOLDERS))
    parser.add_argument("--sample", type=int, metavar="N", help="only so many mutants, drawn at random")
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="which sample; default 1")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), metavar="N", help="for compiling")
    options = parser.parse_args()

    builder = Builder(options.folder, options.jobs)
    builder.base()
    files = sorted(str(path.relative_to(TREE)) for path in (TREE / options.folder).rglob("*")
                   if path.suffix in (".h", ".cpp"))
    mutants = [mutant for file in files for mutant in mutants_of(file)]
    chosen = mutants
    if options.sample and options.sample < len(mutants):
        chosen = sorted(random.Random(options.seed).sample(mutants, options.sample))
    tally = collections.Counter()
    for number, mutant in enumerate(chosen, 1):
        path = TREE / mutant.file
        text = path.read_text()
        what = described(mutant, text)
        path.write_text(text[:mutant.begin] + mutant.instead + text[mutant.end:])
        try:
            noticed = builder.noticed()
        finally:
            path.write_text(text)
        tally[noticed] += 1
        if noticed is False:
            print(what, flush=True)
        verdict = {None: "no mutant", True: "noticed", False: "SURVIVES"}[noticed]
        print(f"[{number}/{len(chosen)}] {verdict:9}  {what}", file=sys.stderr)
    print(f"{options.folder}: {len(chosen)} of {len(mutants)} mutants, seed {options.seed}: {tally[True]} noticed, "
          f"{tally[False]} not, {tally[None]} are none")


if __name__ == "__main__":
    main()
