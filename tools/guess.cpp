#include "guess.h"

#include <algorithm>
#include <tuple>

namespace tlvmsg::tool {

namespace {

int rank(tlvmsg_kind kind) {
    switch (kind) {
    case TLVMSG_MESSAGE:
        return 0;
    case TLVMSG_STRUCTURE:
        return 1;
    case TLVMSG_ENUMERATION:
        return 2;
    case TLVMSG_SCALAR:
        return 4;
    default:
        return 3;
    }
}

// Smaller is better.
auto badness(const Guess &guess) {
    return std::tuple(!guess.accepted, SIZE_MAX - (guess.accepted ? guess.consumed : guess.fault.offset),
                      guess.deviations, rank(guess.type->kind));
}

Guess try_type(const tlvmsg_type *type, const uint8_t *in, size_t in_len) {
    tlvmsg_extent extent;
    tlvmsg_fault fault;
    const bool accepted = tlvmsg_verify(type, in, in_len, nullptr, &extent, &fault);
    return {type, accepted, extent.consumed, extent.deviations, fault};
}

bool tells_something(const Guess &guess, size_t in_len) {
    if (guess.accepted) {
        return guess.consumed > 0 || in_len == 0;
    }
    return guess.fault.offset > 0 || guess.fault.code != TLVMSG_WRONG_TAG;
}

} // namespace

std::vector<Guess> guess(const uint8_t *in, size_t in_len, size_t at_most_rejected) {
    std::vector<Guess> guesses;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const Guess each = try_type(tlvmsg_type_at(i), in, in_len);
        if (tells_something(each, in_len)) {
            guesses.push_back(each);
        }
    }
    // Types come by name, and equally good ones stay so.
    std::stable_sort(guesses.begin(), guesses.end(),
                     [](const Guess &a, const Guess &b) { return badness(a) < badness(b); });
    const auto rejected = static_cast<size_t>(
        std::count_if(guesses.begin(), guesses.end(), [](const Guess &each) { return !each.accepted; }));
    guesses.erase(guesses.end() - static_cast<ptrdiff_t>(rejected - std::min(rejected, at_most_rejected)),
                  guesses.end());
    return guesses;
}

} // namespace tlvmsg::tool
