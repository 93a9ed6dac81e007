"""The dissector in tshark, against the tool's JSON and the bounded library's faults. Needs TLV_BIN and TLV_INSPECT."""
import ctypes, json, os, random, struct, subprocess, tempfile, unittest
import xml.etree.ElementTree as xml

TLV = os.environ["TLV_BIN"] + "/tlv"
LED = "analogbri_led_control_req_message"
UDP, TCP = 17, 6
PORT = 30000  # of the first message; nobody else has those behind it
DECODE_AS = ("-d", "udp.port==9000,tlvmsg")


def run(*command, **options):
    return subprocess.run(command, capture_output=True, timeout=120, check=True, **options).stdout


def tshark(*arguments, check=True):
    """For root, Wireshark 4.4 loads no scripts."""
    someone = {"user": "nobody", "group": "nogroup", "extra_groups": []} if os.geteuid() == 0 else {}
    return subprocess.run(("tshark", *arguments), capture_output=True, timeout=120, check=check, **someone)


def sample(name, *options):
    return run(TLV, "sample", name, "--out", "raw", *options)


def capture(packets):
    """A file of packets: (protocol, port, payload) and, for TCP, the place in the stream."""
    with open("x.pcap", "wb") as file:
        file.write(struct.pack("<IHHiIII", 0xA1B2C3D4, 2, 4, 0, 0, 1 << 18, 101))
        for protocol, port, payload, *at in packets:
            transport = (b"" if protocol not in (UDP, TCP) else struct.pack(">HHHH", port, 1, 8 + len(payload), 0) if protocol == UDP else
                         struct.pack(">HHIIBBHHH", port, 1, 1 + at[0], 1, 0x50, 0x10, 65535, 0, 0))
            packet = struct.pack(">BBHHHBBHII", 0x45, 0, 20 + len(transport + payload), 0, 0, 64, protocol, 0, 1, 2)
            packet += transport + payload
            file.write(struct.pack("<IIII", 0, 0, len(packet), len(packet)) + packet)
    return "x.pcap"


def dissect(packets, *options, names=("tlvmsg",), **prefs):
    """The trees that the protocols have in each packet, as PDML."""
    options += tuple(f"-Xlua_script:{name}.lua" for name in names)
    options += tuple(f"-otlvmsg.{name}:{value}" for name, value in prefs.items())
    path = packets if isinstance(packets, str) else capture(packets)
    text = tshark(*options, "-r", path, "-T", "pdml", "-J", " ".join(names)).stdout.decode()
    assert "Lua Error" not in text, text[text.index("Lua Error"):][:400]
    return [[proto for proto in packet if proto.get("name") in names] for packet in xml.fromstring(text)]


def shown(protos, name, attribute="show"):
    return [field.get(attribute) for proto in protos for field in proto.iter("field") if field.get("name") == name]


def messages(packets, *options, **prefs):
    return [shown(protos, "tlvmsg.message") for protos in dissect(packets, *options, **prefs)]


def is_record(value):
    return isinstance(value, dict) and list(value) != ["hex"]


def compare(field, value):
    """Holds what tshark shows against what the JSON says. A field's name is the protocol, the type and the path in it."""
    if not is_record(value):
        enumerator = isinstance(value, str) and f": {value} (" in field.get("showname")
        data = bytes.fromhex(value["hex"]) if isinstance(value, dict) else str(value).encode()
        there = field.get("show") if isinstance(value, int) else bytes.fromhex(field.get("value") or "")
        assert enumerator or there in (str(value), data), (field.get("name"), there, value)
        return
    inside = {}
    for each in field:
        inside.setdefault(each.get("name").split(".", 2)[-1], []).append(each)
    compare_members(inside, value, "")


