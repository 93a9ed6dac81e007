// Promises asserted on any bytes:
//   - the bounded functions stay inside input, record and output (by the address sanitizer) and leak nothing;
//   - tlvmsg_verify and tlvmsg_decode accept the same and consume the same; a fault lies in the input;
//   - strict refuses exactly the deviations and the bytes behind the end;
//   - a failed decode leaves the record zero, and releasing twice is harmless;
//   - what was decoded is of the announced size when it is encoded, and decodes to an equal record; without
//     deviations the encoding is the input again.
#include "target.h"

#include <algorithm>

using namespace tlvmsg_fuzz;

namespace {

// Decoding takes another tag for it than encoding gives.
bool is_char(const tlvmsg_type &type) { return std::strcmp(type.name, "char") == 0; }

void check_encoding(const tlvmsg_type &type, const uint8_t *record, const uint8_t *in,
                    const tlvmsg_extent &extent) {
    size_t size = 0;
    if (is_char(type) || !tlvmsg_size(&type, record, &size, nullptr)) {
        TLVMSG_PROMISE(is_char(type) || extent.deviations > 0);
        return;
    }
    const Block out(size);
    size_t written = 0;
    TLVMSG_PROMISE(tlvmsg_encode(&type, record, out.get(), size, &written, nullptr));
    TLVMSG_PROMISE(written == size);
    TLVMSG_PROMISE(extent.deviations > 0 ||
                   (size == extent.consumed && std::memcmp(out.get(), in, size) == 0));

    const Block again(type.size);
    const tlvmsg_limits no_limit{SIZE_MAX, true};
    TLVMSG_PROMISE(tlvmsg_decode(&type, out.get(), size, &no_limit, again.get(), nullptr, nullptr));
    TLVMSG_PROMISE(tlvmsg_equal(&type, record, again.get()));
    tlvmsg_release(&type, again.get());
}

void check(const tlvmsg_type &type, const uint8_t *in, size_t size) {
    tlvmsg_extent extent;
    tlvmsg_fault fault;
    const bool accepted = tlvmsg_verify(&type, in, size, nullptr, &extent, &fault);
    TLVMSG_PROMISE(accepted == (fault.code == TLVMSG_OK));
    TLVMSG_PROMISE(fault.offset <= size);
    TLVMSG_PROMISE(extent.consumed <= extent.examined && extent.examined <= size);
    const tlvmsg_limits strict{0, true};
    TLVMSG_PROMISE(tlvmsg_verify(&type, in, size, &strict, nullptr, nullptr) ==
                   (accepted && extent.deviations == 0 && extent.consumed == size));

    const Block record(type.size);
    size_t consumed = 0;
    TLVMSG_PROMISE(tlvmsg_decode(&type, in, size, nullptr, record.get(), &consumed, nullptr) == accepted);
    TLVMSG_PROMISE(consumed == extent.consumed);
    if (accepted) {
        check_encoding(type, record.get(), in, extent);
        tlvmsg_release(&type, record.get());
        tlvmsg_release(&type, record.get());
    } else {
        TLVMSG_PROMISE(std::all_of(record.get(), record.get() + type.size, [](uint8_t b) { return b == 0; }));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size >= type_bytes) {
        const Block in(data + type_bytes, size - type_bytes);
        check(type_of(data), in.get(), size - type_bytes);
    }
    return 0;
}
