#!/usr/bin/env python3
"""Breaks the sources of a folder in one place at a time, and lists the places where no test notices.

Works on a copy of the tree in build/mutate, which stays for the next time. Comparisons shift or turn around,
`&&` and `||` change places, numbers grow by one, truth values and conditions are negated. All mutants are built
at once, `(mutant<17>() ? changed : as it is)`; the environment chooses one at run time, and only programs that
reach it are run. Not tried is what cannot be written like that: constant expressions, and what does not compile.
What runs ten times as long as it should counts as noticed.
"""
import argparse
import bisect
import collections
import concurrent.futures
import json
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
TREE, BUILD, NOTES, REFUSED = (WORK / name for name in ("tree", "build", "notes", "refused.json"))
BUILT, REACHED, MOST = 1, 2, 1 << 16  # as in mutants.h

CODEC_TESTS = [f"bin/{name}_test" for name in ("runtime", "structure", "message", "array", "dynamic_array", "union",
                                               "vectors", "paths", "inspect", "property", "fast_path")]
FOLDERS = {  # what is run to test a folder's sources, the likely killers first
    "runtime": CODEC_TESTS,
    "rules": CODEC_TESTS,
    "inspect": ["bin/inspect_test", "bin/property_test", "bin/typed_test", "bin/forms_test", "bin/tool_test"],
    "forms": ["bin/forms_test", "ctest -R ^cli_"],
    "cli": ["ctest -R ^cli_"],
    "tools": ["bin/tool_test", "ctest -R ^cli_"],
    "compiler": ["bin/compiler_tests", "bin/compiler_command_tests", "ctest -R random_schema.[12]$"],
}

TOKENS = re.compile(r"""
      (?P<comment> //[^\n]* | /\*.*?\*/ )
    | (?P<skipped> "(?:\\.|[^"\\\n])*" | '(?:\\.|[^'\\\n])*' | ^[ ]*\#(?:\\\n|[^\n])*
                 | \b(?:static_assert\(|concept\b).*?; | __attribute__\(\(.*?\)\)+ | \[\[.*?\]\] | \brequires\b[^;{]* )
    | (?P<operator> (?<=[ ])(?:==|!=|<=|>=|<|>|&&|\|\|)(?=\s) )
    | (?P<number> \b(?:0x[0-9A-Fa-f]+|[0-9]+)(?=[uUlL]*\b(?![.'])) )
    | (?P<truth> \b(?:true|false)\b )
    | (?P<condition> \b(?:if|if\ constexpr|while)\ \( )""", re.M | re.S | re.X)
SWAPPED = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "&&": "||", "||": "&&",
           "true": "false", "false": "true"}
# What operands lie between. Comparisons have blanks around them, the brackets of templates have none inside.
MARKS = re.compile(r"""
      (?P<open> [(\[{] | (?<=\w)<(?![\ =<]) )
    | (?P<close> [)\]}] | (?<=[\w)\]>*&])(?<!\ >)>(?!=) )
    | (?P<stop> [;,?] | (?<!:):(?!:) | (?<![=!<>])=(?!=) | (?:<<|>>)= | \b(?:return|else|case|throw|requires)\b )
    | (?P<logic> &&|\|\| )""", re.X)

# What stands from `begin` to `end` becomes `instead`, in the expression from `left` to `right`.
Mutant = collections.namedtuple("Mutant", "file begin end instead left right")


def edge(marks, at, logical, outwards, inwards):
    """Where the operands of an operator end on one side: the first of the marks there that does not belong to them."""
    depth = 0
    for kind, *place in marks:
        if depth == 0 and kind in (inwards, "stop") or depth == 0 and kind == "logic" and not logical:
            return place[at]
        depth += {outwards: 1, inwards: -1}.get(kind, 0)
    raise ValueError("no end of an operand")


