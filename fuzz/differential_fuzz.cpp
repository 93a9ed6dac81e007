// Promises of tlvmsg/inspect.h asserted on any bytes that tlvmsg_verify accepts:
//   3  tlvmsg_decode accepts them;
//   4  the exact decoder reads only what verification examined, and writes only the record (by the address
//      sanitizer, which sees blocks of just these sizes); it returns the position that verification reported and
//      leaves the record that tlvmsg_decode leaves, whose blocks tlvmsg_release releases, too;
//   8  both encoders give the same bytes for that record.
#include "target.h"

#include "support/codec_table.h"
#include "support/record.h"

#include <map>

using namespace tlvmsg_fuzz;

namespace {

const tlvmsg_test::Codec &exact_codec(const tlvmsg_type &type) {
    static std::map<const tlvmsg_type *, tlvmsg_test::Codec> codecs;
    const auto known = codecs.find(&type);
    return known != codecs.end() ? known->second : codecs[&type] = tlvmsg_test::find_codec(type);
}

void check_encoding(const tlvmsg_type &type, const tlvmsg_test::Codec &codec, const uint8_t *record) {
    size_t size = 0;
    if (tlvmsg_test::holds(type, tlvmsg_test::is_dynamic_bytes) ||
        !tlvmsg_size(&type, record, &size, nullptr)) {
        return;
    }
    const Block exact(size);
    const Block bounded(size);
    TLVMSG_PROMISE(8, codec.encode(record, exact.get()) == exact.get() + size);
    TLVMSG_PROMISE(8, tlvmsg_encode(&type, record, bounded.get(), size, nullptr, nullptr));
    TLVMSG_PROMISE(8, std::memcmp(exact.get(), bounded.get(), size) == 0);
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
    const tlvmsg_test::Codec &codec = exact_codec(type);
    TLVMSG_PROMISE(4, codec.decode(in.get(), exact.get()) == in.get() + extent.consumed);
    TLVMSG_PROMISE(3, tlvmsg_decode(&type, data + type_bytes, size - type_bytes, nullptr, bounded.get(),
                                    nullptr, nullptr));
    TLVMSG_PROMISE(4, tlvmsg_equal(&type, exact.get(), bounded.get()));
    check_encoding(type, codec, exact.get());
    tlvmsg_release(&type, exact.get());
    tlvmsg_release(&type, bounded.get());
    return 0;
}
