"""Messages as objects."""
import copy
import pickle
import socket
import subprocess
import sys

import pytest
import tlvmsg
from conftest import SOURCE
from tlvmsg import Fault, TextFault, common, ethernet, server, voice

LED = voice.analogbri_led_control_req_message
VLANS = "vlan_stat_bundle.vlan_counters.count=2"


def classes(schema):
    for name, _ in schema.names():
        of = schema.type(name)
        if of.kind in ("structure", "message"):
            yield of.python


@pytest.mark.parametrize("schema", [tlvmsg.library, tlvmsg.Schema(SOURCE / "schema"), tlvmsg.Schema(SOURCE / "examples/family")],
                         ids=["library", "the same, loaded", "a family"])
def test_every_type_makes_every_round_trip(schema):
    count = 0
    for class_ in classes(schema):
        for kind in ("random", "min", "max", "boundary"):
            message = class_.sample(kind=kind, seed=count)
            data = message.encode()
            assert len(data) == message.size()
            copies = [class_.decode(data, strict=True, limit=1 << 30), class_.from_dict(message.to_dict()),
                      class_.from_json(message.to_json()), class_.from_json(message.to_json(indent=2).encode()),
                      copy.deepcopy(message)]
            assert all(each == message and each.encode() == data for each in copies), class_
            assert pickle.loads(pickle.dumps(message)).encode() == data  # of the first schema that has it
        assert class_._type.name in class_.__doc__ and class_().size() >= 0
        count += 1
    assert count > 5


# What is refused, what says so, and the words that lead to it.
REFUSED = [
    (lambda: LED(led_control={"slot": 65536}), Fault, "req_message.led_control.slot: found 65536, expected a whole number from 0"),
    (lambda: LED(led_control={"slot": -1}), Fault, "led_control.slot: found -1"),
    (lambda: LED(led_control={"slot": 1 << 80}), Fault, "to 65535"),
    (lambda: LED(led_control={"slot": "1"}), TypeError, "led_control.slot: found str, expected int"),
    (lambda: LED(led_control={"slot": 1.0}), TypeError, "found float"),
    (lambda: LED(led_control={"colour": 3}), Fault, "found 'colour', expected a member: ['slot', 'port', 'color']"),
    (lambda: LED(led_control=common.ifid()), TypeError, "found ifid, expected zel_led_control"),
    (lambda: LED({}), TypeError, "members have names"),
    (lambda: setattr(LED(), "led", 1), AttributeError, "no member 'led'"),
    (lambda: delattr(LED(), "led_control"), AttributeError, "cannot do without"),
    (lambda: LED().led, AttributeError, "led"),
    (lambda: {LED()}, TypeError, "unhashable"),
    (lambda: server.svrm_ipaddr(ip_type="hdcp"), Fault, "found 'hdcp', expected a name of svrm_ip_type"),
    (lambda: server.svrm_ipaddr(ip_type="dhcp").addr_info, AttributeError, "not chosen: ip_type is svrm_ip_type.dhcp"),
    (lambda: server.svrm_ipaddr(ip_type=1, addr_info={}), Fault, "expected what chooses addr_info"),
    (lambda: server.svrm_ipaddr(dhcp_info={}, addr_info={}), Fault, "beside it"),
    (lambda: setattr(server.svrm_ipaddr(), "ip_type", "dhcp"), Fault, "choose() changes both"),
    (lambda: setattr(server.svrm_ipaddr(), "dhcp_info", {}), Fault, "choose() changes both"),
    (lambda: server.svrm_ipaddr().choose(7, {}), Fault, "what chooses an alternative"),
    (lambda: LED().choose(1), TypeError, "no alternatives"),
    (lambda: common.if_name(name="x" * 256), Fault, "if_name.name: found 256, expected at most 255 bytes"),
    (lambda: common.if_name(name=[1]), TypeError, "expected bytes or str"),
    (lambda: common.if_name(name="\ud800"), Fault, "if_name.name: found '\\ud800', expected what UTF-8 has bytes for"),
    (lambda: common.if_name(name={"hex": "0g"}), Fault, "expected digits of hex"),
    (lambda: tlvmsg.type("zel_led_control\0"), Fault, "unknown-name"),
    (lambda: LED.sample(seed=-1), OverflowError, "negative"),
    (lambda: tlvmsg.type_of(type("Meta", (type,), {"_type": property(lambda self: object())})("X", (), {})), TypeError, "no class of"),
    (lambda: common.if_name(name=tlvmsg.Missing(256)), Fault, "found Missing(256)"),
    (lambda: common.if_name(name=tlvmsg.Missing(2)).encode(), Fault, "items-missing"),
    (lambda: LED.from_json('{"led_control": {"colour": 3}}'), TextFault, "did you mean 'color'? in line 1, column 18"),
    (lambda: LED.sample("led=1"), TextFault, "no member"),
    (lambda: LED.decode(LED().encode()[:-1]), Fault, "needs 28 bytes, 27 are left at byte 92"),
    (lambda: LED.decode(LED().encode() + b"x", strict=True), Fault, "trailing-bytes"),
    (lambda: LED.decode(b"", strickt=True), TypeError, "strickt"),
    (lambda: tlvmsg.decode("led", b""), Fault, "name of a type"),
    (lambda: tlvmsg.diff(LED(), common.ifid()), TypeError, "expected analogbri"),
    (lambda: tlvmsg.read_hex("0G"), TextFault, "error[syntax]"),
    (lambda: tlvmsg.Schema("a.tlv", text="message m { nothing x }"), TextFault, "a.tlv:1:13: type 'nothing' is not defined"),
    (lambda: voice.nothing, AttributeError, "no type 'nothing'"),
]


