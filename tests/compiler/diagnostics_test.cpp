// Every fault of the catalogue has a bad example in diagnostics/: a file, or a directory of files, with what is
// said about it beside it. Paths in there are relative to that directory.
#include "base/suggest.h"
#include "compiler/checks/checks.h"
#include "compiler/text/reporter.h"
#include "support.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>
#include <sstream>

namespace tlvc {
namespace {

namespace fs = std::filesystem;

const fs::path examples = data_directory / "diagnostics";

// A report without the lines that it quotes and the number of faults: how many characters are marked stands in
// brackets behind the message.
std::string brief(const std::string &report) {
    std::istringstream lines(report);
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        const size_t bar = line.find_first_not_of(" 0123456789");
        const size_t mark = line.find('^', bar);
        if (line.at(bar) != '|') {
            text += std::isdigit(static_cast<unsigned char>(line[0])) != 0 ? "" : line + "\n";
        } else if (line.find_first_not_of(" |") == mark) {
            text.insert(text.size() - 1, fmt::format(" [{}]", line.size() - mark));
        }
    }
    return text;
}

class Example : public testing::TestWithParam<const Fault *> {
protected:
    void SetUp() override { fs::current_path(examples); }
};

TEST_P(Example, IsReportedAsExpected) {
    const std::string name(GetParam()->code);
    ASSERT_TRUE(fs::exists(name + ".tlv") || fs::exists(name)) << "no bad example for " << name;
    Compiled compiled({fs::exists(name) ? name : name + ".tlv"});
    if (compiled.schema) {
        check_own_tags(*compiled.schema, compiled.faults);
        find_warnings(*compiled.schema, compiled.sources, library, compiled.faults);
    }
    EXPECT_EQ(compiled.faults.any(), GetParam()->severity() == Severity::Error);
    std::vector<std::string> codes = compiled.codes();
    EXPECT_NE(std::find(codes.begin(), codes.end(), name), codes.end());
    EXPECT_EQ(brief(render(compiled.faults, compiled.sources, false)), read_file(name + ".txt"));
}

INSTANTIATE_TEST_SUITE_P(Catalogue, Example, testing::ValuesIn(fault::all),
                         [](const auto &instance) { return std::string(instance.param->code); });

TEST(Catalogue, HasAnEntryForEveryExample) {
    std::set<std::string_view> codes;
    for (const Fault *each : fault::all) {
        EXPECT_TRUE(codes.insert(each->code).second) << each->code;
    }
    for (const auto &each : fs::directory_iterator(examples)) {
        EXPECT_TRUE(codes.contains(each.path().stem().string())) << each.path();
    }
}

TEST(Report, StopsWhereNobodyReadsOn) {
    std::string text;
    for (int i = 0; i < 60; ++i) {
        text += "enum e\n";
    }
    const Parsed parsed(text);
    const std::string shown = render(parsed.faults, parsed.sources, false);
    EXPECT_NE(shown.find("test.tlv:51:1: "), shown.npos) << shown;
    EXPECT_EQ(shown.find("test.tlv:52:1: "), shown.npos);
    EXPECT_TRUE(shown.ends_with("\nand 10 more\n60 errors\n"));
}

// What is reported of each, and no more: nothing follows from what could not be read, found or imported.
TEST(Phases, AllReportWhatTheyFindAndNothingThatFollowsFromOtherFaults) {
    const std::pair<const char *, const char *> cases[] = {
        // Readable declarations beside unreadable ones, which they name.
        {"enum kind 1362\nstruct a = 5 { kind x  nowhere y }\nmessage { kind k }\nbytes name[0\nbytes c[0]\n",
         "T005 T016 T012 T005 T005 T024"},
        // A number, a union and an array that are not what they look like.
        {"enum kind = 0x5g\nstruct s = 1001 { kind k  choice c  uint8 n  names names }\n"
         "union choice by kind k { on: s_gone x  2: uint8 x  2: uint8 y }\n"
         "dynamic bytes names counted by gone\nstruct t = 1001 { choice c  uint8 d  uint8 d }\n",
         "T003 T012 T012 T015"},
        {"enum kind = 1001 { on = 1 }\nunion u by kind k { off: uint8 x  1: uint8 y  0: uint8 z }\n", "T041"},
        {"union u by a which { b: uint8 x  c: uint8 y }\nenum a = 1001 { b = }\n", "T005"},
        {"enum a = 1001 { b = 1 c = 2 /// no\n }\nunion u by a which { b: uint8 x  c: uint8 y }\n", "T004"},
        {"import \"gone.tlv\"\nstruct a = 5 { nowhere x }\n", "T008 T016"},
        {"struct a = 1001 { uint8 x  uint8\n uint8 y  uint8 z }\nbytes b[0]\n", "T005 T024"}, // no pairs
        {"\"gone.tlv\"\nstruct a = 5 { nowhere x }\n", "T005 T016"},
        {"import gone\nstruct a = 5 { nowhere x }\n", "T005 T016"},
        {"strcut a = 1001 { uint8 x }\nmessage m { a a  a a }\nmessage n { n n }\n", "T005 T020 T037"},
        {"enum a = 1001 { b = }\nstruct c = 1002 { a a }\nstruct d = 1002 { a a }\n", "T005 T015"},
        {"struct a = 1001 { uint8 b[4] }\nbytes large[65535]\narray many of large_one[2]\n"
         "struct large_one = 1002 { large_two a  large_two b }\nstruct large_two = 1003 { huge h }\n"
         "array huge of tiny[40000]\nstruct tiny = 1004 { uint8 x }\nenum a = 1005\n",
         "T005 T014"},
        // What is written as in C hides nothing behind it.
        {"struct a { uint32_t x; bool y; };\nstruct b = 0x9C41 { string z; nowhere w[2]; u8 v; }\n"
         "enum c = 40000 {\n    off,\n    on\n};\nenum d = 40001 { off = 0, on = 1, }\n",
         "T005 T012 T005 T012 T012 T005 T012 T005"},
        {"//\n#include <a.h>\n#include \"b.h\"\nimport <c.tlv>;\nimport c/d.tlv\nstruct a = 40000 { nowhere "
         "x "
         "}\n",
         "T005 T005 T005 T005 T005"},
        {"struct a = 40000 {\n    bytes b[16]\n    uint8 import\n}\nbytes c[1]\nbytes d[1]\n", "T005"},
        // Arrays in place, beside bodies that are not closed.
        {"struct a = 0x9C40 { uint8[4] b  bytes[0] c }\nmessage m { bytes[4] x }\nenum k = 40001\n"
         "union u by k k1 { 1: bytes[4] x }\nstruct d = 40002 {\n uint16 n\n dynamic bytes e counted by "
         "uint8\n}\n"
         "bytes g_i_array[4]\nstruct g = 40003 { bytes[4] h as class  bytes[4] i }\n",
         "T022 T024 T021 T023 T028 T017 T014"},
        {"struct a = 40000 {\n uint8 count\ndynamic bytes b counted by uint8\nenum c = 40001 {\n d = 1\n"
         "dynamic bytes e counted by uint8\nstruct f = 40002 {\n uint8 g\ndynamic array h of f counted by "
         "uint8\n"
         "struct i = 40003 {\n uint8 count\n dynamic bytes j\n}\n",
         "T006 T006 T006 T005"},
    };
    SchemaDirectory directory;
    for (const auto &[text, expected] : cases) {
        std::string found;
        for (const std::string &each : Compiled({directory.add("acme/a.tlv", text)}).codes()) {
            found += (found.empty() ? "" : " ") + each;
        }
        EXPECT_EQ(found, expected) << text;
    }
}

// Whoever imports is newer than what he imports, and what is named last is newer than the rest.
TEST(Phases, TheNewerFileIsBlamedForWhatTwoDeclare) {
    SchemaDirectory directory;
    const std::string released = directory.add("acme/released.tlv", "enum a = 1001\nenum b = 1002\n");
    const std::string own = directory.add("own/own.tlv", "enum own = 1001\nenum b = 1003\n");
    const std::string user =
        directory.add("own/user.tlv", "import \"../acme/released.tlv\"\nenum own = 1001\nenum b = 1003\n");
    for (const std::vector<std::string> &files : {std::vector{released, own}, std::vector{user}}) {
        Compiled compiled(files);
        ASSERT_EQ(compiled.codes().size(), 2u);
        for (const Diagnostic &each : compiled.faults.in_file_order()) {
            EXPECT_EQ(compiled.sources.path(each.span.file), files.back());
            EXPECT_EQ(compiled.sources.path(each.notes.at(0).span.file), released);
        }
    }
}

TEST(Phases, SyntaxFaultsOfAllFilesComeInFileOrder) {
    SchemaDirectory directory;
    directory.add("acme/imported.tlv", "enum a\nenum b\n");
    std::string second = directory.add("acme/second.tlv", "enum x\n");
    std::string first = directory.add("acme/first.tlv", "import \"imported.tlv\"\nenum y\n");
    Compiled compiled({first, second});
    std::vector<std::string> places;
    for (const Diagnostic &fault : compiled.faults.in_file_order()) {
        places.push_back(fs::path(compiled.sources.path(fault.span.file)).filename());
    }
    EXPECT_EQ(places, (std::vector<std::string>{"first.tlv", "imported.tlv", "imported.tlv", "second.tlv"}));
}

TEST(Rendering, CaretStandsUnderTheCharacterWhateverPrecedesIt) {
    Sources sources;
    const std::string wide(300, 'w');
    uint32_t file = sources.add("a\x07.tlv", "\xEF\xBB\xBF// first\n\t\xC3\xA9\x1B[1m bad\r\nlast" + wide);
    Diagnostics faults;
    faults.report(fault::undefined_type, {file, 17, 20}, "bad");
    // NOLINTNEXTLINE(misc-misleading-bidirectional): what turns a line around is told by its number
    faults.report(fault::unexpected_token, {file, 322, 326}, "\xE2\x80\xAE", "\xC2\x9B").help("\xFF");
    EXPECT_EQ(render(faults, sources, false),
              "a<U+0007>.tlv:2:8: error[T012]: type 'bad' is not defined\n"
              "    2 |  \xC3\xA9<U+001B>[1m bad\n"
              "      |               ^~~\n"
              "a<U+0007>.tlv:3:301: error[T005]: expected <U+202E>, found <U+009B>\n"
              "    3 | ..." +
                  wide.substr(0, 104) + "\n      | " + std::string(103, ' ') +
                  "^~~~\n  help: <FF>\n2 errors\n");
}

TEST(Rendering, ColourChangesNothingElse) {
    fs::current_path(examples);
    Compiled compiled({"T012.tlv"});
    std::string coloured = render(compiled.faults, compiled.sources, true);
    std::string stripped;
    for (size_t i = 0; i < coloured.size(); ++i) {
        if (coloured[i] == '\x1b') {
            i = coloured.find('m', i);
        } else {
            stripped += coloured[i];
        }
    }
    EXPECT_NE(coloured, stripped);
    EXPECT_EQ(stripped, render(compiled.faults, compiled.sources, false));
}

TEST(Suggestion, IsTheNearestNameOrNone) {
    EXPECT_EQ(tlvmsg::base::nearest("zel_led_colour", {"zel_led_control", "zel_led_color", "led_color"}),
              "zel_led_color");
    EXPECT_EQ(tlvmsg::base::nearest("unit8", {"int8", "uint8", "uint16"}), "uint8") << "a swap is one slip";
    EXPECT_EQ(tlvmsg::base::nearest("ab", {"xy", "completely_different"}), "");
    EXPECT_EQ(tlvmsg::base::nearest("slot_c", {"slot_b", "slot_a", "slot_d"}), "slot_a")
        << "whatever the order of the candidates";
    EXPECT_EQ(tlvmsg::base::nearest("Uint16", {"int16", "uint16"}), "uint16") << "whatever the case";
    EXPECT_EQ(tlvmsg::base::nearest("x", {}), "");
}

} // namespace
} // namespace tlvc
