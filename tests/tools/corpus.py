#!/usr/bin/env python3
"""Texts as other programs print them, whole, several, cut and with a line lost: tlv gives the right messages, or says
which line is in the way. Usage: corpus.py TLV"""
import base64, json, pathlib, random, re, subprocess, sys, tempfile

TLV = str(pathlib.Path(sys.argv[1]).resolve())
TYPES = ["analogbri_led_control_req_message", "kavu_analogbri_generic_report", "zel_tib_vlan_stats_message", "ifid",
         "zel_env_monitoring_sensor_info"]
WORDS = {"hexdump", "hexdump -x", "od", "od -tx4", "gdb x/xw", "xxd -b", "od -An -v -tu1"} # may be refused
HERE = pathlib.Path(tempfile.mkdtemp(prefix="tlv-corpus-"))
random.seed(7)


def run(*command, data=None):
    return subprocess.run(command, input=data, capture_output=True, cwd=HERE, check=False)


def program(command):
    """The form is what a command prints of a message on its standard input."""
    return lambda data: run(*command.split(), data=data).stdout.decode().rstrip("\n") + "\n"


def debugger(examine):
    """gdb over the message as an object file's data."""
    def form(data):
        (HERE / "led.bin").write_bytes(data)
        run("ld", "-r", "-b", "binary", "led.bin", "-o", "led.o")
        count = len(data) // (4 if "w" in examine else 1)
        text = run("gdb", "-batch", "-nx", "-ex", examine.format(count), "led.o").stdout.decode()
        assert text.count("\n") > 1, "gdb said nothing"
        return text
    return form


def captured(*command):
    """What a program prints of frames, headers and all."""
    def form(data):
        run(TLV, "encode", "-t", form.type, "--pcap", "frame.pcap", data=run(TLV, "decode", "-t", form.type, data=data).stdout)
        return run(*command, "-r", "frame.pcap").stdout.decode()
    return form


FORMS = {command: program(command) for command in (
    "xxd", "xxd -g1", "xxd -c8", "xxd -e", "xxd -p", "xxd -i", "xxd -b", "hexdump -C", "hexdump -v -C", "hexdump", "hexdump -x",
    "od", "od -tx1", "od -Ax -tx1", "od -Ad -tx1z", "od -An -v -tx1", "od -tx4", "od -An -v -tu1", "base64", "base64 -w0")}
FORMS |= {"gdb x/xb": debugger("x/{}xb &_binary_led_bin_start"), "gdb x/xw": debugger("x/{}xw &_binary_led_bin_start")}
FORMS |= {" ".join(command): captured(*command) for command in
          (("tcpdump", "-x"), ("tcpdump", "-X"), ("tcpdump", "-xx"), ("tcpdump", "-nXX"), ("tshark", "-x"))}
FORMS |= {
    "repr": lambda data: f"{data!r}\n", "log of repr": lambda data: f"2026-11-21 10:00:01,123 INFO root: got {data!r}\n",
    "list": lambda data: f"{list(data)}\n", "hex": lambda data: data.hex() + "\n", "colons": lambda data: data.hex(":") + "\n",
    "time": lambda data: f"12:00:01 {data.hex(' ')}\n", "syslog": lambda data: f"Nov 21 10:00:01 host tlvd[7]: data={data.hex()}\n",
    "json": lambda data: json.dumps({"ts": 1700000000, "data": base64.b64encode(data).decode()}) + "\n",
    "logged xxd": lambda data: re.sub("^", "2026-11-21T10:00:01Z DEBUG ", FORMS["xxd"](data).rstrip("\n"), flags=re.M) + "\n",
    "utf-16": lambda data: FORMS["xxd"](data),
}


def damaged(text):
    """Variants of a text, of which nobody can say that they are whole."""
    lines = text.splitlines(keepends=True)
    yield "cut", text[:len(text) * 2 // 3]
    if len(lines) > 3:
        lost = random.randrange(1, len(lines) - 1)
        yield "line lost", "".join(lines[:lost] + lines[lost + 1:])


def faults_of(form, variant, name, messages, text):
    """What is wrong with what tlv makes of a text."""
    path = HERE / "text"
    path.write_text(text, encoding="utf-16" if form == "utf-16" else "utf-8")
    done = run(TLV, "decode", "--compact", "-t", name, "text")
    documents = [json.loads(line) for line in done.stdout.splitlines()]
    given = [each["message"] if "type" in each else each for each in documents if "error" not in each]
    error = done.stderr.decode(errors="replace")
    if done.returncode == 0 and variant in ("whole", "several") and given != messages:
        yield f"{len(given)} other messages than the {len(messages)} that are there"
    if done.returncode == 0 and any(each not in messages for each in given):
        yield "a message that is not there"
    if done.returncode != 0 and variant in ("whole", "several") and form not in WORDS:
        yield "refused: " + error.splitlines()[0]
    if done.returncode != 0 and not re.search(r"line \d+|text[:@#]\d+|at byte \d+|\"frame\":\d+", error + done.stdout.decode()):
        yield "no place: " + error
    if done.returncode not in (0, 1, 3):
        yield f"status {done.returncode}"


def main():
    count, faults = 0, []
    for form, write in FORMS.items():
        for name in TYPES:
            write.__dict__["type"] = name
            samples = [run(TLV, "sample", "--seed", str(seed), name).stdout for seed in random.sample(range(1000), 3)]
            messages = [json.loads(run(TLV, "decode", "-t", name, data=each).stdout) for each in samples]
            texts = [write(each) for each in samples]
            variants = [("whole", texts[0], messages[:1]), ("several", "".join(texts), messages)]
            variants += [(variant, text, messages) for variant, text in damaged("".join(texts))]
            for variant, text, expected in variants:
                count += 1
                faults += [f"{form}, {variant}, {name}: {fault}" for fault in faults_of(form, variant, name, expected, text)]
    print(f"{count} texts, {len(faults)} faults", *faults, sep="\n")
    return 1 if faults or count < 600 else 0


sys.exit(main())
