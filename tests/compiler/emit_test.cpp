// What is generated for a small schema with every kind of type, against a reviewed copy.
#include "compiler/emit/emit.h"
#include "compiler/model/names.h"
#include "support.h"

#include <algorithm>
#include <set>

namespace tlvc {
namespace {

const std::filesystem::path golden = data_directory / "golden";

TEST(Emitters, write_the_reviewed_files) {
    Compiled compiled({(golden / "relay/relays.tlv").string(), (golden / "relay/family.tlv").string()});
    ASSERT_TRUE(compiled.schema);
    EXPECT_EQ(emit_interface(*compiled.schema), read_file((golden / "interface.txt").string()));
    const GeneratedFiles files = emit(*compiled.schema, Product::Library);
    for (const char *path : {"include/tlvmsg/relay.h", "include/tlvmsg/bounded/relay.h",
                             "include/tlvmsg/relay.hpp", "src/relay_codecs.h", "src/relay_layout.c"}) {
        const auto file = std::find_if(files.begin(), files.end(),
                                       [&](const GeneratedFile &each) { return each.path == path; });
        ASSERT_NE(file, files.end()) << path;
        EXPECT_EQ(file->text, read_file((golden / "generated" / path).string())) << path;
    }
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
