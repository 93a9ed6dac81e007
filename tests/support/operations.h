// Runs the operations of a type between forbidden pages and says all that they did.
#pragma once

#include "guarded.h"
#include "hex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <stdexcept>

namespace tlvmsg_test {

template <class Record>
struct Operations {
    uint16_t (*size)(const Record *in);
    uint8_t *(*encode)(const Record *in, uint8_t *out);
    const uint8_t *(*decode)(const uint8_t *in, Record *out);
};

template <class Record>
Operations<Record> operations(uint16_t (*size)(const Record *), uint8_t *(*encode)(const Record *, uint8_t *),
                              const uint8_t *(*decode)(const uint8_t *, Record *)) {
    return {size, encode, decode};
}

#define OPERATIONS(TYPE) tlvmsg_test::operations(get_tlv_##TYPE##_size, encode_tlv_##TYPE, decode_tlv_##TYPE)
#define SCALAR_OPERATIONS(TYPE)                                                                              \
    tlvmsg_test::operations(get_##TYPE##_size, encode_tlv_##TYPE, decode_tlv_##TYPE)

inline constexpr uint8_t untouched = 0xA5;

// A record, padding included, and bytes behind it for counts above the capacity. What nobody has set is
// 0xA5; comparing two images therefore finds every byte that was set though it should not, or the reverse.
// (Set fields, not whole records: assigning these may change their padding.)
template <class Record>
class Image {
public:
    explicit Image(size_t behind = 0, uint8_t fill = untouched) : bytes_(sizeof(Record) + behind, fill) {
        if (behind % alignof(Record) != 0) {
            throw std::invalid_argument("a record at the end of a page would lose its alignment");
        }
    }

    Record *operator->() { return reinterpret_cast<Record *>(bytes_.data()); }
    const Record *operator->() const { return reinterpret_cast<const Record *>(bytes_.data()); }
    Record &operator*() { return *operator->(); }
    const Record &operator*() const { return *operator->(); }

    Bytes &bytes() { return bytes_; }
    const Bytes &bytes() const { return bytes_; }

    // Copies to where `field`, a part of this record, begins, and on behind it if it must.
    template <class Field>
    void put(const Field &field, const Bytes &content) {
        const auto offset = reinterpret_cast<const uint8_t *>(&field) - bytes_.data();
        std::copy(content.begin(), content.end(), bytes_.begin() + offset);
    }

    friend bool operator==(const Image &a, const Image &b) { return a.bytes_ == b.bytes_; }
    friend std::ostream &operator<<(std::ostream &out, const Image &image) { return out << image.bytes_; }

private:
    Bytes bytes_;
};

// A record of which nothing but zero bytes is known, as a message decoder leaves it.
template <class Record>
Image<Record> zeroed(size_t behind = 0) {
    return Image<Record>(behind, 0);
}

// Distance of a resulting position from where the operation began; none for null.
using Distance = std::optional<size_t>;

inline Distance distance(const uint8_t *from, const uint8_t *to) {
    return to == nullptr ? Distance() : Distance(to - from);
}

struct Encoded {
    Distance end;
    Bytes bytes; // all of the buffer; what was not written is 0xA5
};

// Encodes into a buffer of `room` bytes.
template <class Record>
Encoded encode(const Operations<Record> &operations, const Image<Record> &record, size_t room, Guard guard) {
    GuardedBuffer in(record.bytes().size(), guard);
    std::copy(record.bytes().begin(), record.bytes().end(), in.begin());
    in.make_read_only();
    GuardedBuffer out(room, guard);
    std::fill(out.begin(), out.end(), untouched);
    const uint8_t *end = operations.encode(reinterpret_cast<const Record *>(in.data()), out.data());
    return {distance(out.data(), end), Bytes(out.begin(), out.end())};
}

template <class Record>
Encoded encode(const Operations<Record> &operations, const Image<Record> &record, size_t room) {
    Encoded encoded = encode(operations, record, room, Guard::Behind);
    const Encoded again = encode(operations, record, room, Guard::Before);
    EXPECT_EQ(encoded.end, again.end);
    EXPECT_EQ(encoded.bytes, again.bytes);
    return encoded;
}

// The encoding of a record that can be encoded, and whose size operation is right.
template <class Record>
Bytes encoding(const Operations<Record> &operations, const Image<Record> &record) {
    const size_t size = operations.size(&*record);
    const Encoded encoded = encode(operations, record, size);
    EXPECT_EQ(encoded.end, size);
    return encoded.bytes;
}

template <class Record>
struct Decoded {
    Distance end;
    Image<Record> record;
};

// Decodes into a record that looks like `before`. Not a byte of the input beyond `wire` may be read.
template <class Record>
Decoded<Record> decode(const Operations<Record> &operations, const Bytes &wire, const Image<Record> &before,
                       Guard guard) {
    GuardedBuffer in(wire.size(), guard);
    std::copy(wire.begin(), wire.end(), in.begin());
    in.make_read_only();
    GuardedBuffer out(before.bytes().size(), guard);
    std::copy(before.bytes().begin(), before.bytes().end(), out.begin());
    const uint8_t *end = operations.decode(in.data(), reinterpret_cast<Record *>(out.data()));
    Image<Record> after = before;
    std::copy(out.begin(), out.end(), after.bytes().begin());
    return {distance(in.data(), end), after};
}

// Not for dynamic arrays: these decode to another pointer each time.
template <class Record>
Decoded<Record> decode(const Operations<Record> &operations, const Bytes &wire,
                       const Image<Record> &before = Image<Record>()) {
    Decoded<Record> decoded = decode(operations, wire, before, Guard::Behind);
    const Decoded<Record> again = decode(operations, wire, before, Guard::Before);
    EXPECT_EQ(decoded.end, again.end);
    EXPECT_EQ(decoded.record, again.record);
    return decoded;
}

// Expects decoding over `before` to end there and leave `expected`.
template <class Record>
void expect_decoded(const Operations<Record> &operations, const Bytes &wire, Distance end,
                    const Image<Record> &expected, const Image<Record> &before) {
    const Decoded<Record> decoded = decode(operations, wire, before);
    EXPECT_EQ(decoded.end, end) << wire;
    EXPECT_EQ(decoded.record, expected) << wire;
}

// Over 0xA5 bytes.
template <class Record>
void expect_decoded(const Operations<Record> &operations, const Bytes &wire, Distance end,
                    const Image<Record> &expected) {
    const size_t behind = expected.bytes().size() - sizeof(Record);
    expect_decoded(operations, wire, end, expected, Image<Record>(behind));
}

// Expects `wire` to be the encoding of `record`, and to decode to just that, over 0xA5 bytes.
template <class Record>
void expect_exchange(const Operations<Record> &operations, const Image<Record> &record, const Bytes &wire) {
    EXPECT_EQ(encoding(operations, record), wire);
    expect_decoded(operations, wire, wire.size(), record);
}

// What the operations of a type do with null pointers.
struct NullResults {
    size_t size_of_null;
    Distance decode_into_null; // the end that some decoders give
};

template <class Record>
void expect_null_results(const Operations<Record> &operations, const Image<Record> &record, const Bytes &wire,
                         const NullResults &expected) {
    EXPECT_EQ(operations.size(nullptr), expected.size_of_null);
    Bytes out(wire.size(), untouched);
    EXPECT_EQ(operations.encode(nullptr, out.data()), nullptr);
    EXPECT_EQ(out, Bytes(wire.size(), untouched));
    EXPECT_EQ(operations.encode(&*record, nullptr), nullptr);
    EXPECT_EQ(operations.encode(nullptr, nullptr), nullptr);
    EXPECT_EQ(distance(wire.data(), operations.decode(wire.data(), nullptr)), expected.decode_into_null);
    EXPECT_EQ(operations.decode(nullptr, nullptr), nullptr);
}

// A decoder that is handed no input leaves the record alone. (Not so that of a message.)
template <class Record>
void expect_nothing_from_null(const Operations<Record> &operations) {
    Image<Record> record;
    EXPECT_EQ(operations.decode(nullptr, &*record), nullptr);
    EXPECT_EQ(record, Image<Record>());
}

} // namespace tlvmsg_test
