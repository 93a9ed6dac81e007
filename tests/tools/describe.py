#!/usr/bin/env python3
"""describe.py ROOT BUILD: what 'tlvc describe' prints of a schema is what docs/describe.schema.json says, what generated
headers have, and all that descriptors say of themselves."""
import glob
import json
import re
import subprocess
import sys

import jsonschema

root, build = sys.argv[1:]


def run(program, *words):
    return subprocess.run([f"{build}/bin/{program}", *words], check=True, capture_output=True, text=True).stdout


def closed(schema):
    """The same, which refuses keys that it does not list."""
    if isinstance(schema, list):
        return [closed(each) for each in schema]
    if not isinstance(schema, dict):
        return schema
    schema = {key: each if key == "if" else closed(each) for key, each in schema.items()}
    return {"additionalProperties": False} | schema if isinstance(schema.get("properties"), dict) else schema


def excess(part, whole, place):
    """Where the one has what the other has not."""
    if isinstance(part, dict) and isinstance(whole, dict):
        return [at for key in part for at in excess(part[key], whole.get(key), f"{place}.{key}")]
    if isinstance(part, list) and isinstance(whole, list) and len(part) == len(whole):
        return [at for i, pair in enumerate(zip(part, whole)) for at in excess(*pair, f"{place}[{i}]")]
    return [] if part == whole else [f"{place}: {part} and {whole}"]


def named_by(each):
    return [each.get("element"), each.get("selector")] + [
        part["type"] for part in each.get("members", []) + each.get("alternatives", [])]


text = run("tlvc", "describe", *glob.glob(f"{root}/schema/*/*.tlv"))
document = json.loads(text)
assert text == open(f"{build}/share/tlvmsg/schema.json").read(), "share/tlvmsg/schema.json is another"
own = [f"{root}/examples/family/acme/fan.tlv", "-I", f"{root}/schema"]
faults = []
for name, described, descriptors in (("library", document, run("tlv", "types", "--json")),
                                     ("acme", json.loads(run("tlvc", "describe", *own)),
                                      run("tlv", "types", "--json", "--schema", *own))):
    schema = closed(json.load(open(f"{build}/share/tlvmsg/describe.schema.json")))
    faults += [f"{name}: {each.json_path}: {each.message}"
               for each in jsonschema.Draft202012Validator(schema).iter_errors(described)]
    types = {each["name"]: each for each in described["types"]}
    listed = [type for family in described["families"] for part in family["sections"] for type in part["types"]]
    assert sorted(listed) == sorted(each["name"] for each in types.values() if each["family"])
    known = json.loads(descriptors)
    assert sorted(types) == [each["name"] for each in known]
    faults += [at for each in known for at in excess(each, types[each["name"]], each["name"])]
    users = {}
    for each in types.values():
        for used in named_by(each):
            users.setdefault(used, set()).add(each["name"])
    faults += [f"{name}.users" for name, each in types.items() if each["users"] != sorted(users.get(name, []))]

# What C calls them, and which macros there are of them.
headers = "".join(open(f"{build}/include/tlvmsg/{each['name']}.h").read() for each in document["families"])
runtime = open(f"{build}/include/tlvmsg/runtime.h").read()
macros = {each["macro"] for type in document["types"]
          for each in type.get("enumerators", []) + type.get("alternatives", []) if "macro" in each}
functions = set()
for each in document["types"]:
    macros |= set(each["c"]["macros"].values())
    functions |= set(each["c"]["functions"].values())
assert macros == set(re.findall(r"^#define (\w+) ", headers, re.M)), "headers have other macros"
assert functions <= set(re.findall(r"\w+(?=\()", headers + runtime)), "headers lack functions"
records = {each["c"]["record"] for each in document["types"] if each["family"]}
assert records == set(re.findall(r"^(?:} |typedef uint32_t )(\w+);", headers, re.M)), "headers have other records"

print("\n".join(faults[:20]))
sys.exit(bool(faults))
