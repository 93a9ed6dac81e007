// Promises asserted on any bytes that tlvmsg_verify accepts:
//   - the exact decoder reads only what verification examined, and writes only the record (by the address
//     sanitizer, which sees blocks of just these sizes);
//   - it returns the position that verification reported;
//   - it leaves the record that tlvmsg_decode leaves, and tlvmsg_release releases its blocks, too.
#include "target.h"

#include "support/codec_table.h"

#include <map>

using namespace tlvmsg_fuzz;

namespace {

const tlvmsg_test::Codec &exact_codec(const tlvmsg_type &type) {
    static std::map<const tlvmsg_type *, tlvmsg_test::Codec> codecs;
    const auto known = codecs.find(&type);
    return known != codecs.end() ? known->second : codecs[&type] = tlvmsg_test::find_codec(type);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < type_bytes) {
        return 0;
    }
    const tlvmsg_type &type = type_of(data);
    tlvmsg_extent extent;
    if (!tlvmsg_verify(&type, data + type_bytes, size - type_bytes, nullptr, &extent, nullptr)) {
        return 0;
    }
    const Block in(data + type_bytes, extent.examined);
    const Block exact(type.size);
    const Block bounded(type.size);
    TLVMSG_PROMISE(exact_codec(type).decode(in.get(), exact.get()) == in.get() + extent.consumed);
    TLVMSG_PROMISE(
        tlvmsg_decode(&type, data + type_bytes, size - type_bytes, nullptr, bounded.get(), nullptr, nullptr));
    TLVMSG_PROMISE(tlvmsg_equal(&type, exact.get(), bounded.get()));
    tlvmsg_release(&type, exact.get());
    tlvmsg_release(&type, bounded.get());
    return 0;
}
