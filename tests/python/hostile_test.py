"""Nothing crashes the interpreter: whatever the bytes, the memory, the threads and the interpreters are."""
import array
import copy
import mmap
import os
import pickle
import shutil
import subprocess
import sys
import threading

import pytest
import tlvmsg
from conftest import SOURCE
from hypothesis import given, settings, strategies
from tlvmsg import Fault, common, ethernet, voice

TYPES = [tlvmsg.type(name) for name, family in tlvmsg.library.names() if family]
RECORDS = [of for of in TYPES if of.kind in ("structure", "message")]
VLANS = ethernet.zel_tib_vlan_stats_message


def outcome(function, *arguments):
    try:
        return function(*arguments)
    except Fault as fault:
        return fault.line


@given(of=strategies.sampled_from(RECORDS), seed=strategies.integers(0, 1 << 64 - 1), data=strategies.data())
@settings(max_examples=500)
def test_damaged_bytes_decode_or_are_refused(of, seed, data):
    damaged = bytearray(of.sample(seed=seed).encode())
    for at in data.draw(strategies.lists(strategies.integers(0, max(0, len(damaged) - 1)), max_size=4)):
        damaged[at:at + 1] = data.draw(strategies.binary(max_size=3))
    verified, decoded = outcome(of.verify, damaged), outcome(of.decode, damaged)
    assert (verified == decoded) if isinstance(verified, str) else isinstance(decoded, tlvmsg.Record)
    if isinstance(decoded, tlvmsg.Record):
        repr(decoded), decoded.to_dict(), decoded.to_json(), outcome(decoded.encode)
        assert of.from_dict(decoded.to_dict()) == decoded == of.from_json(decoded.to_json())
    tlvmsg.annotate(damaged, of), tlvmsg.guess(damaged), tlvmsg.divide(damaged), outcome(of.from_json, damaged)


plain = strategies.recursive(strategies.none() | strategies.integers() | strategies.text(max_size=4) | strategies.binary(max_size=4),
                             lambda inner: strategies.lists(inner, max_size=3)
                             | strategies.dictionaries(strategies.sampled_from(["count", "items", "hex", "session", "name", "type"]), inner))


@given(of=strategies.sampled_from(TYPES), value=plain)
@settings(max_examples=300)
def test_any_value_is_taken_or_refused(of, value):
    try:
        of.encode(value)
    except (Fault, TypeError, UnicodeEncodeError, ValueError):
        pass


def test_any_buffer_is_read_where_it_is():
    led = voice.zel_led_control(color=3)
    data = led.encode()
    mapped = mmap.mmap(-1, len(data))
    mapped[:] = data
    for buffer in (data, bytearray(data), memoryview(data), array.array("B", data), array.array("I", data), mapped):
        assert voice.zel_led_control.decode(buffer) == led
    growing = bytearray(data)
    voice.zel_led_control.decode(growing)
    growing.append(0)  # nothing holds it
    for wrong in (memoryview(data)[::2], "text", None):
        with pytest.raises((BufferError, TypeError)):
            voice.zel_led_control.decode(wrong)


def test_long_bytes_may_change_while_other_threads_run():
    vlans = VLANS.sample("vlan_stat_bundle.vlan_counters.count=64", kind="max")
    data = bytearray(vlans.encode() + bytes(1 << 20))
    stop = threading.Event()

    def change():
        at = 0
        while not stop.is_set():
            at = (at + 7) % 7000
            data[at] ^= 0xFF

    thread = threading.Thread(target=change)
    thread.start()
    try:
        for _ in range(300):
            message = outcome(VLANS.decode, data)
            assert isinstance(message, str) or message.to_dict()
    finally:
        stop.set()
        thread.join()


@pytest.mark.parametrize("attempt", range(8))  # as a race shows now and then
def test_threads_agree_on_what_a_type_is(attempt):
    schema = tlvmsg.Schema(SOURCE / "schema" / "server")
    names = [name for name, _ in schema.names()]
    found = [[] for _ in range(4)]
    threads = [threading.Thread(target=lambda into: into.extend(map(schema.type, names)), args=(into,)) for into in found]
    before = sys.getswitchinterval()
    sys.setswitchinterval(1e-6)
    try:
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
    finally:
        sys.setswitchinterval(before)
    assert len(found[0]) == len(names) and found[0] == found[1] == found[2] == found[3]


