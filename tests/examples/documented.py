#!/usr/bin/env python3
"""documented.py ROOT INCLUDE;... LIBRARIES FAMILY_LIBRARY CC CXX PROGRAMS

Every example of the README, of the pages in docs/ and of the public headers compiles, as C and as C++, runs, and prints
what the comments beside it say; what pages show of a console happens, and what they link to is there. ROOT has them as
they were written; the rest is what was built of it, and of the family acme. Without PROGRAMS no console is tried.

An example is a fenced block of a page, or an indented one in a comment of a header that follows the word Example
or has statements in it. A comment behind a statement that prints, or alone on the line before one, is what it prints,
"..." standing for anything. Every example runs twice, the second time on input that is cut or wrong.
"""
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

root, includes, libraries, family, cc, cxx, programs = sys.argv[1:]
headers = os.path.join(root, "include/tlvmsg")

# What fragments refer to, and do not declare.
PRELUDE = """
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <tlvmsg/bounded/common.h>
#include <tlvmsg/bounded/ethernet.h>
#include <tlvmsg/bounded/voice.h>
#include <tlvmsg/forms.h>
#include <unistd.h>
static size_t cut(void) { return getenv("CUT") != NULL; }
static void set_led(unsigned slot, unsigned color) { printf("slot %u, color %u\\n", slot, color); }
static void handle(const uint8_t *bytes, size_t size) { printf("%zu bytes, the first %u\\n", size, bytes[0]); }
static void print(const char *name, const tlvmsg_type *type, const void *field) {
    printf("%s: %s%s\\n", name, type->name, field ? "" : ", nowhere");
}
#ifdef __cplusplus
#include <iostream>
static void log_error(std::string_view line) { std::cout << line << '\\n'; }
#else
static void log_error(const char *line) { puts(line); }
#endif
"""
LED = """
    zel_led_control led = {2, 5, 3};
    analogbri_led_control_req_message message;
    memset(&message, 0, sizeof message);
    message.led_control = led;
    size_t packet_len = 0;
    const uint8_t *packet = tlvmsg_encode_alloc_%s(&%s, &packet_len, NULL);
    packet_len -= cut();
"""
MESSAGE = LED % ("analogbri_led_control_req_message", "message")
KEYED = MESSAGE.replace("led;\n    size_t", "led;\n    message.session.msg_type = 17;\n    size_t")
BARE_LED = LED % ("zel_led_control", "led")
TYPE = '    const tlvmsg_type *type = tlvmsg_type_find("%s");\n'
SPAN = "    const uint8_t *first = packet;\n    {\n    std::span<const uint8_t> packet(first, packet_len);\n"
OTHER_FAMILY = """
    static tlvmsg_type taken;
    static const tlvmsg_type *types = &taken;
    static tlvmsg_family others = {TLVMSG_VERSION, "others", &types, 1, &types, 1, NULL};
    taken = *tlvmsg_descriptor_acme_fan();
    taken.name = "other_fan";
    if (cut() && !tlvmsg_register(&others, NULL)) abort();
"""
SETUP = {
    "dispatch.h": KEYED,
    "inspect.h": MESSAGE,
    "typed.h": MESSAGE + "    size_t size = packet_len;\n",
    "types.h": MESSAGE,
    "record.h": TYPE % "if_name" + "    static if_name name_record, *record = &name_record;\n    tlvmsg_fault fault;\n",
    "frames.h": MESSAGE + """
    tlvmsg_fault fault;
    size_t size;
    int ends[2];
    const uint8_t head[4] = {0, (uint8_t)(packet_len + cut())};
    if (pipe(ends) || write(ends[1], head, 4) != 4 || write(ends[1], packet, packet_len) < 0 || close(ends[1])) abort();
    const int fd = ends[0];
""",
    "register.h": OTHER_FAMILY,
    "forms/bytes.h": BARE_LED,
    "forms/diff.h": TYPE % "analogbri_led_control_req_message" + MESSAGE
                    + "    analogbri_led_control_req_message sent = message, received = message;\n"
                      "    received.led_control.color = 1;\n",
    "forms/guess.h": MESSAGE + "    const uint8_t *payload = packet;\n    size_t payload_len = packet_len;\n",
    "forms/hex.h": '    const char *text = cut() ? "type ifid\\n 0  0G | x" : "00 01";\n'
                   "    size_t length = strlen(text);\n",
    "forms/json.h": TYPE % "zel_led_control" + "    zel_led_control request = {2, 5, 3};\n",
    "forms/partial.h": TYPE % "zel_led_control" + BARE_LED,
    "forms/sample.h": TYPE % "zel_tib_vlan_stats_message" + "    tlvmsg_text_fault fault;\n",
    "forms/verdict.h": TYPE % "analogbri_led_control_req_message" + MESSAGE,
    "tlvmsg.hpp": MESSAGE + SPAN,
    "tlvmsg_dispatch.hpp": KEYED + SPAN,
    "tlvmsg_format.hpp": BARE_LED + SPAN,
    "tlvmsg_forms.hpp": MESSAGE + SPAN,
}
# What calls an example that is a function, or stands outside of one.
CALL = {"dispatch.h": "receive(packet, packet_len);", "tlvmsg.hpp": "if (sum_of(message) != 10) abort();"}
# An old version is refused as its example says.
BEFORE = {"version.h": "#undef TLVMSG_VERSION\n#ifdef CUT\n#define TLVMSG_VERSION 1001999\n#else\n"
                       "#define TLVMSG_VERSION 1002000\n#endif\n"}
