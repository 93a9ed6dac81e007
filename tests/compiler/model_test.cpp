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
             {"lots", 10, 10 + 65535 * few_holder_max},
             {"short_text", 11, 266},
             {"long_text", 11, 65546},
             {"value", 0, 47},
             {"choice", 16, 63},
             {"lots_holder", 20, 4 + 6 + 10 + 65535 * few_holder_max},
         }) {
        const Type &type = compiled.type(expected.type);
        EXPECT_EQ(type.min_size, expected.min) << expected.type;
        EXPECT_EQ(type.max_size, expected.max) << expected.type;
    }
    EXPECT_TRUE(compiled.type("control").fixed_size());
    EXPECT_FALSE(compiled.type("choice").fixed_size());
}

TEST(Model, sizes_stop_growing_before_they_wrap) {
    std::string text = "struct s0 = 1001 { uint64 x }\n";
    for (int i = 1; i <= 5; ++i) {
        text += fmt::format("dynamic array a{0} of s{1} counted by uint16\n"
                            "struct s{0} = {2} {{ uint16 count  a{0} items }}\n",
                            i, i - 1, 1001 + i);
    }
    SchemaDirectory directory;
    Compiled compiled({directory.add("voice/deep.tlv", text)});
    ASSERT_TRUE(compiled.schema);
    for (int i = 2; i <= 5; ++i) {
        EXPECT_GE(compiled.type(fmt::format("s{}", i)).max_size, uint64_t{1} << 35);
    }
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

// One line a family: what it uses, then its types.
std::string outline(const Schema &schema) {
    std::string out;
    for (const auto &family : schema.families) {
        out += family->name + (family->doc.empty() ? "" : " \"" + family->doc[0] + "\"");
        for (const Family *used : family->uses) {
            out += " <" + used->name + ">";
        }
        for (const Type *type : family->types) {
            out += " " + type->name;
        }
        out += "\n";
    }
    return out;
}

TEST(Model, order_depends_on_the_schema_alone) {
    SchemaDirectory directory;
    directory.add("zcommon/session.tlv", "//! Shared.\nenum session = 1001\n");
    std::string alarm =
        directory.add("alarm/alarms.tlv", "import \"../voice/b.tlv\"\nmessage alarm { led led }\n");
    std::string bell = directory.add("bell/bells.tlv", "enum bell = 1002\n");
    std::string zulu = directory.add("zulu/z.tlv", "enum zulu = 1008\n");
    std::string voice_b =
        directory.add("voice/b.tlv", "//! Not the first file.\n"
                                     "import \"../zcommon/session.tlv\"\n"
                                     "message m { led led  session opening }\n"
                                     "enum loose = 1003\n"
                                     "struct led = 1004 { uint8 count  leds leds  color tint }\n"
                                     "dynamic array leds of color counted by uint8\n"
                                     "enum color = 1005\n");
    std::string voice_a = directory.add("voice/a.tlv", "//! Voice.\n"
                                                       "import \"./../voice/b.tlv\"\n"
                                                       "struct group = 1006 { led led }\n"
                                                       "enum last = 1007\n");
    const std::string expected = "bell bell\n"
                                 "zcommon \"Shared.\" session\n"
                                 "voice \"Voice.\" <zcommon> color leds led group last m loose\n"
                                 "alarm <voice> alarm\n"
                                 "zulu zulu\n";
    for (const auto &files :
         {std::vector{alarm, bell, voice_a, zulu}, std::vector{zulu, voice_a, voice_b, bell, alarm, bell}}) {
        Compiled compiled(files);
        ASSERT_TRUE(compiled.schema);
        EXPECT_EQ(compiled.sources.size(), 6u) << "each file is loaded once";
        EXPECT_EQ(outline(*compiled.schema), expected);
    }
}

} // namespace
} // namespace tlvc
