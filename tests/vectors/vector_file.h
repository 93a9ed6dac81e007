// Vector files: records and their bytes side by side, as README.md describes them.
#pragma once

#include <tlvmsg/types.h>

#include "support/hex.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tlvmsg_test {

// What a field is set to: a number, as its two's complement, or the bytes of an array.
struct Number {
    uint64_t bits;
    bool negative;
};
using Value = std::variant<Number, Bytes>;

// A field and its value, and where the file says so.
struct Assignment {
    std::string path;
    Value value;
    std::string place;
};

// A line of bytes.
struct Line {
    size_t offset;
    std::string place;
    std::string explanation;
};

enum class Direction { Both, EncodeOnly, DecodeOnly };

struct Vector {
    const tlvmsg_type *type;
    std::string place;
    Direction direction = Direction::Both;
    bool null = false;                      // the only operation tried gives null
    std::vector<Assignment> assignments{};  // of the record: to be encoded, or before decoding
    std::vector<Assignment> expectations{}; // of the record after decoding, where it changed
    Bytes bytes{};
    std::vector<Line> lines{};
    std::optional<size_t> size{};
    std::optional<size_t> end{}; // of decoding; behind the last byte when nothing is said
};

// A mistake in a file; the message begins with file:line.
struct VectorFault : std::runtime_error {
    VectorFault(const std::string &place, const std::string &message)
        : std::runtime_error(place + ": " + message) {}
};

// `name` is the file's, for messages.
std::vector<Vector> parse_vectors(const std::string &name, std::string_view text);

} // namespace tlvmsg_test