# Whole programs are compiled as they stand, and the second time with a decoder that is handed less.
CUT_PROGRAM = PRELUDE + """
#define tlvmsg_decode_analogbri_led_control_req_message(in, size, ...) \\
    (tlvmsg_decode_analogbri_led_control_req_message)(in, (size) - cut(), __VA_ARGS__)
#define tlvmsg_decode_zel_led_control(in, size, ...) \\
    (tlvmsg_decode_zel_led_control)(in, (size) - cut(), __VA_ARGS__)
"""
FLAGS = ["-Wall", "-Werror", "-Wno-unused-variable", "-Wno-unused-but-set-variable", "-Wno-unused-function"]
FLAGS += ["-I" + directory for directory in includes.split(";")]
REQUIRED = {"tlvmsg_schema": ["tlvmsg_forms", "tlvmsg_inspect"]} # as pkg-config says
PRINTS = r"\b(puts|printf|log_error|cout|cerr)\b"


class Example:
    def __init__(self, name, line, text, language, options=(), libraries=()):
        self.name, self.line, self.text, self.language = name, line, text, language
        self.options, self.libraries = list(options), list(libraries)

    def fail(self, why):
        sys.exit(f"{self.name}:{self.line}: {why}\n{self.text}")

    def stated(self):
        """What comments say that it prints."""
        lines = self.text.splitlines()
        for before, line in zip([""] + lines, lines):
            if re.search(PRINTS, line):
                comment = re.search(r"(?://|/\*) (.*?)(?: \*/)?$", line) or re.match(r" *// (.*)$", before)
                if comment:
                    yield re.sub(r'^"(.*)"$', r"\1", comment[1])


def examples_of_page(page):
    name, text = str(page.relative_to(root)), page.read_text()
    command = r"    (?:cc|c\+\+) (.*?)\S+ \$\(pkg-config .* (\w+)\)$"
    blocks = list(re.finditer(r"^```(c|cpp)\n((?:.*\n)*?)```\n\n" + command, text, re.M))
    if len(blocks) != len(re.findall(r"^```c(pp)?$", text, re.M)):
        sys.exit(f"{name}: each block of C or C++ is followed by the command that compiles it")
    for block in blocks:
        yield Example(name, text.count("\n", 0, block.start()) + 2, block[2], block[1], block[3].split(),
                      [block[4], *REQUIRED.get(block[4], []), "osal_pelix"])


def check_links(page):
    for target in re.findall(r"\]\(([^)#]+)", page.read_text()):
        if "://" not in target and not (page.parent / target).exists():
            sys.exit(f"{page.relative_to(root)}: links to '{target}', which is not there")


