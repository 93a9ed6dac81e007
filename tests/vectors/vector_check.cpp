#include "vector_check.h"

#include "named_record.h"
#include "vector_file.h"

#include "support/codec_table.h"
#include "support/guarded.h"
#include "support/record.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace tlvmsg_test {

namespace {

// Says where in the file the first difference is explained.
testing::AssertionResult same_bytes(const Vector &vector, const uint8_t *written) {
    const auto [expected, actual] = std::mismatch(vector.bytes.begin(), vector.bytes.end(), written);
    if (expected == vector.bytes.end()) {
        return testing::AssertionSuccess();
    }
    const auto offset = static_cast<size_t>(expected - vector.bytes.begin());
    const auto behind = std::find_if(vector.lines.begin(), vector.lines.end(),
                                     [offset](const Line &each) { return each.offset > offset; });
    const Line &line = *std::prev(behind);
    return testing::AssertionFailure()
           << line.place << ": byte " << offset << " is encoded as " << to_hex(actual, 1) << ", not "
           << to_hex(&*expected, 1) << " (" << line.explanation << ")";
}

std::string position(const uint8_t *at, const uint8_t *start) {
    return at == nullptr ? "null" : std::to_string(at - start);
}

void check_encoding(const Vector &vector) {
    const Codec codec = find_codec(*vector.type);
    NamedRecord record(*vector.type, DynamicBytes::InRecord);
    record.assign(vector.assignments);
    if (vector.size) {
        EXPECT_EQ(codec.size(record.data()), *vector.size);
    }
    const GuardedBuffer wire(vector.bytes.size());
    const uint8_t *end = codec.encode(record.data(), wire.data());
    EXPECT_EQ(position(end, wire.data()), vector.null ? "null" : std::to_string(wire.size()));
    EXPECT_TRUE(same_bytes(vector, wire.data()));
}

// Unless it is a message, what a record held before is still there where nothing was decoded.
void check_decoding(const Vector &vector, const NamedRecord &before, const NamedRecord &after) {
    const tlvmsg_type &type = *vector.type;
    GuardedBuffer wire(vector.bytes.size());
    std::copy(vector.bytes.begin(), vector.bytes.end(), wire.data());
    wire.make_read_only();
    const GuardedBuffer received(type.size);
    std::copy_n(before.data(), type.size, received.data());
    const uint8_t *end = find_codec(type).decode(wire.data(), received.data());
    EXPECT_EQ(position(end, wire.data()),
              vector.null ? "null" : std::to_string(vector.end.value_or(wire.size())));
    EXPECT_EQ(fields_of(type, received.data()), fields_of(type, after.data()));
    if (!holds(type, is_dynamic)) {
        EXPECT_EQ(std::memcmp(received.data(), after.data(), type.size), 0)
            << "something else than the fields of the record is different";
    }
    release(type, received.data());
}

void check_round_trip(const Vector &vector) {
    const tlvmsg_type &type = *vector.type;
    check_encoding(vector);
    NamedRecord before(type, DynamicBytes::InBlock);
    NamedRecord after(type, DynamicBytes::InBlock);
    after.assign(vector.assignments);
    if (type.kind == TLVMSG_MESSAGE) {
        std::memset(before.data(), 0xAA, type.size);
    } else if (type.kind == TLVMSG_UNION) {
        std::copy_n(after.data() + type.selector_offset, sizeof(uint32_t),
                    before.data() + type.selector_offset);
    }
    check_decoding(vector, before, after);
}

void check_tolerance(const Vector &vector) {
    NamedRecord before(*vector.type, DynamicBytes::InBlock);
    before.assign(vector.assignments);
    NamedRecord after(*vector.type, DynamicBytes::InBlock);
    if (vector.type->kind != TLVMSG_MESSAGE) {
        after.assign(vector.assignments);
    }
    after.assign(vector.expectations);
    check_decoding(vector, before, after);
}

void check(const Vector &vector) {
    switch (vector.direction) {
    case Direction::Both:
        return check_round_trip(vector);
    case Direction::EncodeOnly:
        return check_encoding(vector);
    case Direction::DecodeOnly:
        return check_tolerance(vector);
    }
}

} // namespace

void check_text(const std::string &name, const std::string &text) {
    try {
        const std::vector<Vector> vectors = parse_vectors(name, text);
        EXPECT_FALSE(vectors.empty()) << name << " holds no vector";
        for (const Vector &each : vectors) {
            SCOPED_TRACE(each.place + ": " + each.type->name);
            check(each);
        }
    } catch (const VectorFault &fault) {
        ADD_FAILURE() << fault.what();
    }
}

} // namespace tlvmsg_test