def compare_members(inside, record, above):
    for name, value in record.items():
        path = above + name
        if isinstance(value, list):
            items = list(inside[path + ".count"][-1])
            assert len(items) == len(value), path
            for item, each in zip(items, value):
                compare(item, each)
        elif is_record(value) and path not in inside:  # a union
            compare_members(inside, value, path + ".")
        else:
            compare(inside[path][0], value)


class Fault(ctypes.Structure):
    _fields_ = [("code", ctypes.c_int), ("offset", ctypes.c_size_t), ("found", ctypes.c_uint64),
                ("allowed", ctypes.c_uint64), ("path", ctypes.c_char * 128), ("reserved", ctypes.c_size_t * 2)]

    def text(self, kind):
        text = ctypes.create_string_buffer(320)
        inspect.tlvmsg_fault_text(ctypes.byref(self), text, 320)
        return text.value.decode().replace("error", kind, 1)


class Piece(ctypes.Structure):
    _fields_ = [("kind", ctypes.c_int), ("offset", ctypes.c_size_t), ("size", ctypes.c_size_t),
                ("place", ctypes.c_void_p), ("value", ctypes.c_uint64), ("fault", ctypes.POINTER(Fault))]


class Extent(ctypes.Structure):
    _fields_ = [(name, ctypes.c_size_t) for name in ("consumed", "examined", "allocated", "blocks", "deviations")]
    _fields_ += [("first", Fault), ("reserved", ctypes.c_size_t * 4)]


Tracer = ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.POINTER(Piece))
inspect = ctypes.CDLL(os.environ["TLV_INSPECT"])
inspect.tlvmsg_trace.restype = ctypes.c_bool
inspect.tlvmsg_type_find.restype = ctypes.c_void_p


def library_faults(name, data):
    found, fault, extent = [], Fault(), Extent()

    def tell(_, piece):
        if piece.contents.fault:
            found.append(piece.contents.fault.contents.text("tolerated"))
    of_type = ctypes.c_void_p(inspect.tlvmsg_type_find(name.encode())), data, ctypes.c_size_t(len(data))
    if not inspect.tlvmsg_trace(*of_type, None, Tracer(tell), None, ctypes.byref(extent), ctypes.byref(fault)):
        found.append(fault.text("error"))
    elif extent.consumed < len(data):
        found.append(f"tolerated[trailing-bytes]: {name}: {len(data) - extent.consumed} bytes behind the end at byte "
                     f"{extent.consumed}")
    return found


def damaged(data, dice):
    data = bytearray(data)
    for _ in range(dice.choice((1, 1, 2, 5))):
        at, what = dice.randrange(len(data)), dice.randrange(4)
        if what == 0:
            data[at] ^= 1 << dice.randrange(8)
        elif what == 1:
            data[at] = dice.choice((0, 1, 255))
        elif what == 2:
            data[at:at + dice.choice((1, 4, 8, 12))] = b""
        else:
            data[at:at] = data[dice.randrange(len(data)):][:dice.choice((1, 4, 12))]
        data = data or bytearray(1)
    return bytes(data[:dice.randrange(1, len(data) + 1)] if dice.randrange(3) == 0 else data)


