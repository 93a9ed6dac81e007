// Each rule of the catalogue has an example that it alone finds and one that comes near; the real schema is changed
// all over, a kind of change at a time.
#include "compiler/compare/report.h"
#include "support.h"

#include "compiler/emit/emit.h"
#include "compiler/model/attributes.h"
#include "compiler/model/fingerprint.h"
#include "compiler/text/reporter.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <random>
#include <set>
#include <sstream>

namespace tlvc {
namespace {

// One side of a comparison.
struct Side {
    explicit Side(const std::string &path) : schema(compile_any(path, sources, faults, library)) {
        if (!schema) {
            throw std::invalid_argument(render(faults, sources, false));
        }
    }

    Sources sources;
    Diagnostics faults;
    std::unique_ptr<const Schema> schema;
};

std::vector<Finding> compare(const Side &before, const Side &after) {
    return compare(*before.schema, *after.schema);
}

// Schema text in a file of its own, whose path may precede it.
class Text {
public:
    explicit Text(std::string text, const std::string &name = "old") {
        std::string path = name + "/relay/a.tlv";
        if (const size_t end = text.find(".tlv: "); end != text.npos) {
            path = name + "/" + text.substr(0, end + 4);
            text.erase(0, end + 6);
        }
        side = std::make_unique<Side>(directory_.add(path, text));
        printed = std::make_unique<Side>(directory_.add(name + ".txt", emit_interface(*side->schema)));
    }