@pytest.mark.parametrize("refused, exception, words", REFUSED, ids=[str(each[2]) for each in REFUSED])
def test_what_is_refused_says_where_and_why(refused, exception, words):
    with pytest.raises(exception) as caught:
        refused()
    assert words in str(caught.value)


def test_faults_have_parts():
    with pytest.raises(Fault) as caught:
        LED.decode(LED().encode()[:-1])
    fault = pickle.loads(pickle.dumps(caught.value))
    assert (fault.code, fault.offset, fault.found, fault.allowed) == ("truncated", 92, 27, 28)
    assert fault.path == "analogbri_led_control_req_message.led_control" and fault.line == str(fault)
    with pytest.raises(TextFault) as caught:
        LED.from_json("{\n x}")
    assert (caught.value.lineno, caught.value.colno) == (2, 2)


def test_a_union_has_what_is_chosen():
    address = server.svrm_ipaddr(dhcp_info={"dhcp": 1})
    assert address.ip_type is server.svrm_ip_type.dhcp and "addr_info" not in address.to_dict()
    address.choose("addr_info", {"flag": 1})
    assert address.addr_info.flag == 1 and address.ip_type == 0
    address.choose(server.svrm_ip_type.dhcp)
    assert address == server.svrm_ipaddr(ip_type=1) and address.dhcp_info.dhcp == 0
    address.choose(7)  # which chooses nothing
    assert server.svrm_ipaddr.decode(address.encode()) == address
    for name in (name for name, family in tlvmsg.library.names() if tlvmsg.type(name).kind == "union"):
        alone = tlvmsg.type(name).sample(kind="max")
        assert pickle.loads(pickle.dumps(alone)) == alone == copy.deepcopy(alone)


def test_lists_take_what_fits(acme):
    message = acme.acme_fan_report_message()
    assert message.session.msg_type == 17  # its key
    fans = message.list.fans
    fans.append({"tray": 1})
    fans += [acme.acme_fan(tray=2, detail={"failure": {"reason": "hot"}})]
    fans.insert(0, {"tray": 0})
    fans[1:2] = [{"tray": 5}, {"tray": 6}]
    assert [fan.tray for fan in message.list.fans] == [0, 5, 6, 2]
    with pytest.raises(Fault, match=r"\[3\].tray: found 256"):
        fans[-1] = {"tray": 256}
    with pytest.raises(Fault):
        fans *= 64
    assert acme.acme_fan_report_message.decode(message.encode()).list.fans[3].detail.failure.reason == "hot"
    assert copy.deepcopy(fans) == fans and type(copy.copy(fans)) is list
    list.append(fans, 1)  # behind its back
    for use in (message.encode, message.to_json, lambda: copy.deepcopy(message)):
        with pytest.raises(TypeError, match=r"list.fans\[4\]: found int, expected acme_fan"):
            use()


def test_texts_are_str_and_bytes():
    name = common.if_name(name="eth0")
    assert name.name == "eth0" == name.name.text and not name.name != "eth0" and name.name != "eth1" and name.name == b"eth0" and isinstance(name.name, bytes)
    assert name.to_dict() == {"name": "eth0"} and common.if_name(name=b"\xff").to_dict() == {"name": b"\xff"}
    assert common.if_name(name={"hex": "ff00"}).name.text == "\\xff" and common.if_name(name=bytearray(2)).name == bytes(2)
    absent = common.if_name(name=tlvmsg.Missing(2))
    assert absent.to_dict() == {"name": {"count": 2, "items": None}} and common.if_name.from_dict(absent.to_dict()) == absent


def test_objects_behave_like_values():
    a, b = LED(led_control={"color": 3}), LED(led_control={"color": 3})
    assert a == b and not a != b and a != common.ifid() and a != 1
    b.led_control.color = 2
    assert a != b and eval(f"voice.{a.led_control}") == a.led_control
    shallow = copy.copy(a)
    assert shallow.led_control is a.led_control and copy.deepcopy(a).led_control is not a.led_control
    match a:
        case voice.analogbri_led_control_req_message(led_control=voice.zel_led_control(slot, _, 3)):
            assert slot == 0
        case _:
            pytest.fail("no match")
    assert "led_control" in dir(a) and "analogbri_led_control_req_message" in dir(voice)
    assert [str(each) for each in tlvmsg.diff(a, b)] == ["led_control.color: 3 -> 2"]


