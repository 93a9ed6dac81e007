// What people read of a small schema with every kind of type, against a reviewed copy. What else is generated, programs
// compile and run for all types.
#include "compiler/emit/emit.h"
#include "compiler/model/names.h"
#include "support.h"

#include <algorithm>
#include <set>

namespace tlvc {
namespace {

const std::filesystem::path golden = data_directory / "golden";

TEST(Emitters, WriteTheReviewedHeader) {
    Compiled compiled({(golden / "relay/relays.tlv").string(), (golden / "relay/family.tlv").string()});
    ASSERT_TRUE(compiled.schema);
    const GeneratedFiles files = emit(*compiled.schema, Product::Library);
    const auto header = std::find_if(files.begin(), files.end(), [](const GeneratedFile &each) {
        return each.path == "include/tlvmsg/relay.h";
    });
    ASSERT_NE(header, files.end());
    EXPECT_EQ(header->text, read_file((golden / "relay.h").string()));
}

TEST(Emitters, guard_every_header_by_a_name_of_its_own) {
    std::set<std::string> guards;
    for (const auto form : {names::Header::Records, names::Header::Bounded, names::Header::Traits}) {
        for (const char *family : {"relay", "Relay", "bounded_relay", "relay_hpp", "records_of_relay"}) {
            EXPECT_TRUE(guards.insert(names::guard(form, family)).second) << family;
        }
    }
}

} // namespace
} // namespace tlvc
