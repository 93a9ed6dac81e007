// What people read in the header of a small schema with every kind of type, against a reviewed copy: comments and macros.
// What else is generated, programs compile and run for all types.
#include "compiler/emit/emit.h"
#include "support.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace tlvc {
namespace {

const std::filesystem::path golden = data_directory / "golden";

std::string comments_and_macros(const std::string &header) {
    std::istringstream lines(header);
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        const std::string_view begin =
            std::string_view(line).substr(std::min(line.find_first_not_of(' '), line.size()));
        text += begin.starts_with("/*") || begin.starts_with("*") || begin.starts_with("#define ")
                    ? line + "\n"
                    : "";
    }
    return text;
}

TEST(Emitters, WriteTheReviewedHeader) {
    Compiled compiled({(golden / "relay/relays.tlv").string(), (golden / "relay/family.tlv").string()});
    ASSERT_TRUE(compiled.schema);
    const GeneratedFiles files = emit(*compiled.schema, Product::Library);
    const auto header = std::find_if(files.begin(), files.end(), [](const GeneratedFile &each) {
        return each.path == "include/tlvmsg/relay.h";
    });
    ASSERT_NE(header, files.end());
    EXPECT_EQ(comments_and_macros(header->text), read_file((golden / "relay.txt").string()));
}

TEST(Emitters, GuardEveryHeaderByANameOfItsOwn) {
    SchemaDirectory directory;
    std::vector<std::string> files;
    for (const char *family : {"relay", "Relay", "bounded_relay", "relay_hpp", "records_of_relay"}) {
        files.push_back(
            directory.add(std::string(family) + "/a.tlv", fmt::format("enum e{0} = 4000{0}", files.size())));
    }
    std::set<std::string> guards;
    for (const GeneratedFile &each : emit(*Compiled(files).schema, Product::Families)) {
        if (each.path.starts_with("include/")) {
            const size_t at = each.text.find("#ifndef ");
            EXPECT_TRUE(guards.insert(each.text.substr(at, each.text.find('\n', at) - at)).second)
                << each.path;
        }
    }
    EXPECT_FALSE(guards.empty());
}

} // namespace
} // namespace tlvc
