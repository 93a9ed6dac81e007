#include "compiler/model/wire_layout.h"
#include "compiler/text/reporter.h"
#include "support.h"

namespace tlvc {
namespace {

using Role = Member::Role;

struct Sizes {
    const char *type;
    uint64_t min;
    uint64_t max;
};

TEST(Model, knows_the_encoded_sizes) {
    SchemaDirectory directory;
    Compiled compiled({directory.add("voice/leds.tlv", R"(
enum color = 1001
struct control = 1002 { char a  uint16 b  int32 c  uint64 d  color e }
message request { control first  control second }
array elements of control[3]
array colors of color[2]
array words of uint16[512]
array longs of int64[4]
bytes one[1]
bytes many[1900]
dynamic array few of control counted by uint8
dynamic array lots of few_holder counted by uint16
struct few_holder = 1003 { uint8 count  few controls }
dynamic bytes short_text counted by uint8
dynamic bytes long_text counted by uint32
union value by color kind { 1: uint8 octet  2, 3: control control }
struct choice = 1004 { color kind  value value }
struct lots_holder = 1005 { uint16 count  lots all }
array wide of control[2000]
struct wide_holder = 1006 { wide items }
message wides { wide_holder first  wide_holder second }
)")});
    ASSERT_TRUE(compiled.schema);
    const uint64_t few_max = 10 + 255 * 47;
    const uint64_t few_holder_max = 4 + 5 + few_max;
    for (const Sizes &expected : std::initializer_list<Sizes>{
             {"char", 5, 5},
             {"int64", 12, 12},
             {"color", 12, 12},
             {"control", 47, 47},
             {"request", 94, 94},
             {"elements", 10, 10 + 3 * 47},
             {"colors", 10, 10 + 2 * 12},
             {"words", 10, 10 + 2 * 512},
             {"longs", 10, 10 + 8 * 4},
             {"one", 11, 11},
             {"many", 11, 1910},
             {"few", 10, few_max},
             {"few_holder", 19, few_holder_max},
             {"lots", 10, 65539},
             {"short_text", 11, 266},
             {"long_text", 11, 65539},
             {"wide", 10, 10 + 1394 * 47},
             {"wide_holder", 14, 14 + 1394 * 47},
             {"wides", 28, 28 + 2 * 1394 * 47},
             {"value", 0, 47},
             {"choice", 16, 63},
             {"lots_holder", 20, 65539},
         }) {
        const Type &type = compiled.type(expected.type);
        EXPECT_EQ(type.min_size, expected.min) << expected.type;
        EXPECT_EQ(type.max_size, expected.max) << expected.type;
    }
    EXPECT_EQ(compiled.type("wide").max_count, 1394u);
    EXPECT_EQ(compiled.type("long_text").max_count, 65528u);
    EXPECT_EQ(compiled.type("short_text").max_count, 255u);
    EXPECT_EQ(compiled.type("words").max_count, 512u);
    EXPECT_TRUE(compiled.type("control").fixed_size());
    EXPECT_FALSE(compiled.type("choice").fixed_size());
}

TEST(Model, tells_kinds_roles_and_attributes) {
    SchemaDirectory directory;
    Compiled compiled({directory.add("voice/leds.tlv", R"(
/// What follows.
/// In short.
enum kind = 1001
array words of int16[8]
array kinds of kind[8]
bytes name[4]
dynamic bytes text counted by uint16
dynamic array list of holder counted by uint8
struct holder = 1002 { kind which  value value }
union value by kind which {
    7: kind        first @end_by_length
    /// Two values.
    8, 9: uint8    second
}
union shared by kind which in home { 0: uint8 zero }
struct home = 1003 {
    kind    mode
    kind    which
    shared  value
    uint8   length
    name    name
    uint16  count
    text    text @zero_count
    uint8   count
    /// Of holders.
    list    list
}
)")});
    ASSERT_TRUE(compiled.schema);
    const std::pair<const char *, Kind> kinds[] = {
        {"words", Kind::PackedArray}, {"kinds", Kind::ElementArray},   {"name", Kind::ByteArray},
        {"text", Kind::DynamicBytes}, {"list", Kind::DynamicElements}, {"value", Kind::Union},
        {"holder", Kind::Structure},  {"kind", Kind::Enumeration},     {"uint8", Kind::Scalar}};
    for (auto [name, kind] : kinds) {
        EXPECT_EQ(compiled.type(name).kind, kind) << name;
    }
    const Type &home = compiled.type("home");
    std::vector<Role> roles;
    for (const Member &member : home.members) {
        roles.push_back(member.role);
    }
    EXPECT_EQ(roles, (std::vector<Role>{Role::Own, Role::SelectorOfNext, Role::Own, Role::Own, Role::Own,
                                        Role::CountOfNext, Role::Own, Role::CountOfNext, Role::Own}));
    EXPECT_TRUE(home.members[6].zero_count);
    EXPECT_FALSE(home.members[8].zero_count);
    EXPECT_EQ(home.members[8].doc, std::vector<std::string>{"Of holders."});
    EXPECT_EQ(home.tag, 1003);

    EXPECT_EQ(compiled.type("kind").doc, (std::vector<std::string>{"What follows.", "In short."}));
    EXPECT_EQ(compiled.type("words").count, &compiled.type("uint16"));
    EXPECT_EQ(compiled.type("words").capacity, 8u);
    EXPECT_EQ(compiled.type("list").count, &compiled.type("uint8"));
    EXPECT_EQ(compiled.type("list").element, &compiled.type("holder"));
    EXPECT_EQ(compiled.type("shared").enclosing, &home);
    EXPECT_EQ(compiled.type("shared").selector_name, "which");
    const Type &value = compiled.type("value");
    ASSERT_EQ(value.alternatives.size(), 2u);
    EXPECT_TRUE(value.alternatives[0].end_by_length);
    EXPECT_EQ(value.alternatives[1].values, (std::vector<uint32_t>{8, 9}));
    EXPECT_EQ(value.alternatives[1].doc, std::vector<std::string>{"Two values."});
}

// Of each field "name:type" and where it is stored, then the members' paths.
std::string record(const Type &type) {
    constexpr const char *storage[] = {"", "[]", "*", "|"};
    std::string out;
    for (const Field &field : type.fields) {
        out +=
            fmt::format("{}:{}{} ", field.name, field.type->name, storage[static_cast<int>(field.storage)]);
    }
    for (const Member &member : type.members) {
        out += "<" + joined(member.path) + ">";
    }
    return out;
}

TEST(Model, knows_the_records) {
    SchemaDirectory directory;
    Compiled compiled({directory.add("voice/leds.tlv", R"(
enum kind = 1001
array kinds of kind[8]
bytes name[4]
dynamic bytes text counted by uint16
union value by kind which { 7: kind first  8: uint8 second }
union shared by kind which in home { 0: uint8 zero }
struct home = 1003 {
    kind    which
    shared  value
    /// Characters.
    uint16  count
    /// What it says.
    text    text
    kind    which
    value   other
    name    name
    kinds   kinds
}
)")});
    ASSERT_TRUE(compiled.schema);
    EXPECT_EQ(record(compiled.type("kind")), "");
    EXPECT_EQ(record(compiled.type("kinds")), "count:uint16 items:kind[] ");
    EXPECT_EQ(record(compiled.type("name")), "count:uint16 bytes:uint8[] ");
    EXPECT_EQ(record(compiled.type("text")), "count:uint16 bytes:uint8* ");
    EXPECT_EQ(record(compiled.type("value")), "which:kind :value| ");
    EXPECT_EQ(record(compiled.type("shared")), "");
    EXPECT_EQ(record(compiled.type("home")),
              "which:kind :shared| text:text other:value name:name kinds:kinds "
              "<which><><text.count><text><other.which><other><name><kinds>");
    EXPECT_EQ(compiled.type("home").fields[2].doc, Doc{"What it says."});
    EXPECT_EQ(compiled.type("home").fields[2].shared_doc, Doc{"Characters."});
}

TEST(Model, knows_enumerators_and_what_they_choose) {
    SchemaDirectory directory;
    Compiled compiled({directory.add("voice/leds.tlv", R"(
union value by kind which { large, 8: uint8 octet  static: uint16 word }
enum kind = 1001 {
    static = 0
    /// Too large for a signed number.
    large  = 4294967295
}
)")});
    ASSERT_TRUE(compiled.schema) << render(compiled.faults, compiled.sources, false);
    const Type &kind = compiled.type("kind");
    ASSERT_EQ(kind.enumerators.size(), 2u);
    EXPECT_EQ(kind.enumerators[0].name, "static");
    EXPECT_EQ(kind.enumerators[1].value, 4294967295);
    EXPECT_EQ(kind.enumerators[1].doc, Doc{"Too large for a signed number."});
    EXPECT_EQ(compiled.type("value").alternatives[0].values, (std::vector<uint32_t>{4294967295, 8}));
    EXPECT_EQ(compiled.type("value").alternatives[1].values, (std::vector<uint32_t>{0}));
}

// However long a chain is, or wide a nest, the stack holds and time grows with the text; and one cause is one fault.
TEST(Model, is_made_of_any_chain_and_nest) {
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
        compile(load({directory.path("imports/i0.tlv").string()}, sources, faults, {}, texts), faults);
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

TEST(Model, order_depends_on_the_schema_alone) {
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