def check_console(page, work):
    """The commands of a page run in turn in one directory; a block of schema before them is the file acme/fan.tlv."""
    text = page.read_text()
    directory = Path(work) / str(page.relative_to(root))
    (directory / "acme").mkdir(parents=True)
    for schema in re.findall(r"^```tlv\n(.*?)^```", text, re.M | re.S):
        (directory / "acme/fan.tlv").write_text(schema)
    environment = {**os.environ, "PATH": programs + ":" + os.environ["PATH"]}
    for block in re.finditer(r"^```console\n(.*?)^```", text, re.M | re.S):
        for command, stated in re.findall(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", block[1], re.M):
            status = re.search(r"^\[(\d+)\]\n\Z", stated, re.M)
            wanted = re.escape(stated[:status.start()] if status else stated)
            wanted = wanted.replace(re.escape("...\n"), "(.*\\n)*").replace(re.escape("..."), ".*")
            ended, printed = run(["bash", "-o", "pipefail", "-c", command], cwd=directory, env=environment)
            if ended != int(status[1] if status else 0) or not re.fullmatch(wanted, printed):
                sys.exit(f"{page.relative_to(root)}: '{command}' ends with {ended} and prints\n{printed}")
            print(f"{page.relative_to(root)}: {command}")


def examples_of_header(path):
    """Blocks of indented lines in comments, with the blank lines inside them."""
    name = str(path.relative_to(headers))
    block, introduction, before, blocks, announced = [], "", "", [], 0
    lines = path.read_text().splitlines() + [""]
    for number, line in enumerate(lines, 1):
        indented = re.match(r" \*     (.*)", line)
        if indented and before == " *" or block and (indented or line == " *"):
            block.append((number, indented[1] if indented else ""))
        else:
            text = "\n".join(code for _, code in block).rstrip() + "\n"
            is_announced = bool(block) and introduction.startswith(" * Example")
            if is_announced or re.search(r"[;{](\s*//.*)?$", text, re.M):
                blocks.append(Example(name, block[0][0], text, "cpp" if path.suffix == ".hpp" else "c"))
                announced += is_announced
            if line != " *": # a paragraph begins, or goes on
                introduction = line if block or before == " *" else introduction + line
            block = []
        before = line
    if announced != sum(line.startswith(" * Example") for line in lines):
        sys.exit(f"{name}: no example found where it says that there is one")
    return blocks


def program(example):
    place = f'#line {example.line} "{example.name}"\n'
    if example.name.endswith(".md"):
        return place + example.text
    own_includes = "".join(re.findall(r"^#include.*\n", example.text, re.M))
    text = re.sub(r"^#include.*\n", "\n", example.text, flags=re.M)
    own = f"#include <tlvmsg/{example.name}>\n" + ("#include <tlvmsg/common.hpp>\n#include <tlvmsg/voice.hpp>\n"
                                                   if example.language == "cpp" else "")
    before = own_includes + PRELUDE + own + BEFORE.get(example.name, "")
    setup = SETUP.get(example.name, "")
    end = "}" * (1 + setup.count("    {\n"))
    inside, outside = place + text, ""
    if re.match(r"(//.*\n)*(template|static bool)\b", text):
        inside, outside = CALL.get(example.name, ""), place + text
    return (f"{before}{outside}\nstatic void example(void) {{\n{setup}{inside}\n{end}\n"
            "int main(void) { example(); return 0; }\n")


def run(command, **options):
    done = subprocess.run(command, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)
    return done.returncode, done.stdout


def compile_program(example, source, options):
    compiler = [cxx, "-std=c++20"] if example.language == "cpp" else [cc, "-std=c11"]
    used = example.libraries or ["tlvmsg_schema", "tlvmsg_forms", "tlvmsg_inspect", "tlvmsg", "osal_pelix"]
    failed, said = run(compiler + FLAGS + example.options + options + [source, family, "-L" + libraries, "-Wl,-rpath,"
                       + libraries] + ["-l" + library for library in used] + ["-o", source + ".run"])
    if failed:
        example.fail("does not compile\n" + said)


def run_program(example, source, environment):
    failed, said = run([source + ".run"], env={**os.environ, **environment}, timeout=60)
    if failed:
        example.fail(f"ends with {failed}\n{said}")
    return said


def check(example, work):
    whole = example.name.endswith(".md")
    source, cut = os.path.join(work, "example." + example.language), os.path.join(work, "cut.h")
    Path(source).write_text(program(example))
    Path(cut).write_text(CUT_PROGRAM)
    compile_program(example, source, [])
    printed = run_program(example, source, {})
    if whole:
        compile_program(example, source, ["-include", cut])
    printed += run_program(example, source, {"CUT": "1"})
    refusal = re.search(r'#error "(.*)"', example.text)
    if refusal and refusal[1] not in run([cc, "-DCUT", "-fsyntax-only", source] + FLAGS)[1]:
        example.fail("is not refused")
    if example.language == "c" and not whole:
        failed, said = run([cxx, "-std=c++20", "-x", "c++", "-fsyntax-only", source] + FLAGS)
        if failed:
            example.fail("does not compile as C++\n" + said)
    stated = list(example.stated())
    print(f"{example.name}:{example.line}: {len(stated)} lines printed as stated")
    for line in stated:
        wanted = re.escape(line).replace(re.escape("..."), ".*")
        if not re.search(f"^{wanted}$", printed, re.M):
            example.fail(f"does not print\n  {line}\nbut\n{printed}")


def main():
    pages = [Path(root) / "README.md", *sorted((Path(root) / "docs").rglob("*.md"))]
    for page in [*pages, *Path(root).glob("*.md")]:
        check_links(page)
    examples = [example for page in pages for example in examples_of_page(page)]
    for path in sorted(Path(headers).rglob("*.h*")):
        examples += examples_of_header(path)
    with tempfile.TemporaryDirectory() as work:
        for page in pages if programs else []:
            check_console(page, work)
        for example in examples:
            check(example, work)


main()
