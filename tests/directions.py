#!/usr/bin/env python3
"""Holds the directions between folders: directions.py ROOT says file:line of each include that has no row."""
import os
import re
import sys

# What each folder may include besides itself: folders, and single headers of folders whose others are private. Each
# folder of the compiler stands below those that it uses. 'base', 'cli' and 'runtime/operations.h' are shared by design;
# 'include' has the public headers, also those that the build generates.
MAY_INCLUDE = {
    "platform": "",
    "include": "",
    "base": "",
    "cli": "base",
    "runtime": "include platform",
    "rules": "runtime include",
    "inspect": "runtime/operations.h include platform base",

    "compiler/text": "base",
    "compiler/language": "compiler/text base",
    "compiler/model": "compiler/language/program.h compiler/text",
    "compiler/checks": "compiler/model compiler/language compiler/text",
    "compiler/build": "compiler/checks/checks.h compiler/model compiler/language compiler/text base",
    "compiler/emit": "compiler/model compiler/language/library.h base",
    "compiler/compare": "compiler/emit/emit.h compiler/build/compile.h compiler/model compiler/language compiler/text "
                        "base",
    "compiler/lsp": "compiler/build/compile.h compiler/build/loader.h compiler/checks/checks.h "
                    "compiler/model compiler/language base",
    "compiler/commands": "compiler/lsp/lsp.h compiler/compare/compile_any.h compiler/compare/report.h "
                         "compiler/compare/shared_files.h compiler/compare/exceptions.h compiler/emit/emit.h compiler/build/compile.h "
                         "compiler/checks/checks.h compiler/model/attributes.h compiler/language compiler/text cli "
                         "base",

    "forms/border": "include base",
    "forms/record": "include base",
    "forms/bytes": "include base",
    "forms/hex": "forms/border include base",
    "forms/types": "forms/json forms/bytes forms/record forms/border include base",
    "forms/json": "forms/record forms/border include base",
    "forms/print": "forms/json forms/bytes forms/record forms/border include base",
    "forms/sample": "forms/json/reader.h forms/record forms/border include base",
    "forms/guess": "forms/types forms/border include",

    "schema_library": "compiler/build/compile.h compiler/checks/checks.h compiler/model compiler/text include base",

    "python": "include",
    "tools": "include cli base",
    "examples": "include",
    "bench": "tests/support include",
    "fuzz": "tests/support tests/inspect include",
    "tests": "*",
}


def folder(path):
    parts = path.split("/")[:-1]
    return "/".join(parts[:2 if parts[0] in ("compiler", "forms") else 1])


def target(root, file, name):
    """The file, or what one is called that the build makes; nothing for headers from elsewhere."""
    for directory in (os.path.dirname(file), "", "include", "platform", "tests"):
        path = os.path.normpath(os.path.join(directory, name))
        if os.path.exists(os.path.join(root, path)):
            return path
    return "include/" + name if name.startswith("tlvmsg/") else None


def uses(root):
    for top in sorted(each for each in os.listdir(root) if each != "build" and not each.startswith(".")):
        for directory, _, names in os.walk(os.path.join(root, top)):
            for name in sorted(each for each in names if re.search(r"\.(c|h|cpp|hpp)$", each)):
                file = os.path.relpath(os.path.join(directory, name), root)
                for number, line in enumerate(open(os.path.join(root, file), encoding="utf-8"), 1):
                    include = re.match(r'\s*#\s*include\s*["<]([^">]+)', line)
                    used = include and target(root, file, include[1])
                    if used and folder(used) != folder(file):
                        yield f"{file}:{number}", folder(file), used


def main(root):
    order = list(MAY_INCLUDE)
    rows = {(user, row) for user in order for row in MAY_INCLUDE[user].split()}
    faults = [f"{user} stands above {row}" for user, row in rows if user.startswith("compiler/")
              and order.index(row if row in order else os.path.dirname(row)) > order.index(user)]
    needed = {("tests", "*")}
    for place, user, used in uses(root):
        fitting = {(user, row) for row in ("*", used, folder(used), os.path.dirname(used)) if (user, row) in rows}
        needed |= fitting
        faults += [] if fitting else [f"{place}: {user} may not include {used}"]
    faults += [f"{user} does not include {row}" for user, row in rows - needed]
    print("\n".join(sorted(faults)))
    return bool(faults)


sys.exit(main(sys.argv[1]))
