// What people read of a small schema with every kind of type, against a reviewed copy. What else is generated, programs
// compile and run for all types.
#include "compiler/emit/emit.h"
#include "support.h"

#include <algorithm>

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

} // namespace
} // namespace tlvc
