#!/usr/bin/env python3
"""sql.py SCRIPT DESCRIPTION TLV: the tables that the example makes of the library's messages are what SQLite takes, have a
column for each path that tlv prints of a message's own record, and refuse numbers that do not fit."""
import json
import re
import sqlite3
import subprocess
import sys

script, description, tlv = sys.argv[1:]


def printed(*words, **options):
    return subprocess.run(words, check=True, capture_output=True, **options).stdout


database = sqlite3.connect(":memory:")
database.executescript(printed("python3", script, description).decode())
types = {each["name"]: each for each in json.load(open(description))["types"]}
tables = {name for name, in database.execute("SELECT name FROM sqlite_master WHERE type = 'table'")}
assert {name for name, each in types.items() if each["kind"] == "message"} == {
    name for name in tables if not name.startswith("items of ")}

# Unions in the record around them and bytes, a union in its own record, and neither.
for name, column in (("svrm_ip_addr_msg_message", "address.addr_info.address_3.length"),
                     ("svrm_remote_addr_msg_message", "remote_address.address.address.ipv4"),
                     ("analogbri_led_control_req_message", "led_control.color")):
    columns = {row[1] for row in database.execute(f'PRAGMA table_info("{name}")')}
    sample = printed(tlv, "sample", "--kind", "max", name)
    text = printed(tlv, "decode", "--text", "-t", name, "-", input=sample).decode()
    paths = {path for path in re.findall(r"^(\S+) = ", text, re.M) if "[" not in path}
    assert column in paths and paths <= columns, (name, paths - columns)

led = 'INSERT INTO analogbri_led_control_req_message ("led_control.slot") VALUES (?)'
database.execute(led, [65535])
try:
    database.execute(led, [65536])
    sys.exit("a uint16 of 65536 is taken")
except sqlite3.IntegrityError:
    pass
