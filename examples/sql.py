#!/usr/bin/env python3
"""sql.py - tables for messages, from the document that 'tlvc describe' prints of a schema.

    tlvc describe acme/*.tlv | python3 sql.py | sqlite3 fans.db
    python3 sql.py /usr/share/tlvmsg/schema.json | sqlite3 messages.db

Each message is a table, and so is whatever arrays hold, whose rows say to which row of which table they belong. Numbers
are columns that take no others than fit, bytes are blobs, and enumerations have views of their names. Columns are called
like the paths in texts and faults: "led_control.color". Of a union all alternatives have columns, which are null but for
the one that is chosen.
"""
import json
import sys


def quoted(name):
    return '"' + name.replace('"', '""') + '"'


def text(words):
    return "'" + words.replace("'", "''") + "'"


class Tables:
    def __init__(self, document):
        self.types = {each["name"]: each for each in document["types"]}

    def number(self, name, type):
        """A column that takes what the type's values can be. SQLite has 64 bits with a sign, so of uint64 it takes half."""
        bits = 32 if type["kind"] == "enumeration" else 8 * (type["max_encoded"] - 4)
        signed = type.get("signed", False)
        least, most = (-(1 << bits - 1), (1 << bits - 1) - 1) if signed else (0, (1 << min(bits, 63)) - 1)
        return f"{quoted(name)} INTEGER CHECK ({quoted(name)} BETWEEN {least} AND {most})"

    def columns(self, type, path=""):
        """Of all that the record has in itself; arrays of anything but bytes have rows elsewhere."""
        if type["kind"] in ("scalar", "enumeration"):
            return [self.number(path or "value", type)]
        if type["kind"] in ("byte array", "dynamic byte array"):
            most = f" CHECK (length({quoted(path or 'value')}) <= {type['capacity']})" if "capacity" in type else ""
            return [f"{quoted(path or 'value')} BLOB{most}"]
        found = []
        for part in self.parts(type):
            found += self.columns(self.types[part["type"]], ".".join(filter(None, [path, part.get("path", part["name"])])))
        return found

    def parts(self, type):
        """Members and alternatives. A count lives in its array, a selector beside the alternatives of its union; some
        unions live in the record around them, which has their selector."""
        own_selector = type["kind"] == "union" and "enclosing" not in type
        held = [{"name": type["selector_name"], "type": type["selector"]}] if own_selector else []
        held += [part for part in type.get("members", []) if "shared_with_next" not in part["flags"]]
        return held + type.get("alternatives", [])

    def items(self, type, found):
        """What the arrays hold that the type has, directly or deeper within."""
        for part in [{"type": type["element"]}] if "element" in type else self.parts(type):
            inner = self.types[part["type"]]
            if "element" in type and "byte" not in type["kind"]:
                found[inner["name"]] = inner
            self.items(inner, found)
        return found

    def table(self, type, of_items):
        names = ['"row id" INTEGER PRIMARY KEY'] # which no member is called
        names += ['"owner table" TEXT', '"owner row" INTEGER', '"owner path" TEXT'] if of_items else []
        comment = f"-- {type['doc']}\n" if type["doc"] else ""
        inside = ",\n    ".join(names + self.columns(type))
        return f"{comment}CREATE TABLE {quoted(('items of ' if of_items else '') + type['name'])} (\n    {inside}\n);\n"

    def names(self, type):
        rows = " UNION ALL ".join(f"SELECT {each['value']} AS value, {text(each['name'])} AS name"
                                  for each in type["enumerators"])
        return f"CREATE VIEW {quoted(type['name'])} AS {rows};\n"

    def script(self):
        items = {}
        for type in self.types.values():
            if type["kind"] == "message":
                self.items(type, items)
                yield self.table(type, False)
            elif type.get("enumerators"):
                yield self.names(type)
        for type in items.values():
            yield self.table(type, True)


def main(path=None):
    document = json.load(open(path, encoding="utf-8") if path else sys.stdin)
    if document["format"] != 1:
        sys.exit(f"sql.py: a document of format {document['format']}, and only 1 is known here")
    print("BEGIN;\n" + "".join(Tables(document).script()) + "COMMIT;")


main(*sys.argv[1:])