FAILING = """
import sys, tlvmsg.results, tlvmsg.streams, _testcapi
from tlvmsg import server, common
acme = tlvmsg.Schema(sys.argv[1]).acme
message = acme.acme_fan_report_message.sample(seed=3)
data, text, members = message.encode(), message.to_json(), message.to_dict()
T, address = acme.acme_fan_report_message, server.svrm_ipaddr()
native, files = tlvmsg._native, (b"a.tlv",)  # calls between Python's own functions forget to say that memory is out
uses = [lambda: T.decode(data), lambda: T.from_json(text), lambda: T.from_dict(members), message.encode, message.to_dict,
        message.to_json, lambda: message == T.decode(data), lambda: message.list.fans.append({}),
        lambda: address.choose(1), lambda: T.decode(data[:-1]), lambda: T(list={"fans": [{"tray": 256}]}), message.__reduce__,
        lambda: tlvmsg.diff(message, T()), lambda: tlvmsg.guess(data), lambda: T._type.schema.divide(data),
        lambda: tlvmsg.annotate(data), lambda: tlvmsg.read_hex("00 01"), lambda: T.sample(seed=1), message.__deepcopy__(None).size,
        lambda: tlvmsg.Frames("length:2@0").feed(data), lambda: tlvmsg.Frames("length:2@0").frame(message),
        lambda: native.load(native.Schema, files, "message m { x y  z a }", (), ""),
        lambda: native.load(native.Schema, files, "struct s = 40000 { uint8 a }", (), "").type("s").python(a=1)]
failed = 0
for use in uses:
    for start in range(int(sys.argv[2])):
        try:
            _testcapi.set_nomemory(start, start + 1)
            try:
                use()
            finally:
                _testcapi.remove_mem_hooks()
        except (MemoryError, tlvmsg.Fault, TypeError, AttributeError):
            failed += 1
assert T.decode(data).encode() == data and failed > 50
print("survived")
"""

LEAKING = """
import array, gc, sys, tlvmsg
from tlvmsg import server, voice
acme = tlvmsg.Schema(sys.argv[1]).acme
T, U = acme.acme_fan_report_message, server.svrm_ipaddr
message = T.sample(seed=3)
data, text, members = message.encode(), message.to_json(), message.to_dict()
def attempt(use):
    try: use()
    except (tlvmsg.Fault, TypeError, AttributeError): pass
def once():
    for use in (lambda: T.decode(data), lambda: T.from_json(text), lambda: T.from_dict(members), message.to_dict, message.encode,
                lambda: repr(message), lambda: T.decode(data[:-1]), lambda: T(list={"fans": [{"tray": 256}]}), lambda: T(x=1),
                lambda: T.verify(data), lambda: message == T(), message.__copy__, lambda: message.__deepcopy__(None),
                message.__reduce__, lambda: tlvmsg.diff(message, T()), lambda: tlvmsg.guess(data), lambda: tlvmsg.read_hex("00 01"),
                lambda: T._type.schema.divide(data), lambda: tlvmsg.annotate(data), lambda: T.sample("x=1"), lambda: T().x,
                lambda: U().choose(1), lambda: U(dhcp_info={}, addr_info={}), lambda: U(ip_type=1, addr_info={}), lambda: U(ip_type="x"),
                lambda: setattr(U(), "ip_type", 1), lambda: tlvmsg.Record.__setattr__(U(), 5, 5), lambda: setattr(U(), "dhcp_info", {}), lambda: U().dhcp_info, lambda: U().choose(7, 1),
                lambda: T(list={"fans": [{}] * 300}), lambda: T(list={"fans": 3}), message.list.fans.copy, lambda: dir(message),
                lambda: list(tlvmsg.read_frames(data, "length:1@0")), lambda: tlvmsg.Frames("length:2@0").frame(message),
                lambda: tlvmsg.Frames("length:2@0").resync(T), lambda: tlvmsg.Frames("x"),
                lambda: tlvmsg.Schema("a.tlv", text="message m { x y }"), lambda: voice.zel_led_control.__doc__,
                lambda: tlvmsg.Schema("b/a.tlv", text="struct s = 40000 { dynamic bytes a counted by uint8 }").b.s(a="x")):
        attempt(use)
    gc.collect()
counts = array.array("q", bytes(160))
for round in range(20):
    once()
    references = sum(map(sys.getrefcount, (T, T._type, U, U._type, T._type.schema, message, data, text, members, tlvmsg.Bytes,
                                           tlvmsg.Items, tlvmsg.Missing, tlvmsg.Fault, tlvmsg.TextFault, None, True)))
    counts[round] = sys.getallocatedblocks() + references
print(min(counts[15:]) - max(counts[3:6]))
"""


