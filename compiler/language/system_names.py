#!/usr/bin/env python3
"""Prints the names that the C library's and Linux's headers on this machine have: system_names.py declared|macros

declared: tags, typedefs, functions, variables, enumerators and macros with parameters, with which a type's name collides.
macros: those without parameters, which replace members as well. One name a line, sorted. Names that begin with an
underscore are refused anyway and left out.

    ./system_names.py declared > system_declared.txt
    ./system_names.py macros > system_macros.txt
"""
import concurrent.futures
import os
import re
import subprocess
import sys

PACKAGES = ["libc6-dev", "linux-libc-dev"]
DIRECTORIES = re.compile(r"^/usr/include/(?:[a-z0-9_]+-linux-gnu/)?((?:linux|net|netinet|arpa|sys|rpc)/.*\.h|[^/]*\.h)$")
DECLARATION = re.compile(r"^(?:[|`]-|[| ] [|`]-(?=EnumConstantDecl))(\w+)Decl 0x\w+ (?:(?:parent|prev) 0x\w+ )*<.*?> (?:\S+ )(.*)$")
WORDS = {"implicit", "used", "referenced", "invalid", "struct", "union", "enum", "constexpr"}


def headers():
    files = subprocess.run(["dpkg", "-L", *PACKAGES], capture_output=True, text=True, check=True).stdout.split("\n")
    return sorted({found[1] for found in map(DIRECTORIES.match, files) if found})


def clang(header, *options):
    return subprocess.run(["clang", "-x", "c", "-std=gnu11", "-D_GNU_SOURCE", "-w", *options, "-"], text=True,
                          input=f"#include <sys/types.h>\n#include <{header}>\n", capture_output=True).stdout


def macros(header):
    return re.findall(r"^#define (\w+)(?!\()\b", clang(header, "-E", "-dM"), re.M)


def declared(header):
    yield from re.findall(r"^#define (\w+)\(", clang(header, "-E", "-dM"), re.M)
    for line in clang(header, "-fsyntax-only", "-Xclang", "-ast-dump").split("\n"):
        if found := DECLARATION.match(line):
            words = [word for word in found[2].split("'")[0].split() if word not in WORDS]
            if words and words[0] != "definition":
                yield words[0]


def main():
    of_header = {"declared": declared, "macros": macros}[sys.argv[1]]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        names = {name for found in pool.map(lambda each: list(of_header(each)), headers()) for name in found}
    print("\n".join(sorted(name for name in names if re.fullmatch(r"[A-Za-z]\w*", name))))


if __name__ == "__main__":
    main()
