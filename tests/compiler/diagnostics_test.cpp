// Every fault of the catalogue has a bad example in diagnostics/: a file, or a directory of files, with all
// that is printed about it beside it. Paths in there are relative to that directory.
#include "base/suggest.h"
#include "reporter.h"
#include "support.h"

#include <algorithm>
#include <set>

namespace tlvc {
namespace {

namespace fs = std::filesystem;

const fs::path examples = data_directory / "diagnostics";

std::vector<std::string> example_files(const std::string &name) {
    if (fs::is_regular_file(name + ".tlv")) {
        return {name + ".tlv"};
    }
    std::vector<std::string> files;
    for (const auto &each : fs::recursive_directory_iterator(name)) {
        if (each.path().extension() == ".tlv") {
            files.push_back(each.path().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

class Example : public testing::TestWithParam<Fault> {
protected:
    void SetUp() override { fs::current_path(examples); }
};

TEST_P(Example, is_reported_as_expected) {
    const std::string name = code(GetParam());
    ASSERT_TRUE(fs::exists(name + ".tlv") || fs::exists(name)) << "no bad example for " << name;
    Compiled compiled(example_files(name));
    EXPECT_EQ(compiled.schema, nullptr);
    std::vector<std::string> codes = compiled.codes();
    EXPECT_NE(std::find(codes.begin(), codes.end(), name), codes.end());
    EXPECT_EQ(render(compiled.faults, compiled.sources, false), read_file(name + ".txt"));
}

std::vector<Fault> all_faults() {
    std::vector<Fault> faults;
    for (const CatalogueEntry &each : catalogue()) {
        faults.push_back(each.fault);
    }
    return faults;
}

INSTANTIATE_TEST_SUITE_P(Catalogue, Example, testing::ValuesIn(all_faults()),
                         [](const auto &instance) { return code(instance.param); });

TEST(Catalogue, has_an_entry_for_every_example) {
    std::set<std::string> codes;
    for (const CatalogueEntry &each : catalogue()) {
        codes.insert(code(each.fault));
    }
    for (const auto &each : fs::directory_iterator(examples)) {
        EXPECT_TRUE(codes.contains(each.path().stem().string())) << each.path();
    }
}

TEST(Phases, each_reports_all_its_faults_and_stops_the_next) {
    SchemaDirectory directory;
    std::string text = "enum kind 1362\n"             // syntax
                       "struct a = 5 { nowhere x }\n" // an undefined type, a tag out of range
                       "message { kind k }\n"         // syntax
                       "bytes name[0\n"               // syntax
                       "enum fine = 1363\n";
    EXPECT_EQ(Compiled({directory.add("voice/a.tlv", text)}).codes(),
              (std::vector<std::string>{"T005", "T005", "T005"}));
    text = "struct a = 5 { nowhere x }\nstruct b = 6 { elsewhere y }\n";
    EXPECT_EQ(Compiled({directory.add("voice/b.tlv", text)}).codes(),
              (std::vector<std::string>{"T012", "T012"}));
    text = "struct a = 5 { uint8 x  uint8 x }\nbytes c[0]\n";
    EXPECT_EQ(Compiled({directory.add("voice/c.tlv", text)}).codes(),
              (std::vector<std::string>{"T016", "T018", "T024"}));
}

TEST(Phases, syntax_faults_of_all_files_come_in_file_order) {
    SchemaDirectory directory;
    directory.add("voice/imported.tlv", "enum a\nenum b\n");
    std::string second = directory.add("voice/second.tlv", "enum x\n");
    std::string first = directory.add("voice/first.tlv", "import \"imported.tlv\"\nenum y\n");
    Compiled compiled({first, second});
    std::vector<std::string> places;
    for (const Diagnostic &fault : compiled.faults.in_file_order()) {
        places.push_back(fs::path(compiled.sources.path(fault.span.file)).filename());
    }
    EXPECT_EQ(places, (std::vector<std::string>{"first.tlv", "imported.tlv", "imported.tlv", "second.tlv"}));
}

TEST(Rendering, caret_stands_under_the_character_whatever_precedes_it) {
    Sources sources;
    uint32_t file = sources.add("a.tlv", "// first\n\t\xC3\xA9\x1B[1m bad\r\nlast");
    Diagnostics faults;
    faults.report(Fault::UndefinedType, {file, 17, 20}, "bad");
    faults.report(Fault::UnexpectedToken, {file, 26, 26}, "x", "y");
    EXPECT_EQ(render(faults, sources, false), "a.tlv:2:8: error[T012]: type 'bad' is not defined\n"
                                              "    2 |  \xC3\xA9 [1m bad\n"
                                              "      |        ^~~\n"
                                              "a.tlv:3:5: error[T005]: expected x, found y\n"
                                              "    3 | last\n"
                                              "      |     ^\n"
                                              "2 errors\n");
}

TEST(Rendering, colour_changes_nothing_else) {
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

TEST(Suggestion, is_the_nearest_name_or_none) {
    EXPECT_EQ(tlvmsg::base::nearest("zel_led_colour", {"zel_led_control", "zel_led_color", "led_color"}),
              "zel_led_color");
    EXPECT_EQ(tlvmsg::base::nearest("unit8", {"int8", "uint8", "uint16"}), "uint8") << "a swap is one slip";
    EXPECT_EQ(tlvmsg::base::nearest("ab", {"xy", "completely_different"}), "");
    EXPECT_EQ(tlvmsg::base::nearest("slot_c", {"slot_b", "slot_a", "slot_d"}), "slot_a")
        << "whatever the order of the candidates";
    EXPECT_EQ(tlvmsg::base::nearest("x", {}), "");
}

} // namespace
} // namespace tlvc