    std::unique_ptr<Side> side;
    std::unique_ptr<Side> printed; // read back from what `tlvc interface` says of it

private:
    SchemaDirectory directory_;
};

// "C013 wire, json", a line a finding.
std::string summary(const std::vector<Finding> &findings) {
    std::string text;
    for (const Finding &each : findings) {
        text += fmt::format("{} {}\n", each.rule->code, names_of(each.levels));
    }
    return text;
}

std::string summary(const std::string &before, const std::string &after) {
    return summary(compare(*Text(before).side, *Text(after).side));
}

// ---- The catalogue -----------------------------------------------------------------------------------

class EachRule : public testing::TestWithParam<const Rule *> {};

TEST_P(EachRule, FindsItsExampleAndPassesTheOther) {
    const Rule &rule = *GetParam();
    const Text before(std::string(rule.example.before));
    const Text after(std::string(rule.example.after), "new");
    const Text harmless(std::string(rule.example.harmless), "new");
    const std::string expected = fmt::format("{} {}\n", rule.code, names_of(rule.levels));
    std::set<std::string> lines;
    std::istringstream found(summary(compare(*before.side, *after.side)));
    for (std::string line; std::getline(found, line);) {
        lines.insert(line + "\n");
    }
    if (&rule == &tag_freed) { // which comes with what frees it
        lines.erase("C005 wire\n");
    } else if (&rule == &value_freed) {
        lines.erase("C020 json, source\n");
    }
    EXPECT_EQ(lines, std::set{expected});
    EXPECT_EQ(summary(compare(*before.printed, *after.printed)), summary(compare(*before.side, *after.side)));
    for (const Finding &each : compare(*before.side, *harmless.side)) {
        EXPECT_EQ(each.levels, Nothing);
        EXPECT_NE(each.rule, &rule);
    }
}

// Findings that are no change of a schema have none.
std::vector<const Rule *> rules_with_example() {
    std::vector<const Rule *> result(std::begin(rules), std::end(rules));
    std::erase_if(result, [](const Rule *each) { return each->example.before.empty(); });
    return result;
}

INSTANTIATE_TEST_SUITE_P(Catalogue, EachRule, testing::ValuesIn(rules_with_example()),
                         [](const auto &instance) { return std::string(instance.param->code); });

TEST(Rules, HaveTheCodesOfTheirPlaces) {
    for (size_t i = 0; i < std::size(rules); ++i) {
        EXPECT_EQ(rules[i]->code, fmt::format("C{:03}", i + 1));
    }
}

// ---- Single changes ----------------------------------------------------------------------------------

TEST(Levels, OfAChangedTypeFollowFromWhatBothCanHold) {
    const auto member = [](const char *type) {
        return std::string(
                   "enum plain = 2002  enum named = 2003 { one = 1 }  bytes one[4]  bytes two[4]  "
                   "struct both = 2004 { one one  two two }  struct padded = 2005 { uint32 a  uint64 b }  "
                   "struct full = 2006 { uint64 a  uint64 b }  enum more = 2007 { one = 1  two = 2 }  "
                   "struct wide = 2008 { uint64 a  uint64 b }  bytes six[6]  struct s = 2001 { ") +
               type + " x }";
    };
    constexpr struct {
        const char *before, *after, *levels, *why;
    } rows[] = {
        {"uint8", "uint16", "wire, source, layout", ""},
        {"uint8", "char", "wire, json, source", "not even these have one tag"},
        {"uint8", "int16", "wire, source, layout", ""},
        {"int8", "uint16", "wire, json, source, layout", ""},
        {"uint32", "plain", "wire", "which is a uint32_t to programs"},
        {"named", "more", "wire", "all names mean the same"},
        {"more", "named", "wire, json", "a name is gone"},
        {"named", "uint32", "wire, json", "documents say the names"},
        {"padded", "wide", "wire, source, layout", "documents fit, and it is larger on i386"},
        {"full", "wide", "wire, source", "the same under another tag"},
        {"both", "full", "wire, json, source, layout", "other members"},
        {"one", "two", "source", "but for its name it is the same"},
        {"one", "six", "wire, source, layout", "documents of 4 bytes fit in 6"},
    };
    for (const auto &[before, after, levels, why] : rows) {
        EXPECT_EQ(summary(member(before), member(after)), fmt::format("C013 {}\n", levels))
            << before << " to " << after << ": " << why;
    }
}

TEST(Levels, OfCountsAndChoicesHoldForBothDirections) {
    const auto array = [](const std::string &count) {
        return "dynamic bytes text counted by " + count + "  struct s = 2001 { " + count +
               " count  text text }";
    };
    EXPECT_EQ(summary(array("uint8"), array("uint16")), "C013 wire, source, layout\n")
        << "the count's tag is another, however few the items";
    EXPECT_EQ(summary(array("uint16"), array("uint8")), "C013 wire, json, source, layout\n");
    const auto choice = [](const char *alternatives) {
        return fmt::format("enum k = 2001  union u by k which {{ {} }}  struct s = 2002 {{ k which  u u }}",
                           alternatives);
    };
    EXPECT_EQ(summary(choice("1, 2: uint8 a"), choice("1: uint8 a")), "C025 wire, json\n")
        << "the new side expects nothing, not another element";
    EXPECT_EQ(summary(choice("1: uint8 a"), choice("1, 2: uint8 a")), "C023 nothing\n");
    EXPECT_EQ(summary(choice("1: uint8 a"), choice("0, 1: uint8 a")), "C023 wire\n")
        << "zeroed records send it";
    const std::string named =
        "enum k = 2001 { two = 2 }  struct s = 2002 { k which  u u }  union u by k which ";
    EXPECT_EQ(summary(named + "{ 1: uint8 a }", named + "{ 1: uint8 a  2: uint8 b }"), "C023 wire\n")
        << "old peers have a name for it";
}

TEST(AppendedMember, IsSafeOnlyWhereItsAbsenceShows) {
    const auto summary_of = [](const std::string &rest, const char *type = "uint16") {
        const std::string begin = "enum end = 2002  struct port = 2001 { uint8 slot ";
        return summary(begin + "} " + rest, begin + type + " unit } " + rest).substr(0, 4);
    };
    EXPECT_EQ(summary_of(""), "C010") << "it may be sent alone";
    EXPECT_EQ(summary_of("struct s = 2003 { port port  uint16 next }"), "C010");
    EXPECT_EQ(summary_of("struct s = 2003 { port port  uint8 next }", "char"), "C010")
        << "char reads what uint8 wrote";
    EXPECT_EQ(summary_of("struct s = 2003 { port port  uint32 next }"), "C009");
    EXPECT_EQ(summary_of("struct s = 2003 { uint16 last  port port }  message m { s s  end last }"), "C009");
    EXPECT_EQ(summary_of("struct s = 2003 { uint16 last  port port }  message m { end first  s s }"), "C010");
    EXPECT_EQ(summary_of("array ports of port[4]  struct s = 2003 { ports ports  uint16 next }"), "C010");
    EXPECT_EQ(
        summary_of(
            "enum k = 2004  union u by k w { 1: port port }  struct s = 2003 { k w  u u  uint16 next }"),
        "C010");
    EXPECT_EQ(
        summary_of("enum k = 2004  union u by k w { 1: port port }  struct s = 2003 { k w  u u  k next }"),
        "C009");
}

TEST(AppendedMember, IsSeenWhereDecodersFillIt) {
    const auto summary_of = [](const std::string &member) {
        const std::string types =
            "bytes l[4]  array a of uint32[4]  dynamic bytes d counted by uint8  struct packed = 2002 { l l "
            "}  "
            "enum k = 2003  union zero by k w { 1: uint8 x  0: uint8 y }  union one by k w { 1: uint8 x }  "
            "struct inner = 2005 { uint8 n  k w  zero z }  struct outer = 2006 { inner inner }  "
            "enum end = 2007  message m { port port  end last }  struct port = 2001 { uint8 slot ";
        return summary(types + "}", types + member + " }");
    };
    for (const char *filled : {"l label", "a numbers", "k w  zero z", "outer outer"}) {
        EXPECT_EQ(summary_of(filled), "C027 wire, layout\n") << filled;
        EXPECT_EQ(summary_of(std::string("uint16 other  ") + filled), "C009 layout\nC027 wire, layout\n");
    }
    for (const char *absent : {"uint8 count  d text", "packed part", "k w  one o"}) {
        EXPECT_EQ(summary_of(absent), "C009 layout\n") << absent;
    }
}

TEST(Renames, AreKnownAgain) {
    const std::string before = "bytes port_name[8]  struct port = 2001 { uint16 slot  port_name name }  "
                               "message m { port port }  struct end = 2002 { uint8 a }";
    EXPECT_EQ(summary(before,
                      "bytes socket_name[8]  struct socket = 2001 { uint16 slot  socket_name title }  "
                      "message n { socket port }  struct end = 2002 { uint8 a }"),
              "C003 source\nC003 source\nC014 json, source\nC003 source\n");
    EXPECT_EQ(summary("struct s = 2001 { uint8 a }", "struct s = 2001 { uint16 b  uint16 c }"),
              "C007 wire, json, source, layout\nC010 wire, layout\nC010 wire, layout\n");
    EXPECT_EQ(summary("enum e = 2001  struct s = 2002 { e which }",
                      "enum e = 2001  struct s = 2002 { e which  u u }  union u by e which { 1: uint8 a }"),
              "C015 json, source, layout\nC010 wire, layout\nC002 nothing\n");
    EXPECT_EQ(summary("bytes a[8]  union u by e w { 1: uint8 x }  enum e = 2001",
                      "bytes b[8]  union v by e w { 1: uint8 x }  enum e = 2001"),
              "C003 source\nC003 source\n")
        << "what nothing holds";
    EXPECT_EQ(summary("bytes a[8]", "bytes b[9]").substr(0, 4), "C001");
    const Text in_place("struct s = 2001 { bytes[4] name }");
    const Text renamed("struct s = 2001 { bytes[4] title }", "new");
    EXPECT_EQ(summary(compare(*in_place.side, *renamed.side)), "C003 source\nC014 json, source\n");
    EXPECT_NE(compare(*in_place.printed, *renamed.side)
                  .at(1)
                  .effect.find("s_name_array are now those of s_title_array"),
              std::string::npos);
}

TEST(Numbers, AreToldWhereTheyCanComeBack) {
    const std::string one = "enum e = 2001 { a = 1  b = 2 }  ";
    const std::string other = "enum e = 2001 { b = 2 ";
    const std::pair<std::string, std::string> rows[] = {
        {other + "c = 1 }", "C021 json, source\n"},
        {other + "reserved 0 to 1, 3 }", "C020 json, source\n"},
        {other + "} enum q = 2002", "C020 json, source\nC031 json, source\nC002 nothing\n"},
        {"reserved 2001 message e { f f } struct f = 2002 { uint8 x }",
         "C006 wire, json, source, layout\nC002 nothing\n"},
        {"struct q = 2001 { uint8 x }", "C001 wire, json, source, layout\nC030 wire\nC002 nothing\n"},
    };
    for (const auto &[now, expected] : rows) {
        EXPECT_EQ(summary(one, now), expected) << now;
    }
    EXPECT_EQ(summary("reserved 2100 to 2110, 65535  enum e = 2001 { a = 1  reserved 0, 7 to 9, 4294967295 }",
                      "reserved 2102, 2104 to 2105, 2109 to 2200  enum e = 2001 { a = 1  reserved 8 to 9 }"),
              "C033 json, source\nC033 json, source\nC033 json, source\n"
              "C032 wire\nC032 wire\nC032 wire\nC032 wire\n");
}

TEST(InlinedUnion, KeepsTheLayoutWhereNothingMoves) {
    const auto levels = [](const std::string &type, const std::string &before_it) {
        const auto schema = [&](const char *in) {
            return fmt::format(
                "enum k = 2001  union u by k w {} {{ 1: {} x }}  struct s = 2002 {{ {} k w  u u }}", in, type,
                before_it);
        };
        return summary(schema(""), schema("in s")).substr(0, 25);
    };
    EXPECT_EQ(levels("uint32", ""), "C015 json, source\nC015 js");
    EXPECT_EQ(levels("uint32", "uint32 a "), "C015 json, source, layout") << "for functions of the union";
    EXPECT_EQ(levels("uint64", "uint32 a "), "C015 json, source, layout");
}

// It took half a minute when each type was looked for among all: arrays, messages and structures.
TEST(Renames, OfManyTypesTakeNoTimeToSpeakOf) {
    constexpr int count = 10000;
    const auto schema = [](const std::string &name) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += fmt::format("bytes {0}_b{1}[8]\nstruct {0}_s{1} = {2} {{ {0}_b{1} x }}\n"
                                "message {0}_m{1} {{ {0}_s{1} y }}\n",
                                name, i, 1001 + i);
        }
        return text;
    };
    SchemaDirectory directory;
    const Side before(directory.add("old/acme/a.tlv", schema("one")));
    const Side after(directory.add("new/acme/a.tlv", schema("two")));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(compare(before, after).size(), 3 * size_t{count});
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

// ---- The real schema ---------------------------------------------------------------------------------

const std::string schema_directory = (data_directory / "../../schema").string();

TEST(RealSchema, IsWhatItsInterfaceSays) {
    const Side schema(schema_directory);
    const Side interface(schema_directory + "/interface.txt");
    EXPECT_EQ(summary(compare(schema, interface)), "");
    EXPECT_EQ(summary(compare(interface, interface)), "");
    EXPECT_TRUE(emit_interface(*interface.schema) == read_file(schema_directory + "/interface.txt"));
}

TEST(Interface, IsRefusedWhereItsLinesContradictEachOther) {
    SchemaDirectory directory;
    const auto refused = [&](const std::string &text) -> std::string {
        try {
            Side{directory.add("interface.txt", text)};
        } catch (const std::invalid_argument &refusal) {
            const std::string what = refusal.what();
            return what.substr(what.find("interface.txt"));
        }
        return "";
    };
    const std::string good = "# printed\n\nfamily relay\n\n"
                             "struct port = 2001, 15 bytes, record 4 aligned 2\n"
                             "        0  uint16 slot\n"
                             "        2  uint8 unit\n";
    EXPECT_EQ(refused(good), "");
    const auto with = [&](const std::string &old, const std::string &now) {
        std::string text = good;
        return refused(text.replace(text.find(old), old.size(), now));
    };
    EXPECT_EQ(with("\n\n", "\r\n# a remark of whoever keeps it\n"), "");
    EXPECT_EQ(
        with("15 bytes", "99 bytes"),
        "interface.txt:5:1: error[T047]: this line should be 'struct port = 2001, 15 bytes, record 4 aligned "
        "2'\n    5 | struct port = 2001, 99 bytes, record 4 aligned 2\n"
        "      | ^~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~\n1 error\n");
    EXPECT_NE(with("aligned 2\n", "aligned 2, fingerprint 0x0\n").find("aligned 2, fingerprint 0x"),
              std::string::npos)
        << "which an earlier tlvc did not print, but is held against the schema where it stands";
    EXPECT_EQ(with("  2  uint8", "  3  uint8").substr(0, 32), "interface.txt:7:1: error[T047]: ");
    EXPECT_EQ(with("        2  uint8 unit\n", "").substr(0, 32), "interface.txt:5:1: error[T047]: ");
    EXPECT_EQ(with("0  uint16", "\u00E9  uint99"),
              "interface.txt:6:12: error[T012]: type 'uint99' is not defined\n"
              "    6 |         \u00E9  uint99 slot\n"
              "      |            ^~~~~~\n"
              "  help: did you mean 'uint16'?\n1 error\n");
    EXPECT_EQ(refused("# printed\n\nfamily relay\n").substr(0, 59),
              "interface.txt:3:1: error[T047]: this line should be 'family");
    EXPECT_EQ(refused("").substr(0, 32), "interface.txt:1:1: error[T047]: ");
}

// A change to every type that it applies to, and what must be found then.
struct Mutation {
    const char *name;
    const Rule *found;
    const Rule *found_in_reverse;
    bool (*applies)(const Type &);
    void (*apply)(Type &, const Type *int64);
};

bool has_own_members(const Type &type) {
    const auto own = [](const Member &each) {
        return each.path.size() == 1 && each.role == Member::Role::Own;
    };
    return type.members.size() > 1 && own(type.members[0]) && own(type.members[1]);
}
bool has_room(const Type &type) { return type.capacity > 0; }
bool has_names(const Type &type) { return !type.enumerators.empty(); }
bool has_choices(const Type &type) { return type.kind == Kind::Union; }
bool begins_with_array(const Type &type) {
    return type.members.size() > 1 && is_dynamic(*type.members[1].type);
}

void toggle(Attributes &attributes, const Attribute &attribute) {
    if (std::erase(attributes, &attribute) == 0) {
        attributes.push_back(&attribute);
    }
}

const Mutation mutations[] = {
    {"tag", &tag_changed, &tag_changed, has_tag,
     [](Type &type, const Type *) { type.tag = static_cast<uint16_t>(type.tag + 20000); }},
    {"kind", &kind_changed, &kind_changed, [](const Type &type) { return type.family != nullptr; },
     [](Type &type, const Type *) {
         type.kind = type.kind == Kind::Message ? Kind::Structure : Kind::Message;
     }},
    {"member_gone", &member_removed, &member_inserted, has_own_members,
     [](Type &type, const Type *) { type.members.erase(type.members.begin()); }},
    {"order", &order_changed, &order_changed, has_own_members,
     [](Type &type, const Type *) { std::swap(type.members[0], type.members[1]); }},
    {"member_type", &type_changed, &type_changed, has_own_members,
     [](Type &type, const Type *int64) { type.members[0].type = int64; }},
    {"member_name", &name_changed, &name_changed, has_own_members,
     [](Type &type, const Type *) { type.members[0].path[0] += "_x"; }},
    {"items", &type_changed, &type_changed, is_array,
     [](Type &type, const Type *int64) { type.element = int64; }},
    {"room", &room_grown, &room_shrunk, has_room, [](Type &type, const Type *) { ++type.capacity; }},
    {"count", &type_changed, &type_changed, is_dynamic,
     [](Type &type, const Type *int64) { type.count = int64; }},
    {"selector", &type_changed, &type_changed, has_choices,
     [](Type &type, const Type *int64) { type.selector = int64; }},
    {"choice_type", &type_changed, &type_changed, has_choices,
     [](Type &type, const Type *int64) { type.alternatives[0].type = int64; }},
    {"attribute", &attribute_changed, &attribute_changed, begins_with_array,
     [](Type &type, const Type *) { toggle(type.members[1].attributes, known_attributes[0]); }},
    {"attribute_of_choice", &attribute_changed, &attribute_changed, has_choices,
     [](Type &type, const Type *) { toggle(type.alternatives[0].attributes, known_attributes[1]); }},
    {"name_gone", &enumerator_removed, &enumerator_added, has_names,
     [](Type &type, const Type *) { type.enumerators.pop_back(); }},
    {"value", &enumerator_value, &enumerator_value, has_names,
     [](Type &type, const Type *) { type.enumerators[0].value += 70000; }},
    {"choice_gone", &choice_removed, nullptr, has_choices,
     [](Type &type, const Type *) { type.alternatives.pop_back(); }},
    {"value_gone", &choice_removed, &choice_removed, has_choices,
     [](Type &type, const Type *) { type.alternatives[0].values[0] += 70000; }},
    {"choice", &choice_changed, &choice_changed,
     [](const Type &type) { return type.alternatives.size() > 1; },
     [](Type &type, const Type *) { std::swap(type.alternatives[0].values, type.alternatives[1].values); }},
};

// Where fingerprints are equal, nothing is found on the wire but what has other meanings there. Says how many are not.
size_t check_fingerprints(const Side &before, const Side &after) {
    std::set<std::string> alike;
    for (size_t i = 0; i < before.schema->types.size(); ++i) {
        if (before.schema->types[i].fingerprint == after.schema->types[i].fingerprint) {
            alike.insert(after.schema->types[i].name);
        }
    }
    for (const Finding &each : compare(before, after)) {
        const bool is_meaning = each.rule == &order_changed || each.rule == &enumerator_value;
        EXPECT_FALSE((each.levels & Wire) != 0 && alike.contains(each.type) && !is_meaning)
            << each.rule->code << ' ' << each.type << '.' << each.member;
    }
    return before.schema->types.size() - alike.size();
}

class EachMutation : public testing::TestWithParam<Mutation> {};

TEST_P(EachMutation, IsFoundInEveryTypeAndInReverse) {
    const Side before(schema_directory);
    const Side after(schema_directory);
    const auto int64 = std::find_if(after.schema->types.begin(), after.schema->types.end(),
                                    [](const Type &each) { return each.name == "int64"; });
    std::set<std::string> mutated;
    for (const Type &type : after.schema->types) {
        if (GetParam().applies(type)) {
            GetParam().apply(const_cast<Type &>(type), &*int64);
            mutated.insert(type.name);
        }
    }
    EXPECT_FALSE(mutated.empty());
    take_fingerprints(const_cast<Schema &>(*after.schema));
    const bool is_seen = GetParam().found != &enumerator_value && (GetParam().found->levels & Wire) != 0;
    EXPECT_EQ(check_fingerprints(before, after) > 0, is_seen);
    const auto expect = [&](const std::vector<Finding> &findings, const Rule *rule) {
        std::set<std::string> types;
        for (const Finding &each : findings) {
            if (rule == nullptr || each.rule == rule) {
                types.insert(each.type);
                EXPECT_TRUE(rule == nullptr || (each.levels & Wire) == (rule->levels & Wire)) << each.type;
            }
        }
        EXPECT_EQ(types, mutated);
    };
    expect(compare(before, after), GetParam().found);
    expect(compare(after, before), GetParam().found_in_reverse);
}

INSTANTIATE_TEST_SUITE_P(RealSchema, EachMutation, testing::ValuesIn(mutations),
                         [](const auto &instance) { return std::string(instance.param.name); });

TEST(Fingerprints, TellNothingOfMeanings) {
    const std::string choice = "enum e = 2001  union u by e w ";
    const std::tuple<const Rule *, std::string, std::string> rows[] = {
        {&order_changed, std::string(order_changed.example.before), std::string(order_changed.example.after)},
        {&enumerator_value, std::string(enumerator_value.example.before),
         std::string(enumerator_value.example.after)},
        {&choice_changed, choice + "{ 1: uint8 a  2: uint8 b }", choice + "{ 1: uint8 b  2: uint8 a }"}};
    for (const auto &[rule, old, now] : rows) {
        const Text before(old);
        const Text after(now, "new");
        EXPECT_EQ(summary(compare(*before.side, *after.side)).substr(0, 9),
                  std::string(rule->code) + " wire");
        EXPECT_TRUE(std::ranges::equal(before.side->schema->types, after.side->schema->types, {},
                                       &Type::fingerprint, &Type::fingerprint))
            << rule->code;
    }
}

TEST(Fingerprints, TellOfSeveralChangesAtOnce) {
    const std::string family = schema_directory + "/ethernet";
    const Side before(family);
    std::mt19937 random(1);
    size_t changed = 0;
    for (int round = 0; round < 100; ++round) {
        const Side after(family);
        auto &types = const_cast<std::deque<Type> &>(after.schema->types);
        for (const Mutation &each : mutations) {
            Type &type = types[random() % types.size()];
            if (each.applies(type)) {
                each.apply(type, &types[8]);
            }
        }
        take_fingerprints(const_cast<Schema &>(*after.schema));
        changed += check_fingerprints(before, after);
    }
    EXPECT_GT(changed, 0U);
}

// ---- Reports -----------------------------------------------------------------------------------------

TEST(Report, SaysWhereAndWhat) {
    Sources old_sources;
    Sources new_sources;
    old_sources.add("old/a.tlv", "struct port {\n    uint8  slot\n}\n");
    new_sources.add("new/a.tlv", "struct port {\n    uint16  slot\n    uint8  \"\n}\n");
    const std::vector<Finding> findings = {
        {&type_changed, Wire | Source, "port", "slot", "uint8", "uint16", "why", true, Span{0, 25, 29},
         Span{0, 26, 30}},
        {&member_appended, Nothing, "port", "\"\\\n", "", "uint8", "so", false, std::nullopt,
         Span{0, 42, 43}},
    };
    const ComparedSources sources{old_sources, new_sources};
    EXPECT_EQ(render(select(findings, {Source | Layout}), sources),
              "new/a.tlv:2:13: breaks[C013] source: port.slot: was uint8, is uint16; why\n"
              "  note: old/a.tlv:2:12: it was here\n");
    EXPECT_EQ(render(select(findings, {Json, true}), sources),
              "new/a.tlv:3:12: safe[C009]: port.\"\\\n (in no message): is new: uint8; so\n")
        << "what breaks something else is not safe";
    EXPECT_EQ(render(select(findings, {Json, true, true}), sources), "");
    const auto json = json_of(findings, sources);
    EXPECT_EQ(
        json[0].dump(),
        R"({"file":"new/a.tlv","line":2,"column":13,"end_line":2,"end_column":17,"code":"C013",)"
        R"("severity":"breaks","message":"port.slot: was uint8, is uint16; why","levels":["wire","source"],)"
        R"("type":"port","member":"slot","in_message":true,)"
        R"("old":{"file":"old/a.tlv","line":2,"column":12,"end_line":2,"end_column":16,"what":"uint8"},)"
        R"("new":{"file":"new/a.tlv","line":2,"column":13,"end_line":2,"end_column":17,"what":"uint16"}})");
    EXPECT_EQ(json[1]["member"], "\"\\\n");
    EXPECT_TRUE(json[1]["old"].is_null() && json[1]["levels"].empty() && json[1]["severity"] == "safe");
    EXPECT_EQ(json_of({}, sources).dump(), "[]");
}

} // namespace
} // namespace tlvc