class Dissector(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        os.environ.update(HOME=cls.scratch.name, LC_ALL="C")
        os.chdir(cls.scratch.name)
        os.chmod(".", 0o755)
        for name in ("tlvmsg", "other"):
            with open(name + ".lua", "wb") as file:
                file.write(run(TLV, "wireshark", "--name", name))
        names = run(TLV, "types", "*_message").decode().split()
        samples = [(name, sample(name)) for name in names]
        samples += [(name, sample(name, "--kind", "max")) for name in names[::4]]
        cls.samples = [(name, data) for name, data in samples if len(data) < 65000]
        with open("types", "w") as file:
            file.writelines(f"udp/{PORT + i}={name} # a comment\n" for i, (name, _) in enumerate(cls.samples))
        cls.packets = [(UDP, PORT + i, data) for i, (_, data) in enumerate(cls.samples)]

    def test_members_are_those_of_decode(self):
        decoded = run(TLV, "decode", "--types", "types", capture(self.packets)).decode().splitlines()
        shows = dissect(self.packets, types_file="types")
        for (name, _), protos, line in zip(self.samples, shows, decoded, strict=True):
            self.assertEqual(shown(protos, "tlvmsg.fault"), [])
            node = next(field for field in protos[0] if field.get("name") == "tlvmsg." + name)
            compare(node, json.loads(line)["message"])

    def test_without_configuration_none_is_taken_silently(self):
        known = elsewhere = 0
        for (name, _), protos in zip(self.samples, dissect(self.packets, heuristic="TRUE")):
            candidates, taken = shown(protos, "tlvmsg.candidate"), shown(protos, "tlvmsg.message")
            if not protos:
                elsewhere += 1
            elif candidates:
                self.assertEqual((taken, shown(protos, "tlvmsg.fault")), ([], ["ambiguous"]))
                self.assertIn(name, candidates)
            else:
                self.assertEqual(taken, [name])
                known += 1
        self.assertGreater(known, len(self.samples) / 2)
        self.assertLess(elsewhere, 3, "what another protocol may recognize first")
        self.assertFalse(any(dissect(self.packets[:50])), "off unless asked for")

    def test_foreign_traffic_is_not_recognized(self):
        dice = random.Random(2)
        dns = bytes.fromhex("12340100000100000000000003777777076578616d706c6503636f6d0000010001")
        foreign = [dns, bytes.fromhex("1603010005010000010303"), sample(LED)[:-1], sample(LED) * 2, sample("ifid")]
        foreign += [dice.randbytes(dice.randrange(1, 200)) for _ in range(300)]
        self.assertFalse(any(dissect([(UDP, PORT + i, data) for i, data in enumerate(foreign)], heuristic="TRUE")))

    def test_damaged_messages_have_the_faults_of_the_library(self):
        dice = random.Random(1)
        which = [dice.randrange(len(self.samples)) for _ in range(3000)]
        packets = [(UDP, PORT + i, damaged(self.samples[i][1], dice)) for i in which]
        faulty = 0
        for i, (_, _, data), protos in zip(which, packets, dissect(packets, types_file="types")):
            name = self.samples[i][0]
            faults = shown(protos, "tlvmsg.fault", "showname")  # also those of skipped elements, by their tags
            own = [fault for fault in faults if fault.split(": ")[1].split(".")[0] == name]
            self.assertEqual(own, library_faults(name, data), data.hex())
            faulty += bool(own)
        self.assertGreater(faulty, 1000)
        dissect([(UDP, 9000, data) for _, _, data in packets], *DECODE_AS)

    def test_counts_that_nothing_can_hold_and_lengths(self):
        places = {"plim_qos_vc_info": 18, "zel_vlan_stat_bundle": 17, "if_name": 17, "zel_mac_addr": 12}
        cases = [(name, sample(name, "--kind", "min"), at) for name, at in places.items()]
        address = '{"address": {"type": 1, "ipv4": 5}, "length": 6}'
        cases.append(("ip_address", run(TLV, "encode", "-t", "ip_address", "--out", "raw", address), 18))
        for name, data, at in cases:
            numbers = [*range(30), 255, 256, *range(0, 65536, 999)]
            packets = [(UDP, 9000, data[:at] + struct.pack(">H", number) + data[at + 2:]) for number in numbers]
            for packet, protos in zip(packets, dissect(packets, types=f"udp/9000={name}")):
                self.assertEqual(shown(protos, "tlvmsg.fault", "showname"), library_faults(name, packet[2]))

    def test_nothing_hangs(self):
        nested = b""
        for _ in range(15000):
            nested = struct.pack(">HH", 2000, len(nested)) + nested
        hostile = [nested, nested.replace(b"\x07\xd0", b"\x03\xe9"), bytes(65000), sample("zel_boolean") * 5000]
        for protos in dissect([(UDP, 9000, data) for data in hostile], *DECODE_AS, types=f"udp/9001={LED}"):
            self.assertEqual(shown(protos, "tlvmsg.fault")[0], "unknown-message")

    def test_which_type(self):
        led, ifid, control = sample(LED), sample("ifid"), "zel_led_control"
        packets, number = [(UDP, 9000, led)], int.from_bytes(led[44:48], "big")
        self.assertEqual(messages(packets, types=f"udp/9000={control}, msg_type={number:#x}={LED}"), [[LED]])
        self.assertEqual(messages(packets, types=f"tcp/9000={LED} udp/9001={LED}"), [[]])
        self.assertEqual(messages([(UDP, 9000, led[92:])], *DECODE_AS, default_type="1357"), [[control]])
        self.assertEqual(messages([(UDP, 9000, led[92:] * 2)], types=f"udp/1={control}"), [[control] * 2])
        self.assertEqual(messages([(UDP, 9000, led * 3)], *DECODE_AS), [[LED] * 3])
        self.assertEqual(messages([(UDP, 9000, led * 2)], types=f"udp/9000={LED}"), [[LED] * 2])
        self.assertEqual(messages([(89, 0, led)], types=f"ip/89={LED}"), [[LED]])
        with open("led.txt", "wb") as file:
            file.write(run("od", "-Ax", "-tx1", input=led))
        run("text2pcap", "-q", "-e", "0x88b5", "led.txt", "ethertype.pcapng")
        self.assertEqual(messages("ethertype.pcapng", types=f"ethertype/0x88B5={control} ethertype/0x88b5={LED}"), [[LED]])
        unknown, = dissect([(UDP, 9000, led + 20 * (b"\x07\xd0\0\x2c" + ifid) + b"\0")], *DECODE_AS)
        self.assertEqual(shown(unknown, "tlvmsg.fault"), ["unknown-message", "truncated"])
        self.assertEqual(shown(unknown, "tlvmsg.element.tag"), ["2000"] * 20)
        self.assertEqual(len(shown(unknown, "tlvmsg.ifid.value_1")), 21)
        wrong = ["-otlvmsg.types:udp/1=nonsense sctp/1=ifid,udp/65536=ifid", "-otlvmsg.framing:length:2@2+3"]
        shows = tshark("-Xlua_script:tlvmsg.lua", *wrong, "-r", "x.pcap", check=False)
        for text in (b"type 'nonsense'", b"'sctp/1=ifid' is none", b"'udp/65536=ifid' is none", b"+3' is none"):
            self.assertIn(text, shows.stderr)

    def test_keys(self):
        shape = "{ app_sess_hdr session  ifid interface }"
        with open("keys.tlv", "w") as file:
            file.write(f'import "common/session.tlv"\nmessage first key 17 {shape}\nmessage other key 18 {shape}\n'
                       f"message plain {shape}\nmessage twin key 4294967295 {shape}\n")
        own = ("--schema", "keys.tlv")
        with open("keyed.lua", "wb") as file:
            file.write(run(TLV, "wireshark", "--name", "keyed", *own))
        first, other = sample("first", *own), sample("other", *own)
        packets = [first, other, first[:47] + b"\5" + first[48:], first + other, sample("twin", *own)]
        shows = dissect([(UDP, 9000, data) for data in packets], "-d", "udp.port==9000,keyed", names=("keyed",))
        self.assertEqual([shown(protos, "keyed.message") for protos in shows],
                         [["first"], ["other"], ["plain"], ["first", "other"], ["twin"]])

    def test_framing(self):
        led = sample(LED)
        stream = b"".join(b"\xca\xfe" + struct.pack(">HH", len(led), 0) + led for _ in range(7))
        pieces = [(TCP, 9000, stream[at:at + 50], at) for at in range(0, len(stream), 50)]
        prefs = {"types": f"tcp/9000={LED} udp/9000={LED}", "framing": "length:2@2+6"}
        self.assertEqual(sum(messages(pieces, **prefs), []), [LED] * 7)
        self.assertEqual(messages([(TCP, 9000, stream, 0)], **prefs), [[LED] * 7])
        damaged_length = [(TCP, 9000, b"\x7f" * 100, 0), (TCP, 9000, b"\0\0\0\x78" + led, 100)]
        self.assertEqual(messages(damaged_length, **dict(prefs, framing="length:4@0"))[1], [LED])
        framing = "length:3@1+5,little,inclusive,most=4000"
        stream = b"".join(b"\xca" + struct.pack("<I", 5 + len(led)) + led for _ in range(40))[70:]
        pieces = [(TCP, 9000, stream[at:at + 333], at) for at in range(0, len(stream), 333)]
        for lost, whole in (([], 39), (pieces[4:5], 36)):  # begun inside a message; without a segment, too
            path = capture([piece for piece in pieces if piece not in lost])
            tool = subprocess.run([TLV, "decode", "--framing", framing, path], capture_output=True)
            told = [json.loads(line).get("type") for line in tool.stdout.splitlines()]
            self.assertEqual((told.count(LED), len(told)), (whole, whole + 1 + 3 * len(lost)))
            for types in (f"tcp/9000={LED}", ""):
                there = messages(path, "-d", "tcp.port==9000,tlvmsg", framing=framing, types=types)
                self.assertEqual(sum(there, []).count(LED), whole)
        skipped = [(UDP, 9000, b"head" + led), (TCP, 9000, b"head" + led, 0)]
        self.assertEqual(messages(skipped, **dict(prefs, framing="skip:4")), [[LED], [LED]])

    def test_cut_frames(self):
        run("editcap", "-s", "100", capture([(UDP, 9000, sample(LED))]), "cut.pcap")
        cut, = dissect("cut.pcap", *DECODE_AS)
        self.assertEqual(shown(cut, "tlvmsg.fault"), ["cut", "truncated"])
        self.assertEqual(shown(cut, "tlvmsg.message"), [])

    def test_two_protocols(self):
        with open("led.txt", "wb") as file:
            file.write(run("od", "-Ax", "-tx1", input=sample(LED)))
        for name in ("tlvmsg", "other"):
            run("text2pcap", "-q", "-P", name, "led.txt", "led.pcapng")
            protos, = dissect("led.pcapng", "-Y", name + ".zel_led_control.color > 0", names=("tlvmsg", "other"))
            self.assertEqual([proto.get("name") for proto in protos], [name])
            self.assertEqual(shown(protos, name + ".message"), [LED])
        for wrong in ("", "Two", "9p", "a-b"):
            self.assertEqual(subprocess.run([TLV, "wireshark", "--name", wrong], capture_output=True).returncode, 2)

    def test_a_second_load_is_quiet(self):
        os.link("tlvmsg.lua", "again.lua")
        loads = [f"-Xlua_script:{name}.lua" for name in ("tlvmsg", "again")]
        one = capture([(UDP, 9000, sample(LED))])
        shows = tshark(*loads, *DECODE_AS, "-r", one, "-Tfields", "-etlvmsg.message", check=False)
        self.assertEqual((shows.stdout.decode(), b"Error" in shows.stderr, shows.returncode), (LED + "\n", False, 0))

    def test_installs_where_wireshark_looks(self):
        installed = subprocess.run([TLV, "wireshark", "--install"], capture_output=True, check=True)
        self.assertEqual(b"for root" in installed.stderr, os.geteuid() == 0)
        path = installed.stdout.decode().strip()
        self.addCleanup(os.remove, path)
        run("cmp", path, "tlvmsg.lua")
        self.assertIn(os.path.dirname(path) + "\n", tshark("-G", "folders").stdout.decode())


if __name__ == "__main__":
    unittest.main()