def test_names_of_python_are_no_trouble():
    schema = tlvmsg.Schema("b/a.tlv", text="""
        enum b_e = 40001 { mro = 0 name = 1 value = 2 _a_ = 3 None = 4 real = 5 encode = 6 }
        struct b_s = 40000 { b_e mro b_e encode b_e decode b_e _type b_e self b_e from }""")
    odd = schema.b.b_s(mro="mro", encode=6, decode="_a_", self="value", **{"from": "None"})
    again = schema.b.b_s.decode(tlvmsg.type_of(odd).encode(odd))
    assert again == odd and odd.mro == 0 and odd.encode is schema.b.b_e.encode and again.to_dict()["decode"] == "_a_"
    assert pickle.loads(pickle.dumps([odd, odd.self])) == [odd, 2] and "from=b_e.None" in repr(odd)


def test_pickles_need_their_schema():
    schema = tlvmsg.Schema("mine/a.tlv", text="struct mine_speed = 40000 { uint16 rpm }")
    data = pickle.dumps(schema.mine.mine_speed(rpm=7))
    assert pickle.loads(data).rpm == 7
    del schema
    load = f"import pickle, tlvmsg\ntry: pickle.loads({data!r})\nexcept tlvmsg.Fault as fault: print(fault.code, fault.path)"
    assert subprocess.check_output([sys.executable, "-c", load], text=True) == "unknown-name mine_speed\n"


def test_bytes_are_explained_and_recognized(acme):
    message = LED(led_control={"color": 3})
    data = message.encode()
    assert "led_control.color: zel_led_color = 3" in tlvmsg.annotate(data, LED)
    assert "app_sess_hdr" in tlvmsg.annotate(data)
    [read] = tlvmsg.read_hex(tlvmsg.annotate(data, "analogbri_led_control_req_message"))
    assert read == (data, "analogbri_led_control_req_message", 2)
    best = tlvmsg.guess(data)[0]
    assert best.fit == "yes" and LED._type in best.types and best.consumed == len(data)
    assert tlvmsg.guess(data[:-1])[0].fault.code == "truncated"
    report = acme.acme_fan_report_message()
    [part] = report._type.schema.divide(report.encode())
    assert (part.offset, part.size, part.types) == (0, report.size(), (report._type,))
    assert tlvmsg.divide(b"") == [] and ethernet.zel_tib_vlan_stats_message.sample(VLANS).vlan_stat_bundle.vlan_counters[1]


def test_a_dispatcher_goes_by_keys(acme):
    dispatch = tlvmsg.Dispatcher()
    dispatch.on(acme.acme_fan_report_message)(lambda message: len(message.list.fans))
    dispatch.on(LED, key=5)(lambda message: message.led_control.color)
    assert dispatch(acme.acme_fan_report_message(list={"fans": [{}, {}]}).encode()) == 2
    assert dispatch(bytearray(LED(session={"msg_type": 5}, led_control={"color": 3}).encode())) == 3
    assert dispatch(LED(led_control={"color": 2}).encode(), key=5) == 2
    for unknown in (LED().encode(), b"short"):
        with pytest.raises(Fault, match="unknown-message"):
            dispatch(unknown)
    for wrong in (lambda: dispatch.on(LED), lambda: dispatch.on(LED, key=5)):
        with pytest.raises(ValueError):
            wrong()


def test_frames_are_cut_out_of_streams(tmp_path):
    messages = [LED(led_control={"color": color}).encode() for color in range(3)]
    stream = b"".join(map(tlvmsg.Frames("length:2@0+4").frame, messages))
    assert stream[:4] == b"\0\x78\0\0" and list(tlvmsg.read_frames(stream, "length:2@0+4")) == messages
    assert list(tlvmsg.read_frames(1000 * stream, "length:2@0+4")) == 1000 * messages  # more than a buffer holds
    (tmp_path / "stream").write_bytes(stream)
    with open(tmp_path / "stream", "rb") as file:
        assert list(tlvmsg.read_frames(file, "length:2@0+4")) == messages
    ours, theirs = socket.socketpair()
    with ours, theirs:
        ours.sendall(stream[:130])
        received = tlvmsg.read_frames(theirs, "length:2@0+4")
        assert next(received) == messages[0]
        ours.sendall(stream[130:-1])
        ours.close()
        assert next(received) == messages[1]
        with pytest.raises(Fault, match="truncated"):
            next(received)
    frames = tlvmsg.Frames("length:2@0,most=200")
    frames.feed(b"\xff" * 3 + b"\0\1x" + frames.frame(LED()) + frames.frame(b"behind"))
    with pytest.raises(Fault, match="frame-too-long"):
        next(frames)
    frames.resync(LED)
    assert list(frames) == [LED().encode(), b"behind"]
    for wrong in ("length", "segment", "length:9@0"):
        with pytest.raises(Fault, match="framing"):
            tlvmsg.Frames(wrong)
    with pytest.raises(Fault):
        frames.frame(bytes(201))
