// What the types make of bytes: it decides where spelling alone does not.
#pragma once

#include "base/element.h"

#include <tlvmsg/forms/hex.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace tlvmsg::forms {

using Bytes = std::vector<uint8_t>;

// Whether any part of a message may begin with that tag: a scalar's, or that of arrays.
constexpr bool is_common_tag(uint16_t tag) { return tag <= base::array_tag; }

// How far bytes make sense.
enum class Match {
    none,
    begins, // a message may begin so, however it goes on: by the first header
    whole   // messages that lie back to back, or a structure alone
};

struct Judged {
    Bytes bytes{};
    Match match = Match::none;
};

class Sense {
public:
    explicit Sense(const tlvmsg_hex_options &options) : options_(options) {}

    // Whether they are messages that lie back to back, of the type where one is known, without deviations.
    bool are_messages(const Bytes &bytes) const;

    bool accepts(const Bytes &bytes) const;
    bool begins(const Bytes &bytes) const;
    Match of(const Bytes &bytes) const;
    Judged judged(Bytes bytes) const;

    // Where messages of the type deviate from it, in a way that it tolerates; nothing where they do not, or no type is
    // known.
    std::optional<size_t> deviates_at(const Bytes &bytes) const;

private:
    const tlvmsg_hex_options &options_;
};

} // namespace tlvmsg::forms
