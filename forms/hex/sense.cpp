#include "forms/hex/sense.h"

#include <tlvmsg/forms/guess.h>
#include <tlvmsg/forms/verdict.h>
#include <tlvmsg/record.h>

#include <new>
#include <utility>

namespace tlvmsg::forms {

using base::header_size;
using base::number_at;

namespace {

constexpr tlvmsg_limits strict{0, true, {}};

struct Fit {
    bool fits;
    std::optional<size_t> deviation; // the first one
};

// As messages of the type, back to back.
Fit fit_of(const tlvmsg_type *type, const Bytes &bytes) {
    tlvmsg_verdict verdict{};
    for (size_t at = 0; at < bytes.size(); at += verdict.extent.consumed) {
        const uint8_t *const rest = bytes.data() + at;
        tlvmsg_judge(type, rest, bytes.size() - at, nullptr, &verdict);
        if (verdict.fit == TLVMSG_FITS_NOT || verdict.extent.consumed == 0) {
            return {false, std::nullopt};
        }
        if (verdict.extent.deviations > 0) {
            tlvmsg_judge(type, rest, verdict.extent.consumed, &strict, &verdict);
            return {true, at + verdict.fault.offset};
        }
    }
    return {!bytes.empty(), std::nullopt};
}

} // namespace

bool Sense::are_messages(const Bytes &bytes) const {
    if (options_.type != nullptr) {
        const Fit fit = fit_of(options_.type, bytes);
        return fit.fits && !fit.deviation;
    }
    tlvmsg_part *parts = nullptr;
    size_t count = 0;
    if (!tlvmsg_divide(options_.set, bytes.data(), bytes.size(), &parts, &count, nullptr)) {
        throw std::bad_alloc();
    }
    tlvmsg_free(parts);
    return count > 0;
}

bool Sense::accepts(const Bytes &bytes) const {
    if (options_.type == nullptr && bytes.size() > header_size &&
        header_size + number_at(bytes, 2) == bytes.size()) {
        const tlvmsg_type *const element = tlvmsg_type_set_by_tag(options_.set, number_at(bytes, 0));
        if (element != nullptr && element->kind == TLVMSG_STRUCTURE &&
            tlvmsg_judge(element, bytes.data(), bytes.size(), &strict, nullptr) == TLVMSG_FITS) {
            return true;
        }
    }
    return are_messages(bytes);
}

std::optional<size_t> Sense::deviates_at(const Bytes &bytes) const {
    return options_.type != nullptr ? fit_of(options_.type, bytes).deviation : std::nullopt;
}

Match Sense::of(const Bytes &bytes) const {
    return accepts(bytes) ? Match::whole : begins(bytes) ? Match::begins : Match::none;
}

Judged Sense::judged(Bytes bytes) const {
    const Match match = of(bytes);
    return {std::move(bytes), match};
}

bool Sense::begins(const Bytes &bytes) const {
    if (bytes.size() < header_size) {
        return false;
    }
    const uint16_t tag = number_at(bytes, 0);
    const size_t end = header_size + number_at(bytes, 2);
    if (const tlvmsg_type *type = options_.type; type != nullptr) {
        type = type->kind == TLVMSG_MESSAGE && type->member_count > 0 ? type->members[0].type : type;
        return type->tag == tag;
    }
    const auto known = [&](size_t at) {
        return tlvmsg_type_set_by_tag(options_.set, number_at(bytes, at)) != nullptr;
    };
    return known(0) && (end + 2 <= bytes.size() ? known(end) : !is_common_tag(tag));
}

} // namespace tlvmsg::forms
