#!/usr/bin/env python3
"""Writes stubs of all families: stubs.py SCHEMA.json DIRECTORY."""
import json
import keyword
import os
import sys

HEAD = '''"""The {family} family."""
from typing import Literal, Sequence, TypedDict

from tlvmsg import Bytes, Items, Missing, Record
from tlvmsg._native import Enumeration, Text
'''


class Stubs:
    def __init__(self, types):
        self.types = {each["name"]: each for each in types}

    def named(self, name, suffix=""):
        """A type of its own in Python."""
        return f"_{self.types[name]['family']}.{name}{suffix}" # as members may have the names of types

    def read(self, name):
        """What an attribute gives."""
        of = self.types[name]
        if of["kind"] == "scalar":
            return "int"
        if of["kind"] == "enumeration":
            return self.named(name) + " | int" if of["enumerators"] else "int"
        if "element" not in of:
            return self.named(name)
        return f"Items[{self.read(of['element'])}]" if "byte" not in of["kind"] else "Bytes" # a Missing is a rare exception

    def given(self, name):
        """What constructors and dictionaries take."""
        of = self.types[name]
        if of["kind"] == "enumeration" and of["enumerators"]:
            return f"int | {self.named(name, '_name')}"
        if of["kind"] in ("scalar", "enumeration"):
            return "int"
        if "element" not in of:
            return f"{self.named(name)} | {self.named(name, '_members')}"
        missing = " | Missing" if "dynamic" in of["kind"] else ""
        items = "Text" if "byte" in of["kind"] else f"Sequence[{self.given(of['element'])}]"
        return items + missing

    def fields(self, of):
        for member in of.get("members", []):
            if not member["path"]:
                yield from self.alternatives(self.types[member["type"]])
            elif "shared_with_next" not in member["flags"]:
                yield member["path"], member["type"]
        if "alternatives" in of:
            yield of["selector_name"], of["selector"]
            yield from self.alternatives(of)

    def alternatives(self, of):
        return ((each["name"], each["type"]) for each in of["alternatives"] if each["values"])

    def record(self, of):
        name = of["name"]
        fields = [field for field in self.fields(of) if not keyword.iskeyword(field[0])]
        yield f"class {name}_members(TypedDict, total=False):"
        yield from (f"    {field}: {self.given(type_)}" for field, type_ in fields)
        yield from [] if fields else ["    pass"]
        yield f"class {name}(Record):"
        yield from (f"    {field}: {self.read(type_)}" for field, type_ in fields)
        parameters = ["self"] + ["*"] * bool(fields) + [f"{field}: {self.given(type_)} = ..." for field, type_ in fields]
        yield f"    def __init__({', '.join(parameters)}) -> None: ..."

    def enumeration(self, of):
        names = [each["name"] for each in of["enumerators"]]
        yield f"{of['name']}_name = Literal[{', '.join(map(repr, names))}]"
        yield f"class {of['name']}(Enumeration):"
        yield from (f"    {each['name']} = {each['value']}" for each in of["enumerators"])

    def family(self, family):
        lines = []
        for of in self.types.values():
            if of["family"] == family and ("members" in of or "alternatives" in of):
                lines += self.record(of)
            elif of["family"] == family and of["kind"] == "enumeration" and of["enumerators"]:
                lines += self.enumeration(of)
        others = {of["family"] for of in self.types.values() if of["family"]}
        text = "\n".join(lines)
        imports = "".join(f"from tlvmsg import {each} as _{each}\n" for each in sorted(others) if f"_{each}." in text)
        return HEAD.format(family=family) + imports + "\n" + text + "\n"


def main(schema, directory):
    with open(schema, encoding="utf-8") as file:
        types = json.load(file)["types"]
    stubs = Stubs(types)
    for family in sorted({of["family"] for of in types if of["family"]}):
        with open(os.path.join(directory, family + ".pyi"), "w", encoding="utf-8") as file:
            file.write(stubs.family(family))


if __name__ == "__main__":
    main(*sys.argv[1:])
