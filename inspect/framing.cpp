#include "framing.h"

#include "place.h"

#include <cstring>

namespace tlvmsg::inspect {

namespace {

// That a length can say, and that a body may have, whatever the length can say.
int64_t most_length(const tlvmsg_framing &framing) {
    return framing.width < 4 ? (int64_t{1} << 8 * framing.width) - 1 : UINT32_MAX;
}
int64_t most_body(const tlvmsg_framing &framing) {
    return framing.most != 0 ? framing.most : uint32_t{TLVMSG_FRAMES_MOST};
}

// The first member that cannot be, if any is. Without a length there is only a header.
tlvmsg_fault check_members(const tlvmsg_framing &framing) {
    const bool has_length = framing.width != 0;
    const int64_t header = framing.header;
    const int64_t adjust = framing.adjust;
    const struct {
        const char *member;
        int64_t value, most;
    } rows[] = {{"header", header, TLVMSG_MOST_FRAME_HEADER},
                {"width", framing.width, header < 4 ? header : 4},
                {"length_at", framing.length_at, has_length ? header - framing.width : 0},
                {"most", framing.most, has_length ? TLVMSG_MOST_FRAME_BODY : 0},
                {"little", framing.little, has_length},
                {"adjust", adjust, has_length ? most_body(framing) : 0},
                {"-adjust", -adjust, has_length ? most_length(framing) : 0}};
    for (const auto &row : rows) {
        if (row.value > row.most) {
            return fault_in(row.member, TLVMSG_WRONG_FRAMING, 0, static_cast<uint64_t>(row.value),
                            static_cast<uint64_t>(row.most));
        }
    }
    return {};
}

} // namespace

tlvmsg_fault check(const tlvmsg_framing *framing) {
    if (framing == nullptr) {
        return null_argument("framing");
    }
    const uintptr_t bits = reserved_bits(framing);
    return bits != 0 ? reserved_word("framing", bits) : check_members(*framing);
}

BodySize body_size(const tlvmsg_framing &framing) {
    const int64_t most = most_body(framing);
    const int64_t sayable = framing.width != 0 ? most_length(framing) + framing.adjust : most;
    return {framing.adjust > 0 ? framing.adjust : 0, most < sayable ? most : sayable};
}

tlvmsg_fault check_body(const tlvmsg_framing &framing, int64_t size, int64_t found, uint64_t offset) {
    const BodySize allowed = body_size(framing);
    if (size > allowed.most) {
        return fault_in("frame", TLVMSG_FRAME_TOO_LONG, offset, static_cast<uint64_t>(size),
                        static_cast<uint64_t>(allowed.most));
    }
    if (size < allowed.least) {
        return fault_in("frame", TLVMSG_FRAME_TOO_SHORT, offset, static_cast<uint64_t>(found),
                        static_cast<uint64_t>(found - size + allowed.least));
    }
    return {};
}

uint32_t read_length(const tlvmsg_framing &framing, const uint8_t *header) {
    uint32_t length = 0;
    for (uint32_t i = 0; i < framing.width; ++i) {
        const uint32_t at = framing.little ? framing.width - 1 - i : i;
        length = length << 8 | header[framing.length_at + at];
    }
    return length;
}

void write_header(const tlvmsg_framing &framing, size_t size, uint8_t *header) {
    if (framing.header > 0) {
        std::memset(header, 0, framing.header);
    }
    auto length = static_cast<uint64_t>(static_cast<int64_t>(size) - framing.adjust);
    for (uint32_t i = 0; i < framing.width; ++i, length >>= 8) {
        const uint32_t at = framing.little ? i : framing.width - 1 - i;
        header[framing.length_at + at] = static_cast<uint8_t>(length);
    }
}

} // namespace tlvmsg::inspect
