#!/usr/bin/env python3
"""system_headers.py INCLUDE_DIRECTORY C_COMPILER C++_COMPILER

Every record compiles in one program with the headers of the C library and of Linux, whichever come first. Some of these
do not go together, or not alone: what fails without ours is tried in a second program, or left out. So is one that has
the macro bytes(), which tlvmsg.hpp has as a function.
"""
import os
import re
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
sys.path.append(os.path.join(os.path.dirname(__file__), "../../compiler/language"))
from system_names import headers

include, *compilers = sys.argv[1:]


def faults(compiler, options, lines):
    """What the compiler says, and the numbers of the lines that lead to an error."""
    with tempfile.NamedTemporaryFile("w", suffix=".program", dir=work) as program:
        program.write("".join(f"#include <{line}>\n" for line in lines))
        program.flush()
        said = subprocess.run([compiler, *options, "-D_GNU_SOURCE", "-w", "-I", include, "-fsyntax-only", program.name],
                              text=True, capture_output=True).stderr
        guilty, last = set(), None
        for line in said.split("\n"):
            if found := re.search(re.escape(program.name) + r":(\d+)", line):
                last = int(found[1]) - 1
            if " error: " in line:
                guilty.add(last)
        return said, guilty


def programs(compiler, options):
    """Two of those headers that go together: <linux/ip.h> and <netinet/ip.h> do not."""
    left = sorted(set(headers()) - {"linux/netfilter/xt_sctp.h"}, key=lambda header: (header.startswith("linux/"), header))
    for _ in range(2):
        together, others = left, []
        while guilty := faults(compiler, options, ["sys/types.h", *together])[1]:
            others += [together[line - 1] for line in sorted(guilty)]
            together = [header for header in together if header not in others]
        yield together
        left = others


def main():
    tried, failed = [], 0
    for compiler, options, ours in ((compilers[0], ["-x", "c", "-std=gnu11"], "tlvmsg/bounded/all.h"),
                                    (compilers[1], ["-x", "c++", "-std=gnu++20"], "tlvmsg/all.hpp")):
        for theirs in programs(compiler, options):
            tried += theirs
            for lines in ([ours, *theirs], ["sys/types.h", *theirs, ours]):
                said = faults(compiler, options, lines)[0]
                failed += said != ""
                print(said, end="")
    print(f"{len(tried)} headers tried, {failed} programs failed")
    return tried.count("netinet/ip.h") != len(compilers) or failed > 0


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as work:
        sys.exit(main())
