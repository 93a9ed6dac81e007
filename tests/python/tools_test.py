"""What stands around the messages: pytest, scapy, captures, stubs, the documents, the wheel."""
import os
import re
import shutil
import struct
import subprocess
import sys
from pathlib import Path

import pytest
import tlvmsg
from conftest import SOURCE
from tlvmsg import Fault, voice

PACKAGE = Path(tlvmsg.__file__).parent
LED = voice.analogbri_led_control_req_message

FAILING_TESTS = """
from tlvmsg import voice
def test_messages(tlvmsg_sample):
    assert tlvmsg_sample(voice.zel_led_control, "color=3", seed=1) == tlvmsg_sample("zel_led_control", "color=1", seed=1)
def test_bytes():
    a, b = (voice.analogbri_led_control_req_message(led_control={"color": color}).encode() for color in (3, 1))
    assert a == b
"""


def test_pytest_tells_differences_by_member_and_by_line(tmp_path):
    (tmp_path / "test_failing.py").write_text(FAILING_TESTS)
    done = subprocess.run([sys.executable, "-m", "pytest", "-p", "tlvmsg.pytest_plugin", "-p", "no:cacheprovider", tmp_path],
                          capture_output=True, text=True)
    assert re.search(r"two zel_led_control differ in\nE +color: 3 -> 1", done.stdout), done.stdout
    assert re.search(r"- +108 .*led_control.color: zel_led_color = 3\nE +\+ +108 .*led_control.color: zel_led_color = 1", done.stdout)
    assert "2 failed" in done.stdout


def test_scapy_has_messages_as_layers():
    packets = pytest.importorskip("scapy.packet")
    inet = pytest.importorskip("scapy.layers.inet")
    from tlvmsg.scapy import TLVMsg, layer

    request = voice.zel_led_control(color=3)
    packet = inet.IP(dst="10.0.0.2") / inet.UDP(sport=1, dport=4000) / TLVMsg(request) / packets.Raw(b"behind")
    assert bytes(packet)[28:] == request.encode() + b"behind" and bytes(TLVMsg(LED)) == LED().encode()
    Layer = layer(voice.zel_led_control)
    packets.bind_layers(inet.UDP, Layer, dport=4000)
    received = inet.IP(bytes(packet))
    assert received[Layer].message == request and received[packets.Raw].load == b"behind" and "color=3" in repr(received)
    received[Layer].message.color = 1
    assert received.copy()[Layer].message.color == 1 and Layer not in inet.IP(bytes(packet)[:-20])


def udp_frame(payload):
    udp = struct.pack(">4H", 4001, 4000, 8 + len(payload), 0) + payload
    ip = struct.pack(">BBHHHBBH4s4s", 0x45, 0, 20 + len(udp), 0, 0, 64, 17, 0, bytes([10, 0, 0, 1]), bytes([10, 0, 0, 2]))
    return bytes(12) + b"\x08\x00" + ip + udp


@pytest.mark.skipif("TLV" not in os.environ, reason="tlv is not built")
def test_captures_are_read_through_tlv(tmp_path, acme, environment, monkeypatch):
    monkeypatch.delenv("LD_PRELOAD", raising=False)
    report = acme.acme_fan_report_message.sample(seed=1)
    capture = struct.pack("<IHHIIII", 0xA1B2C3D4, 2, 4, 0, 0, 65535, 1)
    for frame in map(udp_frame, (report.encode(), b"nothing", LED(led_control={"color": 3}).encode())):
        capture += struct.pack("<4I", 5, 0, len(frame), len(frame)) + frame
    path = tmp_path / "some.pcap"
    path.write_bytes(capture)
    first, *others = tlvmsg.read_capture(path, schema=report._type.schema, tlv=os.environ["TLV"])
    assert first.message == report and first.number == 1 and first.facts["destination_port"] == 4000
    assert all(other.message is None and other.error["code"] for other in others)
    frames = tlvmsg.read_capture(path, type=LED, filter="udp port 4000", tlv=os.environ["TLV"])
    assert [frame.message and frame.message.led_control.color for frame in frames][2] == 3
    assert next(tlvmsg.read_capture(path, tlv=os.environ["TLV"])).number == 1  # who stops reading leaves nothing behind
    with pytest.raises(Fault):
        list(tlvmsg.read_capture(tmp_path / "none", tlv=os.environ["TLV"]))


