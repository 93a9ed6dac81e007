#include "forms/hex/sense.h"

#include <tlvmsg/forms/guess.h>
#include <tlvmsg/forms/verdict.h>
#include <tlvmsg/record.h>

#include <new>

namespace tlvmsg::forms {

namespace {

uint16_t number(const std::vector<uint8_t> &bytes, size_t at) {
    return static_cast<uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

} // namespace

bool Sense::are_messages(const std::vector<uint8_t> &bytes) const {
    if (bytes.empty()) {
        return false;
    }
    if (const tlvmsg_type *const type = options_.type; type != nullptr) {
        tlvmsg_verdict verdict{};
        for (size_t at = 0; at < bytes.size(); at += verdict.extent.consumed) {
            tlvmsg_judge(type, bytes.data() + at, bytes.size() - at, nullptr, &verdict);
            if (verdict.fit == TLVMSG_FITS_NOT || verdict.extent.deviations > 0 ||
                verdict.extent.consumed == 0) {
                return false;
            }
        }
        return true;
    }
    tlvmsg_part *parts = nullptr;
    size_t count = 0;
    if (!tlvmsg_divide(options_.set, bytes.data(), bytes.size(), &parts, &count, nullptr)) {
        throw std::bad_alloc();
    }
    tlvmsg_free(parts);
    return count > 0;
}

bool Sense::accepts(const std::vector<uint8_t> &bytes) const {
    constexpr size_t header_size = 4;
    constexpr tlvmsg_limits strict{0, true, {}};
    if (options_.type == nullptr && bytes.size() > header_size &&
        header_size + number(bytes, 2) == bytes.size()) {
        const tlvmsg_type *const element = tlvmsg_type_set_by_tag(options_.set, number(bytes, 0));
        if (element != nullptr && element->kind == TLVMSG_STRUCTURE &&
            tlvmsg_judge(element, bytes.data(), bytes.size(), &strict, nullptr) == TLVMSG_FITS) {
            return true;
        }
    }
    return are_messages(bytes);
}

std::optional<size_t> Sense::deviates_at(const std::vector<uint8_t> &bytes) const {
    constexpr tlvmsg_limits strict{0, true, {}};
    tlvmsg_verdict verdict{};
    for (size_t at = 0; options_.type != nullptr && at < bytes.size(); at += verdict.extent.consumed) {
        const uint8_t *const rest = bytes.data() + at;
        if (tlvmsg_judge(options_.type, rest, bytes.size() - at, nullptr, &verdict) == TLVMSG_FITS_NOT ||
            verdict.extent.consumed == 0) {
            return std::nullopt;
        }
        if (verdict.extent.deviations > 0) {
            tlvmsg_judge(options_.type, rest, verdict.extent.consumed, &strict, &verdict);
            return at + verdict.fault.offset;
        }
    }
    return std::nullopt;
}

bool Sense::begins(const std::vector<uint8_t> &bytes) const {
    if (bytes.size() < 4) {
        return false;
    }
    const uint16_t tag = number(bytes, 0);
    const size_t end = size_t{4} + number(bytes, 2);
    if (const tlvmsg_type *type = options_.type; type != nullptr) {
        type = type->kind == TLVMSG_MESSAGE && type->member_count > 0 ? type->members[0].type : type;
        return type->tag == tag;
    }
    const auto known = [&](size_t at) {
        return tlvmsg_type_set_by_tag(options_.set, number(bytes, at)) != nullptr;
    };
    constexpr uint16_t scalars = 10; // tags that any bytes may begin with
    return known(0) && (end + 2 <= bytes.size() ? known(end) : tag > scalars);
}

} // namespace tlvmsg::forms
