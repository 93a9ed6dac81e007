"""Docstrings: what a type is, and what its members are."""

from __future__ import annotations

import json
import textwrap


def _wrapped(text):
    return textwrap.fill(text, 110, initial_indent="    ", subsequent_indent="        ")


def _size(of):
    least, most = of["min_encoded"], of["max_encoded"]
    return f"{least} bytes" if least == most else f"{least}..{most} bytes"


def _described(schema, name):
    return json.loads(schema.describe(name))


def _value(schema, name, type_name, doc="", note=""):
    of = _described(schema, type_name)
    doc = doc or (of["doc"] if of["kind"] != "scalar" else "")
    return _wrapped(f"{name}: {type_name}{note}, {_size(of)}{doc and '. ' + doc}")


def _alternatives(schema, of):
    names = {each["value"]: each["name"] for each in reversed(_described(schema, of["selector"])["enumerators"])}
    for each in of["alternatives"]:
        values = " or ".join(names.get(value, str(value)) for value in each["values"])
        yield _value(schema, each["name"], each["type"], note=f" when {of['selector_name']} is {values}")


def _members(schema, of):
    for member in of.get("members", []):
        if not member["path"]:  # a union whose alternatives are the structure's own
            yield from _alternatives(schema, _described(schema, member["type"]))
        elif "shared_with_next" not in member["flags"]:
            yield _value(schema, member["path"], member["type"], member["doc"])
    if "alternatives" in of:
        yield _value(schema, of["selector_name"], of["selector"])
        yield from _alternatives(schema, of)
    for value in of.get("enumerators", []):
        yield _wrapped(f"{value['name']} = {value['value']}{value['doc'] and '. ' + value['doc']}")


def text(type_):
    of = _described(type_.schema, type_.name)
    number = f", tag {of['tag']} (0x{of['tag']:04X})" if "tag" in of else ""
    if type_.key is not None:
        number += f", key {type_.key}"
    lines = [f"{of['name']}: {of['kind']}{number}, {of['family']}"]
    lines += [of["doc"]] if of["doc"] else []
    lines += [textwrap.fill(f"In {of['family']}: {of['section']}", 110)] if of["section"] else []
    lines += [f"{_size(of)} on the wire, fingerprint {of['fingerprint']}", ""]
    return "\n".join(lines + list(_members(type_.schema, of)))
