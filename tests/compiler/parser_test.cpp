#include "support.h"

namespace tlvc {
namespace {

using syntax::Declaration;

std::vector<std::string> names(const std::vector<Declaration> &declarations) {
    std::vector<std::string> result;
    for (const Declaration &declaration : declarations) {
        result.emplace_back(declaration.name.text);
    }
    return result;
}

// What forms there are, all schema files show.
TEST(Parser, ReadsNumbersAndRemarksAsTheyStand) {
    Parsed parsed("/// A kind.\n// between\n/// Of things.\nenum kind = 01362\r\n"
                  "union u by kind which { 18446744073709551616: uint8 large }");
    ASSERT_FALSE(parsed.faults.any());
    const Declaration &kind = parsed.syntax.declarations.at(0);
    EXPECT_EQ(kind.doc.lines, (std::vector<std::string>{"A kind.", "Of things."}));
    EXPECT_EQ(kind.number.value, 1362u);
    EXPECT_EQ(parsed.syntax.declarations.at(1).members.at(0).values.at(0).number, UINT64_MAX)
        << "it must not wrap";
}

TEST(Parser, KeywordsAreNamesWhereNamesBelong) {
    Parsed parsed(
        "struct struct = 1001 {\n"
        "    enum     enum\n"
        "    message  of\n"
        "    union    by\n"
        "    array    bytes\n"
        "    import   import\n"
        "}\n"
        "union in by by in in in { 1: in in }\n"
        "array of of of[1]\n"
        "struct dynamic = 1002 { dynamic bytes  dynamic array  as as  counted counted  bytes[1] x as as\n"
        "uint8 count  dynamic array of of dynamic counted by by as by  to to  as[1] to }\n");
    EXPECT_FALSE(parsed.faults.any());
    EXPECT_EQ(names(parsed.syntax.declarations),
              (std::vector<std::string>{"struct", "in", "of", "as", "by", "dynamic_to_array", "dynamic"}));
    EXPECT_EQ(parsed.syntax.declarations[0].members.size(), 5u);
    EXPECT_EQ(parsed.syntax.declarations.back().members.size(), 9u);
}

TEST(Parser, GoesOnBehindAFault) {
    Parsed parsed("struct a = 1001 {\n"
                  "    uint8 ok\n"
                  "    uint8 = 5\n"
                  "    [3]\n"
                  "    uint8 fine\n"
                  "}\n"
                  "}\n"
                  "struct b { uint8 x }\n"
                  "enum c = 1002\n"
                  "array d of [3]\n"
                  "struct e = 1003 {\n"
                  "    uint8 x\n"
                  "/// Of f.\n"
                  "dynamic bytes f counted by uint8\n"
                  "42\n"
                  "struct h = 1004 {\n"
                  "    message key\n"
                  "message g key 17 { e e }\n");
    std::vector<uint32_t> lines;
    for (const Diagnostic &fault : parsed.faults.in_file_order()) {
        lines.push_back(parsed.sources.position(fault.span.file, fault.span.begin).line);
    }
    EXPECT_EQ(lines, (std::vector<uint32_t>{3, 4, 7, 8, 10, 14, 15, 18}));
    EXPECT_EQ(names(parsed.syntax.declarations),
              (std::vector<std::string>{"a", "b", "c", "d", "e", "f", "h", "g"}))
        << "names are known whatever follows them";
    std::string sound;
    for (const Declaration &each : parsed.syntax.declarations) {
        sound += each.sound ? each.name.text : "";
    }
    EXPECT_EQ(sound, "cfg");
    EXPECT_EQ(parsed.syntax.declarations[0].members.size(), 2u);
}

TEST(Parser, AcceptsFilesOfNothingButBlanksAndRemarks) {
    for (const char *text : {"", "\n", "// only this", "//! about\n", "\t\r\n//// ruler ////\n"}) {
        Parsed parsed(text);
        EXPECT_FALSE(parsed.faults.any()) << text;
        EXPECT_TRUE(parsed.syntax.declarations.empty()) << text;
    }
}

// Whatever is missing, the parser ends, stays within the text and keeps its spans in order.
TEST(Parser, SurvivesEveryCut) {
    const std::string text = read_file((data_directory / "format/messy.tlv").string());
    auto check = [](const std::string &damaged) {
        Parsed parsed(damaged);
        for (const Declaration &declaration : parsed.syntax.declarations) {
            ASSERT_LT(declaration.span.begin, declaration.span.end);
            ASSERT_LE(declaration.span.end, damaged.size());
        }
        for (const Diagnostic &fault : parsed.faults.in_file_order()) {
            ASSERT_LE(fault.span.begin, fault.span.end);
            ASSERT_LE(fault.span.end, damaged.size());
        }
    };
    for (size_t i = 0; i < text.size(); ++i) {
        check(text.substr(0, i));
        check(text.substr(i));
        check(text.substr(0, i) + text.substr(i + 1));
        check(text.substr(0, i) + "}" + text.substr(i));
    }
}

} // namespace
} // namespace tlvc