def mutants_of(file):
    """The text of a source without comments, and its mutants."""
    def without(text, group):
        return TOKENS.sub(lambda match: re.sub(r"[^\n]", " ", match.group()) if match.lastgroup == group
                          else match.group(), text)
    text = without((ROOT / file).read_text(), "comment")
    marks = [(mark.lastgroup, mark.start(), mark.end()) for mark in MARKS.finditer(without(text, "skipped"))]
    mutants = []
    for token in TOKENS.finditer(text):
        begin, end = left, right = token.span()
        kind, word = token.lastgroup, token.group()
        instead = SWAPPED.get(word)
        behind = bisect.bisect_left(marks, end, key=lambda mark: mark[1])
        if kind == "operator":
            logical = word in ("&&", "||")
            left = edge(reversed(marks[:behind - logical]), 1, logical, "close", "open")
            right = edge(marks[behind:], 0, logical, "open", "close")
        elif kind == "number":
            right += len(re.compile("[uUlL]*").match(text, end).group())
            instead = str(int(word, 0) + 1)
        elif kind == "condition":
            right = edge([mark for mark in marks[behind:] if mark[0] in ("open", "close")], 0, True, "open", "close")
            begin, end = left, _ = max(end, text.rfind("; ", end, right) + 1), right  # without declarations
            inside = text[begin:end]
            if not re.search(r" (==|!=|<=|>=|<|>) ", inside) or re.search(r"&&|\|\|", inside):
                instead = f"!({inside})"  # a lone comparison is turned around anyway
        if instead:
            mutants.append(Mutant(file, begin, end, instead, left, right))
    return text, mutants


def instrumented(text, mutants):
    """The text in which each of the numbered mutants can be chosen."""
    def rendered(begin, end, inside):
        out = ""
        while inside:
            outer = min((mutant for _, mutant in inside), key=lambda each: (each.left, -each.right))
            left, right = outer.left, outer.right
            same = [each for each in inside if (each[1].left, each[1].right) == (left, right)]
            within = [each for each in inside if each not in same and each[1].right <= right]
            inside = [each for each in inside if each[1].left >= right]
            out += text[begin:left] + "("
            for number, mutant in same:
                changed = text[left:mutant.begin] + mutant.instead + text[mutant.end:right]
                out += f"mutant<{number}>() ? ({re.sub(chr(10), ' ', changed)}) : "
            condition = any(mutant.instead.startswith("!(") for _, mutant in same)
            out += f"{'static_cast<bool>' * condition}({rendered(left, right, within)}))"
            begin = right
        return out + text[begin:end]
    return rendered(0, len(text), mutants)


def described(mutant, text):
    line = text.count("\n", 0, mutant.begin) + 1
    was, instead = (" ".join(each.split()) for each in (text[mutant.begin:mutant.end], mutant.instead))
    return f"{mutant.file}:{line}: {was} -> {instead}    | {text.splitlines()[line - 1].strip()}"


def run(command, limit=None, **environment):
    """Whether the command succeeds, within the time if there is a limit."""
    with subprocess.Popen(command, cwd=BUILD, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                          start_new_session=True, env={**os.environ, **environment}) as process:
        try:
            return process.wait(limit) == 0
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, 9)
            return False


