#!/usr/bin/env python3
"""lsp_test.py TLVC: a client's conversation with 'tlvc lsp', and what must not end it."""
import json
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile

root = pathlib.Path(tempfile.mkdtemp(prefix="tlvc lsp é")).resolve()


class Client:
    def __init__(self):
        self.server = subprocess.Popen([sys.argv[1], "lsp"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.next_id = 0

    def raw(self, content, header=None):
        self.server.stdin.write((header or f"Content-Length: {len(content)}\r\n\r\n").encode() + content)
        self.server.stdin.flush()

    def send(self, **message):
        self.raw(json.dumps({"jsonrpc": "2.0", **message}).encode())

    def receive(self):
        header = self.server.stdout.readline()
        assert header.startswith(b"Content-Length: "), header
        assert self.server.stdout.readline() == b"\r\n"
        return json.loads(self.server.stdout.read(int(header[16:])))

    def ask(self, method, **params):
        self.next_id += 1
        self.send(id=self.next_id, method=method, params=params)
        answer = self.receive()
        while "id" not in answer:  # diagnostics, where a pause was long
            answer = self.receive()
        assert answer["id"] == self.next_id, answer
        assert "exception" not in answer.get("error", {}).get("message", ""), answer
        return answer.get("result", answer.get("error", {}).get("code"))

    def tell(self, method, **params):
        self.send(method=method, params=params)

    def about(self, method, path, at=None, **more):
        place = {"position": {"line": at[0], "character": at[1]}} if at else {}
        return self.ask("textDocument/" + method, textDocument={"uri": uri(path)}, **place, **more)

    def open(self, path, text):
        self.tell("textDocument/didOpen", textDocument={"uri": uri(path), "languageId": "tlv", "text": text})

    def type(self, path, text):
        self.tell("textDocument/didChange", textDocument={"uri": uri(path)}, contentChanges=[{"text": text}])

    def published(self, path):
        message = self.receive()
        assert message["method"] == "textDocument/publishDiagnostics", message
        assert message["params"]["uri"] == uri(path), message
        return message["params"]["diagnostics"]

    def codes(self, path):
        return [each["code"] for each in self.published(path)]

    def error(self):
        message = self.receive()
        assert message["id"] is None, message
        return message["error"]["code"]


def uri(path):
    return path if path.startswith("untitled:") else (root / path).as_uri()


def hover(client, path, at):
    return client.about("hover", path, at)["contents"]["value"]


def span(first_line, first, last_line, last):
    return {"start": {"line": first_line, "character": first}, "end": {"line": last_line, "character": last}}


COLOURS = "//! Colours.\n\n/// What shines, 🙂 or not.\nenum colour = 40001 { red = 1  green = 2 }\n"
FANS = '//! Fans.\n\nimport "colours.tlv"\n\n/// Turns.\nstruct fan = 40002 {\n    uint16  slot\n    colour  led\n}\n'


def conversation(client):
    assert client.ask("textDocument/hover") == -32002  # before initialize
    capabilities = client.ask("initialize", capabilities={})["capabilities"]
    assert capabilities["textDocumentSync"] == {"openClose": True, "change": 1, "save": True}
    client.tell("initialized")

    # Neither file exists: an import is found among what is open.
    client.open("acme/colours.tlv", COLOURS)
    assert client.published("acme/colours.tlv") == []
    client.open("acme/fans.tlv", FANS.replace("/// Turns.\n", ""))
    (warning,) = client.published("acme/fans.tlv")
    assert (warning["code"], warning["severity"]) == ("W003", 2), warning
    client.type("acme/fans.tlv", FANS)
    assert client.published("acme/fans.tlv") == []

    # So is one of the library's, wherever that is installed.
    client.open("acme/report.tlv", 'import "common/session.tlv"\n/// News.\nmessage report { app_sess_hdr session }\n')
    assert client.published("acme/report.tlv") == []
    for at in ((0, 12), (2, 20)):
        assert client.about("definition", "acme/report.tlv", at)["uri"].endswith("/common/session.tlv"), at
    client.tell("textDocument/didClose", textDocument={"uri": uri("acme/report.tlv")})

    # A fault comes and goes. Columns count UTF-16 units: the face is two, the accent one.
    client.type("acme/fans.tlv", FANS.replace("colour  led", "color  led").replace("{\n", "{ // \n", 1))
    (fault,) = client.published("acme/fans.tlv")
    assert (fault["code"], fault["severity"], fault["range"]) == ("T012", 1, span(7, 4, 7, 9)), fault
    assert fault["message"] == "type 'color' is not defined\nhelp: did you mean 'colour'?", fault
    client.type("acme/fans.tlv", FANS)
    assert client.published("acme/fans.tlv") == []
    client.type("acme/colours.tlv", COLOURS.replace("red", 'red "é🙂" \\'))
    (fault, other) = client.published("acme/colours.tlv")
    assert (fault["range"], other["range"]) == (span(3, 26, 3, 31), span(3, 32, 3, 33)), (fault, other)

    # A note leads to the other file, and what an open file breaks in another shows there.
    client.type("acme/colours.tlv", COLOURS.replace("40001", "40002"))
    assert client.published("acme/colours.tlv") == []
    (fault,) = client.published("acme/fans.tlv")
    (note,) = fault["relatedInformation"]
    assert fault["code"] == "T015" and note["location"]["uri"] == uri("acme/colours.tlv"), fault
    assert "Sizes are known when the faults are gone" in hover(client, "acme/fans.tlv", (5, 8))
    client.type("acme/colours.tlv", COLOURS)
    assert client.published("acme/fans.tlv") == []

    # Under the cursor, also directly behind a name; nothing on blanks and behind the end.
    assert hover(client, "acme/fans.tlv", (5, 10)) == """```tlv
/// Turns.
struct fan = 40002 {
    uint16  slot
    colour  led
}
```

```text
Wire: tag 40002, 22 bytes.
    0  9C 42 00 12
    4  uint16                     slot
   10  colour                     led
```

Record fan: 8 bytes aligned to 4, and 8 to 4 where pointers have 4."""
    assert "/// What shines, 🙂 or not." in hover(client, "acme/fans.tlv", (7, 4))
    assert "uint16_t" in hover(client, "acme/fans.tlv", (6, 4))
    for nowhere in (3, 0), (5, 99), (99, 0):
        assert client.about("hover", "acme/fans.tlv", nowhere) is None
    assert client.about("definition", "acme/fans.tlv", (7, 4)) == {
        "uri": uri("acme/colours.tlv"), "range": span(3, 5, 3, 11)}
    assert client.about("definition", "acme/fans.tlv", (2, 10)) == {
        "uri": uri("acme/colours.tlv"), "range": span(0, 0, 0, 0)}
    assert client.about("definition", "acme/fans.tlv", (6, 4)) is None

    assert client.about("formatting", "acme/fans.tlv") == []
    client.type("acme/fans.tlv", FANS.replace("    ", " ") + "// 🙂")
    (edit,) = client.about("formatting", "acme/fans.tlv")
    assert edit["range"] == span(0, 0, 9, 5) and edit["newText"].startswith(FANS), edit
    client.type("acme/fans.tlv", "struct fan\n")
    assert client.published("acme/fans.tlv")[0]["code"] == "T005"
    assert client.about("formatting", "acme/fans.tlv") is None

    # While somebody types nothing is compiled; of many texts only the last one is.
    client.open("acme/zoo.tlv", "")
    assert client.published("acme/zoo.tlv") == []
    for i in range(50):
        client.type("acme/zoo.tlv", f"enum shade_{i} = 40001\n")
    (fault,) = client.published("acme/zoo.tlv")
    assert fault["code"] == "T015" and "shade_49" in hover(client, "acme/zoo.tlv", (0, 6)), fault

    # An import that leads nowhere leaves the others alone.
    client.type("acme/zoo.tlv", 'import "gone.tlv"\nimport "colours.tlv"\n')
    assert client.codes("acme/zoo.tlv") == ["T008"]
    assert client.about("definition", "acme/zoo.tlv", (0, 10)) is None
    assert client.about("definition", "acme/zoo.tlv", (1, 10))["uri"] == uri("acme/colours.tlv")
    client.tell("textDocument/didClose", textDocument={"uri": uri("acme/zoo.tlv")})
    assert client.published("acme/zoo.tlv") == []

    # What is no file can import only what is installed.
    client.open("untitled:1", 'import "common/session.tlv"\n/// Big.\nmessage big { app_sess_hdr session }\nenum\n')
    assert client.codes("untitled:1") == ["T005"]
    assert client.about("definition", "untitled:1", (2, 16))["uri"].endswith("/common/session.tlv")
    client.tell("textDocument/didClose", textDocument={"uri": "untitled:1"})
    assert client.published("untitled:1") == []

    # A closed file is the one on disk, which is not there.
    client.type("acme/fans.tlv", FANS)
    assert client.published("acme/fans.tlv") == []
    client.tell("textDocument/didClose", textDocument={"uri": uri("acme/colours.tlv")})
    assert client.published("acme/fans.tlv")[0]["code"] == "T008"
    assert client.about("hover", "acme/colours.tlv", (0, 0)) == -32602
    (root / "acme").mkdir()
    (root / "acme/colours.tlv").write_bytes(b"enum colour = 40001 // \xff\n\xff\n")
    client.tell("textDocument/didSave", textDocument={"uri": uri("acme/fans.tlv")})
    (fault,) = client.published("acme/colours.tlv")
    assert (fault["code"], fault["message"]) == ("T001", "the byte FF means nothing here"), fault
    assert client.published("acme/fans.tlv") == []

    # Nobody has this one open or imports it, but it is of the family. What else lies about is not.
    (root / "acme/more.tlv").write_text("struct fan = 40003 { uint8 n }\n")
    (root / "acme/.#fans.tlv").symlink_to("nowhere")
    client.tell("workspace/didChangeWatchedFiles", changes=[])
    assert client.codes("acme/more.tlv") == ["T014"]
    (root / "acme/more.tlv").unlink()
    client.type("acme/fans.tlv", FANS + "\n")
    assert client.published("acme/more.tlv") == []

LAMPS = 'import "hues🙂.tlv" union lamp by hue shade { dark: uint8 level  bright: hue tint }\n' \
    "/// One.\nstruct light = 41002 {\n    hue    shade\n    lamp   bulb\n    uint8  spare\n}\n"
FLEET = {"fleet/hues🙂.tlv": "/// A lamp's.\nenum hue = 41001 { dark = 0  bright = 1 }\n", "fleet/lamps.tlv": LAMPS}


def where(text, words):
    before = text[:text.index(words)]
    return before.count("\n"), len(before.rpartition("\n")[2].encode("utf-16-le")) // 2


def edited(text, edits):
    lines = [line.encode("utf-16-le") for line in text.split("\n")]
    for edit in sorted(edits, key=lambda each: list(each["range"]["start"].values())[::-1], reverse=True):
        (first, line), (last, _) = edit["range"]["start"].values(), edit["range"]["end"].values()
        lines[line] = lines[line][:2 * first] + edit["newText"].encode("utf-16-le") + lines[line][2 * last:]
    return b"\n\0".join(lines).decode("utf-16-le")


def interface(texts):
    for path, text in texts.items():
        (root / path).write_text(text)
    return subprocess.run([sys.argv[1], "interface", root / "fleet"], check=True, capture_output=True, text=True).stdout


def names(client):
    def about(method, words, **more):
        return client.about(method, "fleet/lamps.tlv", where(LAMPS, words), **more)

    def complete(text):
        client.type("fleet/new.tlv", text)
        items = client.about("completion", "fleet/new.tlv", where(text + "$", "$"))["items"]
        return {each["label"]: each for each in items}

    (root / "fleet").mkdir()
    before = interface(FLEET)
    client.open("fleet/lamps.tlv", LAMPS)
    assert client.codes("fleet/lamps.tlv") == ["W003"]
    for name, words in ("hue", "hue tint"), ("dark", "dark:"), ("shade", "shade\n"), ("bulb",) * 2, ("level",) * 2:
        changes = about("rename", words, newName="new_" + name)["changes"]
        after = {path: edited(text, changes.get(uri(path), [])) for path, text in FLEET.items()}
        assert interface(after) == re.sub(rf"\b{name}\b", "new_" + name, before), name
        interface(FLEET)
    for words, name in ("hue tint", "9x"), ("hue tint", "a // b"), ("hue tint", "lamp"), ("hue tint", "class"), \
            ("hue tint", "app_sess_hdr"), ("spare", "bulb"), ("dark:", "bright"), ("uint8", "other"):
        assert about("rename", words, newName=name) == -32803, (words, name)
    uses = about("references", "hue tint", context={"includeDeclaration": False})
    assert [each["uri"] for each in uses] == 3 * [uri("fleet/lamps.tlv")], uses
    lamp, light = client.about("documentSymbol", "fleet/lamps.tlv")
    assert lamp["selectionRange"] == span(0, 26, 0, 30) and light["children"][1]["name"] == "bulb", (lamp, light)
    (found,) = client.ask("workspace/symbol", query="LIGH")
    assert found["location"] == {"uri": uri("fleet/lamps.tlv"), "range": span(2, 7, 2, 12)}, found
    faulty = LAMPS.replace("hue tint", "huw tint")
    client.type("fleet/lamps.tlv", faulty)
    none, (action,) = (client.about("codeAction", "fleet/lamps.tlv", range=span(0, at, 0, at + 9)) for at in (0, 70))
    assert edited(faulty, action["edit"]["changes"][uri("fleet/lamps.tlv")]) == LAMPS and not none, action
    client.open("fleet/new.tlv", "")
    imports = 'import "hues🙂.tlv" import "lamps.tlv"\n'
    for text, some, none in (
            ("en", {"enum", "import"}, {"hue"}), ("/// en", set(), {"enum"}), ("struct s = 1 { uint8 ", set(), {"hue"}),
            ('import "', {"hues🙂.tlv", "common/"}, {"new.tlv"}), ('import "common/se', {"session.tlv"}, {"lamps.tlv"}),
            ("dynamic bytes b counted by ", {"uint16"}, {"int8"}), ("message m ", {"key"}, {"enum"}), (imports + "union u by ", {"hue"}, {"light", "uint8"}),
            (imports + "union u by hue h { 1, ", {"dark"}, {"hue"}), ("message m {\n  e b @", {"zero_count"}, {"hue"}),
            (imports + "union u by hue h { dark: l", {"light"}, {"lamp", "dark"}),
            (imports + "struct s = 1 { bytes[3] b  l", {"lamp"}, {"enum"})):
        labels = complete(text).keys()
        assert some <= labels and not none & labels, (text, labels)
    for name, path in ("light", "lamps.tlv"), ("app_sess_hdr", "common/session.tlv"):
        text = '%simport "hues🙂.tlv"\nmessage m { ' + name[:-1]
        item = complete(text % "")[name]
        after = edited(text % "", [item["textEdit"], *item["additionalTextEdits"]])
        assert after == text % f'import "{path}"\n' + name[-1], after
    client.type("fleet/new.tlv", 'import "common/session.tlv" message m { app_sess_hdr s }\n')
    assert client.about("prepareRename", "fleet/new.tlv", (0, 45)) == -32803
    client.server.kill()


def what_must_not_end_it(client):
    for content, code in (b"{nope", -32700), (b"\xff", -32700), (b"", -32700), (b"[]", -32600), (b"7", -32600), \
            (b'{"id": [], "method": "shutdown"}', -32600), (b'{"id": 1, "method": 2}', -32600), (b"[" * 99999, -32700):
        client.raw(content)
        assert client.error() == code, content[:40]
    client.raw(b"{}", "content-length:2 \r\nCONTENT-TYPE: x\r\n\r\n")
    for header in "Content-Type: x", "Content-Length: -1", "Content-Length: 99999999999999999999":
        client.raw(b"", header + "\r\n\r\n")
        assert client.error() == -32700, header
    client.raw(b" " * (17 << 20))
    assert client.error() == -32600

    position = {"line": 0, "character": 0}
    assert client.ask("textDocument/moniker") == -32601
    for params in {}, {"textDocument": 1}, {"textDocument": {"uri": "file:///%zz"}, "position": position}, \
            {"textDocument": {"uri": uri("acme/fans.tlv")}}, \
            {"textDocument": {"uri": uri("acme/fans.tlv")}, "position": {"line": "x", "character": -1}}:
        assert client.ask("textDocument/hover", **params) == -32602, params
    client.tell("textDocument/didChange", textDocument={"uri": uri("acme/fans.tlv")}, contentChanges=[])
    client.tell("textDocument/didOpen", textDocument=[])
    for needed in "contentChanges/0/text", "textDocument/uri":
        message = client.receive()
        assert message["method"] == "window/logMessage" and needed in message["params"]["message"], message
    client.tell("$/unknown")
    client.send(id=99, result=None)
    client.open("../../untitled", "")  # a family needs a directory with a name

    # What nobody would type: each answers, or at least the next request is answered.
    for text in "\0\r\r\n\u2028{", "x " * 50000, 'import "' + "a" * 5000 + '"', 'import "fans.tlv"', "{" * 9999:
        client.type("acme/fans.tlv", text)
        client.send(id=text[:9], method="shutdown/not")
        while client.receive().get("id") != text[:9]:
            pass


def main():
    signal.alarm(60)  # an answer that does not come is a fault too
    client = Client()
    conversation(client)
    what_must_not_end_it(client)
    assert client.ask("shutdown") is None
    assert client.ask("textDocument/hover") == -32600
    client.tell("exit")
    assert client.server.wait() == 0
    other = Client()
    other.ask("initialize")
    names(other)
    abrupt = Client()
    abrupt.server.stdin.close()
    assert abrupt.server.wait() == 1
    shutil.rmtree(root)


main()