def run(python, script, *arguments):
    done = subprocess.run([*python, "-c", script, str(SOURCE / "examples/family"), *arguments], capture_output=True, text=True)
    assert done.returncode == 0, done.stderr[-2000:]
    return done.stdout


def test_failing_allocations_are_errors():
    pytest.importorskip("_testcapi")
    assert "survived" in run([sys.executable], FAILING, "120")


def test_nothing_is_kept():
    assert int(run([sys.executable], LEAKING)) < 5  # one reference in each round would be twelve


@pytest.mark.skipif(not shutil.which("python3-dbg") or "LD_PRELOAD" in os.environ, reason="no debug interpreter")
def test_a_debug_interpreter_has_no_objections():
    run(["python3-dbg", "-X", "dev"], LEAKING)
    assert "survived" in run(["python3-dbg"], FAILING, "40")


class Meddler:
    """A number that runs code where it is looked at."""

    def __init__(self, meddle):
        self.meddle = meddle

    def __index__(self):
        self.meddle()
        return 1


MEDDLED = """struct mine_item = 40001 { uint8 a }  enum mine_kind = 40002 { a = 0 b = 1 }
struct mine_list = 40003 { uint8 count dynamic array items of mine_item counted by uint8 as mine_these }
struct mine_text = 40004 { uint8 count dynamic bytes text counted by uint8 as mine_chars }
union mine_union by mine_kind kind { a: mine_list list b: mine_text text }
struct mine = 40000 { mine_kind kind mine_union which }"""


def test_code_that_runs_meanwhile_may_choose_and_clear(tmp_path):
    (tmp_path / "mine.tlv").write_text(MEDDLED)
    class_ = tlvmsg.Schema(tmp_path / "mine.tlv").type("mine").python
    uses = (class_.encode, class_.size, class_.to_json, class_.to_dict, copy.deepcopy, pickle.dumps, repr, lambda m: m == class_())
    for use in uses:
        message = class_(which={"list": {"items": [{}] * 3}})

        def meddle():
            message.which.list.items.clear()
            message.which.choose("text", {"text": 200 * "\xff"})

        list.__setitem__(message.which.list.items, 1, {"a": Meddler(meddle)})
        outcome(use, message)
    with pytest.raises(Fault, match="not-chosen"):
        message.which.list = {"items": [{"a": Meddler(lambda: message.which.choose("text"))}]}
    missing = {"items": None}
    missing["count"] = type("Vanishing", (Meddler,), {"__index__": lambda self: missing.clear() or 10**9})(None)
    with pytest.raises(Fault, match="Vanishing"):
        tlvmsg.type("vrf_name_str_array").from_dict(missing)


def test_each_interpreter_has_its_own():
    interpreters = pytest.importorskip("_xxsubinterpreters")
    script = f"import sys; sys.path[:] = {sys.path!r}\nfrom tlvmsg import voice\nassert voice.zel_led_control(color=3).encode()[-1] == 3"
    for _ in range(3):
        interpreter = interpreters.create(isolated=False)  # which shares the lock
        interpreters.run_string(interpreter, script)
        interpreters.destroy(interpreter)
    assert common.ifid().size() == 44