class Builder:
    def __init__(self, folder, jobs):
        self.tests, self.jobs = FOLDERS[folder], jobs
        files = sorted(str(path.relative_to(ROOT)) for path in (ROOT / folder).rglob("*") if path.suffix in (".h", ".cpp"))
        self.texts, self.mutants = {}, [None]
        for file in files:
            self.texts[file], mutants = mutants_of(file)
            self.mutants += mutants

    def build(self):
        """Leaves out what the compiler refuses, until it refuses nothing."""
        known = json.loads(REFUSED.read_text()) if REFUSED.exists() else {}
        refused = {file: set(known.get(text, [])) for file, text in self.texts.items()}
        targets = [] if any(test.startswith("ctest") for test in self.tests) else self.tests
        compiler = f"-DTLVC_EXECUTABLE={ROOT / 'build/release/bin/tlvc' if self.tests is CODEC_TESTS else ''}"
        while True:
            copy_tree({file: instrumented(text, [(number, mutant) for number, mutant in enumerate(self.mutants)
                                                 if mutant and mutant.file == file and refused[file].isdisjoint(
                                                     range(text.count("\n", 0, mutant.left) + 1,
                                                           text.count("\n", 0, mutant.right) + 2))])
                       for file, text in self.texts.items()})
            subprocess.run(["cmake", "-G", "Ninja", "-S", TREE, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Release",
                            "-DCMAKE_C_FLAGS_RELEASE=-O1", f"-DCMAKE_CXX_FLAGS=-w -include {TREE}/tests/mutate/mutants.h",
                            "-DCMAKE_CXX_FLAGS_RELEASE=-O1", "-DTLVMSG_BOTH_KINDS=ON", compiler, "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON",
                            "-DTLVMSG_UNITY=OFF",
                            "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"], check=True, stdout=subprocess.DEVNULL)
            ninja = subprocess.run(["ninja", "-C", BUILD, "-j", str(self.jobs), "-k", "20", *targets],
                                   text=True, capture_output=True)
            if ninja.returncode == 0:
                return
            named = {pattern: {file: set(map(int, re.findall(re.escape(f"/tree/{file}") + pattern, ninja.stdout)))
                               for file in refused} for pattern in (r":(\d+):\d+: (?:fatal )?error", r":(\d+):\d+")}
            new = next((lines for lines in named.values() if any(lines[file] - refused[file] for file in lines)), None)
            if new is None:
                sys.exit(ninja.stdout[-4000:] + "\nmutate: this fails whatever is left out")
            for file, lines in new.items():  # those of errors, or else where templates with errors are used
                refused[file] |= lines
            known.update((text, sorted(refused[file])) for file, text in self.texts.items())
            REFUSED.write_text(json.dumps(known))

    def look(self):
        """Sees that nothing fails without a mutant, how long that takes, and what each program reaches."""
        self.limits, self.notes = {}, {}
        for test in self.tests:
            NOTES.write_bytes(bytes(MOST))
            start = time.monotonic()
            if not run(self.command(test), MUTANT_NOTES=str(NOTES)):
                sys.exit(f"mutate: {test} fails without a mutant")
            self.limits[test] = 10 * (time.monotonic() - start) + 10
            self.notes[test] = NOTES.read_bytes()

    def command(self, test):
        if test.startswith("bin/"):
            return [BUILD / test, "--gtest_fail_fast", "--gtest_brief=1"]
        return test.split() + ["--stop-on-failure", "-j", str(self.jobs)]

    def is_built(self, number):
        return any(notes[number] & BUILT for notes in self.notes.values())

    def killer(self, number):
        """The first program that notices the mutant; or how it survives."""
        reaching = [test for test in self.tests if self.notes[test][number] & REACHED]
        return next((test for test in reaching if not run(self.command(test), self.limits[test], MUTANT=str(number))),
                    None if reaching else False)


def copy_tree(changed):
    """What git knows or would, as it lies there but for what is changed; what stays the same is not built anew."""
    names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT, text=True,
                           capture_output=True, check=True).stdout.split("\0")
    wanted = {name for name in names if (ROOT / name).is_file()}
    for there in [path for path in TREE.rglob("*") if path.is_file()]:
        if str(there.relative_to(TREE)) not in wanted:
            there.unlink()
    for name in wanted:
        content = changed[name].encode() if name in changed else (ROOT / name).read_bytes()
        if not (TREE / name).exists() or (TREE / name).read_bytes() != content:
            (TREE / name).parent.mkdir(parents=True, exist_ok=True)
            (TREE / name).write_bytes(content)
            shutil.copymode(ROOT / name, TREE / name)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", choices=sorted(FOLDERS))
    parser.add_argument("--sample", type=int, metavar="N", help="only so many mutants, drawn at random")
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="which sample; default 1")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), metavar="N", help="at a time")
    options = parser.parse_args()

    BUILD.mkdir(parents=True, exist_ok=True)
    builder = Builder(options.folder, options.jobs)
    builder.build()
    builder.look()
    there = [number for number in range(1, len(builder.mutants)) if builder.is_built(number)]
    chosen = there
    if options.sample and options.sample < len(there):
        chosen = sorted(random.Random(options.seed).sample(there, options.sample))
    tally = collections.Counter()
    alone = any(test.startswith("ctest") for test in builder.tests)  # whose scripts share directories
    with concurrent.futures.ThreadPoolExecutor(1 if alone else options.jobs) as pool:
        for number, killer in zip(chosen, pool.map(builder.killer, chosen)):
            mutant = builder.mutants[number]
            what = described(mutant, builder.texts[mutant.file])
            verdict = {None: "SURVIVES", False: "no test reaches"}.get(killer, killer)
            tally["noticed" if killer else "not"] += 1
            if not killer:
                print(what, flush=True)
            print(f"[{number}] {verdict:22}  {what}", file=sys.stderr)
    print(f"{options.folder}: {len(chosen)} of {len(there)} mutants, seed {options.seed}: {tally['noticed']} noticed, "
          f"{tally['not']} not; {len(builder.mutants) - 1 - len(there)} are constant or refused, and not tried")


if __name__ == "__main__":
    main()
