#include "compiler/language/format.h"
#include "support.h"

#include <algorithm>

namespace tlvc {
namespace {

std::string formatted(const std::string &text) {
    Parsed parsed(text);
    EXPECT_FALSE(parsed.faults.any()) << text;
    return format(parsed.syntax, parsed.sources);
}

// All that a file says, places left out.
std::string contents(const std::string &text) {
    Parsed parsed(text);
    std::string out;
    auto add = [&out](std::string_view part) { out.append(part).append("|"); };
    auto add_doc = [&](const syntax::Doc &doc) { std::for_each(doc.lines.begin(), doc.lines.end(), add); };
    auto add_number = [&](const syntax::Number &number) { add(std::to_string(number.value)); };
    add_doc(parsed.syntax.doc);
    for (const syntax::Import &import : parsed.syntax.imports) {
        add(import.path.text);
    }
    for (const syntax::Declaration &each : parsed.syntax.declarations) {
        out += "\n";
        add_doc(each.doc);
        add(std::to_string(static_cast<int>(each.form)));
        add_number(each.number);
        for (const syntax::Name *name :
             {&each.name, &each.element, &each.count, &each.selector, &each.selector_name}) {
            add(name->text);
        }
        add(each.enclosing ? each.enclosing->text : "");
        for (const syntax::Enumerator &enumerator : each.enumerators) {
            add_doc(enumerator.doc);
            add(enumerator.name.text);
            add_number(enumerator.value);
        }
        for (const syntax::Member &member : each.members) {
            add_doc(member.doc);
            for (const syntax::Value &value : member.values) {
                add(value.name);
                add(std::to_string(value.number));
            }
            add(member.type.text);
            add(member.name.text);
            for (const syntax::Name &attribute : member.attributes) {
                add(attribute.text);
            }
        }
    }
    return out;
}

std::vector<std::string> remarks(const std::string &text) {
    Parsed parsed(text);
    std::vector<std::string> result;
    for (Span comment : parsed.syntax.comments) {
        result.emplace_back(parsed.sources.text(comment));
    }
    return result;
}

void expect_stable(const std::string &text) {
    std::string once = formatted(text);
    ASSERT_EQ(formatted(once), once) << text;
    ASSERT_EQ(contents(once), contents(text)) << text;
    ASSERT_EQ(remarks(once), remarks(text)) << text;
}

TEST(Format, GivesTheCanonicalLayout) {
    EXPECT_EQ(formatted(read_file((data_directory / "format/messy.tlv").string())),
              read_file((data_directory / "format/canonical.tlv").string()));
}

TEST(Format, KeepsAMessageOnOneLineUpToTheWidth) {
    std::string head = "message request { structure ";
    std::string fits = head + std::string(110 - head.size() - 2, 'n') + " }\n";
    EXPECT_EQ(formatted(fits), fits);
    std::string longer = head + std::string(110 - head.size() - 1, 'n') + " }\n";
    EXPECT_EQ(formatted(longer).substr(0, 20), "message request {\n  ");
}

// The messy file with a remark, a line or both put in wherever that leaves it readable.
TEST(Format, IsStableAndLosesNothing) {
    const std::string text = read_file((data_directory / "format/messy.tlv").string());
    size_t tried = 0;
    for (const std::string inserted :
         {" // put in\n", "\n", "\n\n\n", "\n// alone\n\n", "\n\n// one\n\n// two\n"}) {
        for (size_t i = 0; i <= text.size(); ++i) {
            std::string changed = text.substr(0, i) + inserted + text.substr(i);
            if (!Parsed(changed).faults.any()) {
                ++tried;
                ASSERT_NO_FATAL_FAILURE(expect_stable(changed));
            }
        }
    }
    EXPECT_GT(tried, 1000u) << "most places allow it";
    for (const auto &each : std::filesystem::recursive_directory_iterator(data_directory / "diagnostics")) {
        if (each.path().extension() == ".tlv" && !Parsed(read_file(each.path().string())).faults.any()) {
            expect_stable(read_file(each.path().string()));
        }
    }
}

} // namespace
} // namespace tlvc
