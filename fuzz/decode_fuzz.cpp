// Promises of tlvmsg/inspect.h asserted on any bytes:
//   1  the bounded functions stay inside input, record and output (by the address sanitizer);
//   3  tlvmsg_verify and tlvmsg_decode accept the same and consume the same; a fault lies in the input;
//   5  strict refuses exactly the deviations and the bytes behind the end; what has none is what an encoder gives;
//   6  a failed decode leaves the record zero; nothing leaks, and releasing twice is harmless;
//   7  none takes long (by libFuzzer's time limit);
//   8  what was decoded is of the announced size when it is encoded, and decodes to an equal record.
#include "target.h"

#include "support/record.h"

#include <algorithm>

using namespace tlvmsg_fuzz;

namespace {

void check_encoding(const tlvmsg_type &type, const uint8_t *record, const uint8_t *in,
                    const tlvmsg_extent &extent) {
    size_t size = 0;
    if (tlvmsg_test::is_char(type) || !tlvmsg_size(&type, record, &size, nullptr)) {
        TLVMSG_PROMISE(5, tlvmsg_test::is_char(type) || extent.deviations > 0);
        return;
    }
    const Block out(size);
    size_t written = 0;
    TLVMSG_PROMISE(8, tlvmsg_encode(&type, record, out.get(), SIZE_MAX, &written, nullptr));
    TLVMSG_PROMISE(8, written == size);
    TLVMSG_PROMISE(5, extent.deviations > 0 ||
                          (size == extent.consumed && std::memcmp(out.get(), in, size) == 0));

    const Block again(type.size);
    const tlvmsg_limits no_limit{SIZE_MAX, true, {}};
    TLVMSG_PROMISE(8, tlvmsg_decode(&type, out.get(), size, &no_limit, again.get(), nullptr, nullptr));
    TLVMSG_PROMISE(8, tlvmsg_equal(&type, record, again.get()));
    tlvmsg_release(&type, again.get());
}

// The bytes as a record, of any counts; without pointers.
void check_record(const tlvmsg_type &type, const uint8_t *bytes, size_t there) {
    if (tlvmsg_test::holds(type, tlvmsg_test::is_dynamic)) {
        return;
    }
    const Block record(type.size);
    std::memcpy(record.get(), bytes, std::min<size_t>(there, type.size));
    size_t size = 0;
    const bool encodable = tlvmsg_size(&type, record.get(), &size, nullptr);
    const Block out(size);
    size_t written = 0;
    TLVMSG_PROMISE(8,
                   tlvmsg_encode(&type, record.get(), out.get(), SIZE_MAX, &written, nullptr) == encodable);
    TLVMSG_PROMISE(8, written == size);
}

void check(const tlvmsg_type &type, const uint8_t *in, size_t size) {
    tlvmsg_extent extent;
    tlvmsg_fault fault;
    const bool accepted = tlvmsg_verify(&type, in, size, nullptr, &extent, &fault);
    TLVMSG_PROMISE(3, accepted == (fault.code == TLVMSG_OK));
    TLVMSG_PROMISE(3, accepted || fault.offset <= size);
    TLVMSG_PROMISE(1, extent.consumed <= extent.examined && extent.examined <= size);
    const tlvmsg_limits strict{0, true, {}};
    TLVMSG_PROMISE(5, tlvmsg_verify(&type, in, size, &strict, nullptr, nullptr) ==
                          (accepted && extent.deviations == 0 && extent.consumed == size));

    const Block record(type.size);
    size_t consumed = 0;
    TLVMSG_PROMISE(3, tlvmsg_decode(&type, in, size, nullptr, record.get(), &consumed, nullptr) == accepted);
    TLVMSG_PROMISE(3, consumed == extent.consumed);
    if (accepted) {
        check_encoding(type, record.get(), in, extent);
        tlvmsg_release(&type, record.get());
        tlvmsg_release(&type, record.get());
    } else {
        TLVMSG_PROMISE(6,
                       std::all_of(record.get(), record.get() + type.size, [](uint8_t b) { return b == 0; }));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size >= type_bytes) {
        const Block in(data + type_bytes, size - type_bytes);
        check(type_of(data), in.get(), size - type_bytes);
        check_record(type_of(data), in.get(), size - type_bytes);
    }
    return 0;
}
