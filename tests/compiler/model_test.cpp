#include "compiler/model/wire_description.h"
#include "compiler/text/reporter.h"
#include "support.h"

namespace tlvc {
namespace {

// What no element can be larger than; schema/interface.txt has the sizes of all else.
TEST(Model, LimitsSizesToWhatALengthCanSay) {
    SchemaDirectory directory;
    Compiled compiled({directory.add("voice/leds.tlv", R"(
struct control = 1002 { char a  uint16 b  int32 c  uint64 d  uint64 e }
dynamic array few of control counted by uint8
struct few_holder = 1003 { uint8 count  few controls }
dynamic array lots of few_holder counted by uint16
dynamic bytes long_text counted by uint32
array wide of control[2000]
struct wide_holder = 1006 { wide items }
message wides { wide_holder first  wide_holder second }
)")});
    ASSERT_TRUE(compiled.schema);
    const struct {
        const char *type;
        uint64_t min;
        uint64_t max;
        uint64_t max_count;
    } cases[] = {
        {"control", 47, 47, 0},
        {"few_holder", 19, 4 + 5 + 10 + 255 * 47, 0},
        {"lots", 10, 65539, (65539 - 10) / 19},
        {"long_text", 11, 65539, 65528},
        {"wide", 10, 10 + 1394 * 47, 1394},
        {"wides", 28, 28 + 2 * 1394 * 47, 0},
    };
    for (const auto &expected : cases) {
        const Type &type = compiled.type(expected.type);
        EXPECT_EQ(type.min_size, expected.min) << expected.type;
        EXPECT_EQ(type.max_size, expected.max) << expected.type;
        EXPECT_EQ(type.max_count, expected.max_count) << expected.type;
    }
}

// What else changes it, tests of compare have.
TEST(Model, FingerprintsLeaveOutWhatPeersCannotSee) {
    SchemaDirectory directory;
    const Compiled one({directory.add("acme/a.tlv", R"(
enum state = 1001 { off = 0  on = 1 }
union detail by state which { on, 3: uint8 low  2: state high @end_by_length }
dynamic bytes notes counted by uint16
struct part = 1002 { uint16 count  notes notes @zero_count  state which  detail detail }
message report { part part }
)")});
    const std::string types = directory.add("other/types.tlv", R"(//! Types.
/// A mode.
enum mode = 1001 { unknown = 7 }
dynamic bytes texts counted by uint16
)");
    const Compiled other({directory.add("other/b.tlv", R"(import "types.tlv"
message told { piece first }
/// A piece.
struct piece = 1002 { uint16 count  texts text @zero_count  mode by  choice choice }
union choice by mode by in piece { 2: mode second @end_by_length  3, 1: uint8 first }
)"),
                          types});
    ASSERT_TRUE(one.schema && other.schema);
    constexpr std::pair<const char *, const char *> pairs[] = {
        {"state", "mode"}, {"detail", "choice"}, {"notes", "texts"}, {"part", "piece"}, {"report", "told"}};
    std::set<uint64_t> fingerprints;
    for (const auto &[name, renamed] : pairs) {
        EXPECT_EQ(one.type(name).fingerprint, other.type(renamed).fingerprint) << name;
        fingerprints.insert(one.type(name).fingerprint);
    }
    EXPECT_EQ(fingerprints.size(), std::size(pairs));
}

// However long a chain is, or wide a nest, the stack holds and time grows with the text; and one cause is one fault.
TEST(Model, IsMadeOfAnyChainAndNest) {
    SchemaDirectory directory;
    std::string chain;
    std::string circle = "struct first = 1001 { second m }\n";
    for (int i = 0; i < 60'000; ++i) {
        chain += fmt::format("struct s{0} = {1} {{ a{0} m }}\narray a{0} of s{2}[1]\n", i, 1001 + i, i + 1);
        circle +=
            fmt::format("struct c{0} = {1} {{ c{2} m  c{3} n }}\n", i, 1002 + i, (i + 1) % 60'000, i / 2);
    }
    const std::string last = "struct s60000 = 65000 { uint8 x }\n";
    EXPECT_EQ(Compiled({directory.add("chain/a.tlv", chain + last)}).codes(),
              std::vector<std::string>{"T045"});
    EXPECT_EQ(Compiled({directory.add("missing/a.tlv", chain)}).codes(), std::vector<std::string>{"T012"});
    EXPECT_EQ(Compiled({directory.add("circle/a.tlv", circle)}).codes(),
              (std::vector<std::string>{"T012", "T037"}));

    OpenTexts texts;
    for (int i = 0; i < 30'002; ++i) {
        texts[directory.path(fmt::format("imports/i{}.tlv", i))] =
            fmt::format("import \"i{}.tlv\"\nstruct i{} = {} {{ uint8 a }}\n", i + 1, i, 1001 + i);
    }
    texts[directory.path("imports/i30002.tlv")] = "enum e = 60000\n";
    Sources sources;
    Diagnostics faults;
    const auto imported =
        compile(load({directory.path("imports/i0.tlv").string()}, sources, faults, library, {}, texts),
                library, faults);
    ASSERT_TRUE(imported) << render(faults, sources, false);
    EXPECT_EQ(imported->families[0].types.size(), 30'003u);

    std::string nest =
        "enum k = 1001\ndynamic bytes b counted by uint8\nstruct l0 = 1002 { uint8 count  b bytes }\n";
    for (int level = 1; level <= 6; ++level) {
        nest += fmt::format("union u{0} by k s {{ ", level);
        for (int i = 0; i < 40; ++i) {
            nest += fmt::format("{}: l{} m{} ", i, level - 1, i);
        }
        nest += fmt::format("}}\nstruct l{0} = {1} {{ k s  u{0} u }}\n", level, 1002 + level);
    }
    const Compiled nested({directory.add("nest/a.tlv", nest)});
    ASSERT_TRUE(nested.schema);
    EXPECT_TRUE(nested.type("l6").holds_blocks && nested.type("l6").holds_dynamic_bytes);
    EXPECT_FALSE(nested.type("l6").wraps);
    const std::vector<std::string> pitfalls = describe_pitfalls(nested.type("l6"));
    EXPECT_NE(pitfalls.at(0).find("u.m0.u.m0.u.m0.u.m0.u.m0.u.m0.bytes.bytes"), std::string::npos)
        << pitfalls.at(0);
}

// One line a family: what it uses, then its types, each section after its own text.
std::string outline(const Schema &schema) {
    std::string out;
    for (const Family *family : schema.in_order) {
        out += family->name + (family->doc.empty() ? "" : " \"" + family->doc[0] + "\"");
        for (const Family *used : family->uses) {
            out += " <" + used->name + ">";
        }
        const Section *section = nullptr;
        for (const Type *type : family->types) {
            if (std::exchange(section, type->section) != type->section && !section->doc.empty()) {
                out += " [" + section->doc[0] + "]";
            }
            out += " " + type->name;
        }
        out += "\n";
    }
    return out;
}

TEST(Model, OrderDependsOnTheSchemaAlone) {
    SchemaDirectory directory;
    directory.add("zcommon/session.tlv", "//! Sessions.\nenum session = 1001\n");
    const std::string text = directory.add("zcommon/family.tlv", "//! Shared.\n");
    std::string alarm =
        directory.add("alarm/alarms.tlv", "import \"../voice/b.tlv\"\nmessage alarm { led led }\n");
    std::string bell = directory.add("bell/bells.tlv", "enum bell = 1002\n");
    std::string zulu = directory.add("zulu/z.tlv", "enum zulu = 1008\n");
    std::string voice_b =
        directory.add("voice/b.tlv", "//! Leds.\n"
                                     "import \"../zcommon/session.tlv\"\n"
                                     "message m { led led  session opening }\n"
                                     "enum loose = 1003\n"
                                     "struct led = 1004 { uint8 count  leds leds  color tint }\n"
                                     "dynamic array leds of color counted by uint8\n"
                                     "enum color = 1005\n");
    std::string voice_a = directory.add("voice/a.tlv", "//! Groups.\n"
                                                       "import \"./../voice/b.tlv\"\n"
                                                       "struct group = 1006 { led led }\n"
                                                       "enum last = 1007\n");
    const std::string expected = "bell bell\n"
                                 "zcommon \"Shared.\" [Sessions.] session\n"
                                 "voice <zcommon> [Leds.] color leds led m loose [Groups.] group last\n"
                                 "alarm <voice> alarm\n"
                                 "zulu zulu\n";
    for (const auto &files : {std::vector{alarm, bell, voice_a, zulu, text},
                              std::vector{text, zulu, voice_a, voice_b, bell, alarm, bell}}) {
        Compiled compiled(files);
        ASSERT_TRUE(compiled.schema);
        EXPECT_EQ(compiled.sources.size(), 7u) << "each file is loaded once";
        EXPECT_EQ(outline(*compiled.schema), expected);
    }
}

} // namespace
} // namespace tlvc
