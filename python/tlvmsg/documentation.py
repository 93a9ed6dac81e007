"""Docstrings: what a type is, and what it consists of on the wire, as `tlv show` prints it."""

import json
import textwrap

_HEADER = 4


def _wrapped(text, indent):
    return textwrap.fill(text, 110, initial_indent=" " * indent, subsequent_indent=" " * (indent + 4))


def _size(of):
    least, most = of["min_encoded"], of["max_encoded"]
    return f"{least}" if least == most else f"{least}..{most}"


class _Rows:
    """Offsets count what is there at least; behind the first part of varying size they are marked so."""

    def __init__(self, schema):
        self.schema, self.rows, self.at, self.fixed = schema, [f"{'offset':>8}  {'size':>11}  element"], 0, True

    def described(self, name):
        return json.loads(self.schema.type(name).describe())

    def row(self, of, what, doc=""):
        items = of.get("element", "")
        what += f", count and {'bytes' if 'byte' in of['kind'] else items}" if items else f", tag {of['tag']}"
        offset = f"{self.at}{'' if self.fixed else '+'}"
        first, *others = textwrap.wrap(what + (doc and ". " + doc), 110 - 23)
        self.rows += [f"{offset:>8}  {_size(of):>11}  {first}", *(" " * 27 + each for each in others)]

    def element(self, of, what, doc=""):
        if of["kind"] == "union":
            self.alternatives(of)
        else:
            self.row(of, what, doc or (of["doc"] if of["kind"] != "scalar" else ""))
        self.at += of["min_encoded"]
        self.fixed = self.fixed and of["min_encoded"] == of["max_encoded"]

    def alternatives(self, of):
        names = {each["value"]: each["name"] for each in reversed(self.described(of["selector"])["enumerators"])}
        for each in of["alternatives"]:
            values = " or ".join(names.get(value, str(value)) for value in each["values"])
            of_this = self.described(each["type"])
            self.row(of_this, f"  {each['name']}: {each['type']} when {of['selector_name']} is {values}", of_this["doc"])

    def of(self, of):
        if "members" not in of:
            self.element({**of, "doc": ""}, of["name"])
        elif of["kind"] == "structure":
            self.row(of, of["name"])
            self.at = _HEADER
        for member in of.get("members", []):
            self.element(self.described(member["type"]), f"  {member['path']}: {member['type']}", member["doc"])
        return self.rows


def text(type_):
    rows = _Rows(type_.schema)
    of = rows.described(type_.name)
    number = f", tag {of['tag']} (0x{of['tag']:04X})" if "tag" in of else ""
    if type_.key is not None:
        number += f", key {type_.key} (0x{type_.key:X})"
    lines = [f"{of['name']}: {of['kind']}{number}, {of['family']}"]
    lines += [of["doc"]] if of["doc"] else []
    lines += [_wrapped(f"In {of['family']}: {of['section']}", 0)] if of["section"] else []
    lines += [f"{_size(of)} bytes on the wire, fingerprint {of['fingerprint']}", ""]
    lines += [_wrapped(f"{each['name']} = {each['value']}{each['doc'] and '. ' + each['doc']}", 4) for each in of.get("enumerators", [])]
    return "\n".join(lines + ([""] if of.get("enumerators") else []) + rows.of(of))