TYPED = """
import tlvmsg
from tlvmsg import ethernet, voice
request = voice.analogbri_led_control_req_message(led_control={"slot": 2})
slot: int = voice.analogbri_led_control_req_message.decode(request.encode()).led_control.slot
counters: list[ethernet.zel_vlan_counters] = ethernet.zel_tib_vlan_stats_message.sample().vlan_stat_bundle.vlan_counters
"""
WRONG = """voice.analogbri_led_control_req_message(led_control={"slut": 2})
voice.zel_led_control(slot="2")
text: str = voice.zel_led_control().slot
voice.zel_led_control(slut=2)
"""


@pytest.mark.skipif(not shutil.which("mypy"), reason="no mypy")
def test_stubs_say_what_is_there(tmp_path, environment):
    program = tmp_path / "program.py"
    program.write_text(TYPED + WRONG)
    done = subprocess.run(["mypy", "--cache-dir", tmp_path / "cache", program], capture_output=True, text=True,
                          env={**environment, "MYPYPATH": str(PACKAGE.parent)})
    wrong = len(TYPED.splitlines())
    assert re.findall(r"^(.*\.pyi?):(\d+): error", done.stdout, re.M) == [
        (str(program), str(wrong + line + 1)) for line in range(len(WRONG.splitlines()))], done.stdout


def test_documents_run_as_they_stand():
    done = subprocess.run([sys.executable, "-m", "doctest", "-o", "ELLIPSIS", SOURCE / "docs/python.md"], capture_output=True,
                          text=True, cwd=SOURCE)
    assert done.returncode == 0, done.stdout
    [program] = re.findall(r"^```python\n(.*?)^```", (SOURCE / "README.md").read_text(encoding="utf-8"), re.M | re.S)
    said = subprocess.check_output([sys.executable, "-c", program], text=True)
    assert said.splitlines() == re.findall(r"print\(.*?\) +# (.*)", program)


WHEEL_USE = """
import pickle, tlvmsg
from tlvmsg import voice
schema = tlvmsg.Schema("acme/fan.tlv", text=open("fan.tlv").read())
message = schema.acme.acme_fan_report_message.sample(seed=1)
assert pickle.loads(pickle.dumps(message)) == message and voice.zel_led_control(color=3).encode()[-1] == 3
print(tlvmsg.__file__)
"""


@pytest.mark.skipif("LD_PRELOAD" in os.environ, reason="wheels are without sanitizers")
def test_the_wheel_works_by_itself(tmp_path):
    """Without a compiler, the source tree, or a path to libraries."""
    sys.path.insert(0, str(SOURCE / "python"))
    try:
        import backend
    finally:
        del sys.path[0]
    wheel = backend.build_wheel(tmp_path, {"package": str(PACKAGE)})
    assert re.fullmatch(r"tlvmsg-.*-cp311-abi3-manylinux_2_\d\d_.*\.whl", wheel)
    subprocess.run([sys.executable, "-m", "venv", tmp_path / "venv"], check=True)
    bare = {"PATH": str(tmp_path / "venv/bin"), "HOME": str(tmp_path)}
    subprocess.run([tmp_path / "venv/bin/pip", "install", "-q", "--no-index", tmp_path / wheel], check=True, env=bare)
    shutil.copy(SOURCE / "examples/family/acme/fan.tlv", tmp_path)
    said = subprocess.check_output([tmp_path / "venv/bin/python", "-c", WHEEL_USE], env=bare, cwd=tmp_path, text=True)
    assert said.startswith(str(tmp_path / "venv"))
    needed = subprocess.check_output(["objdump", "-p", PACKAGE / "_native.abi3.so"], text=True)
    assert set(re.findall(r"NEEDED +(\w+)", needed)) <= {"libc", "libm", "ld", "libgcc_s"}
