#include "compiler/language/format.h"
#include "support.h"

#include <algorithm>
#include <sstream>

namespace tlvc {
namespace {

std::string formatted(const std::string &text) {
    Parsed parsed(text);
    EXPECT_FALSE(parsed.faults.any()) << text;
    return format(parsed.syntax, parsed.sources);
}

// All but blanks and newlines: what is no remark in its order, and of remarks, which may move, the characters.
std::pair<std::string, std::string> contents(std::string text) {
    std::string order;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        order += line.substr(0, line.find("//"));
    }
    const auto is_blank = [](char each) {
        return std::string_view(" \t\r\n").find(each) != std::string_view::npos;
    };
    std::erase_if(order, is_blank);
    std::erase_if(text, is_blank);
    std::sort(text.begin(), text.end());
    return {order, text};
}

void expect_stable(const std::string &text) {
    std::string once = formatted(text);
    ASSERT_EQ(formatted(once), once) << text;
    ASSERT_EQ(contents(once), contents(text)) << text;
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
