// Byte order, raw elements, memory and the nine scalars.
#include "support/operations.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/runtime.h>

#include <limits>

namespace tlvmsg_test {

namespace {

// `bytes` where nothing may be touched but them, at an address that is aligned for nothing.
GuardedBuffer &fill(GuardedBuffer &buffer, const Bytes &bytes) {
    std::copy(bytes.begin(), bytes.end(), buffer.begin());
    return buffer;
}

template <class Value>
Value stored_order(const Bytes &bytes) {
    Value value;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

template <class Value, class Written>
void expect_byte_order(Value (*read)(const uint8_t *), Value (*write)(uint8_t *, Value), Value value,
                       const Bytes &bytes, Written written) {
    for (const size_t misaligned : {size_t{0}, size_t{1}}) {
        GuardedBuffer buffer(bytes.size() + misaligned);
        fill(buffer, bytes);
        EXPECT_EQ(read(buffer.data()), value);
    }
    GuardedBuffer out(bytes.size());
    EXPECT_EQ(write(out.data(), value), written);
    EXPECT_EQ(Bytes(out.begin(), out.end()), bytes);
}

// The narrow writers return what they stored, the widest what it was given.
TEST(ByteOrder, IsBigEndian) {
    expect_byte_order<uint16_t>(tlv_read_16bit, tlv_write_16bit, 0x81F2, hex("81 F2"),
                                stored_order<uint16_t>(hex("81 F2")));
    expect_byte_order<uint32_t>(tlv_read_32bit, tlv_write_32bit, 0x81F2A3B4, hex("81 F2 A3 B4"),
                                stored_order<uint32_t>(hex("81 F2 A3 B4")));
    expect_byte_order<uint64_t>(tlv_read_64bit, tlv_write_64bit, 0x81F2A3B4C5D60718,
                                hex("81 F2 A3 B4 C5 D6 07 18"), 0x81F2A3B4C5D60718);
}

TEST(RawElement, HeaderIsTagAndLength) {
    GuardedBuffer out(4);
    EXPECT_EQ(tlv_encode_type_len(out.data(), 0x03EA, 0xFF10), out.end());
    EXPECT_EQ(Bytes(out.begin(), out.end()), hex("03 EA FF 10"));
    EXPECT_EQ(tlv_encode_type_len(nullptr, 0x03EA, 0x0010), nullptr);
}

TEST(RawElement, ValueIsCopied) {
    const Bytes source = hex("61 62 63");
    GuardedBuffer out(7);
    EXPECT_EQ(tlv_encode_buffer(out.data(), 0, source.data(), 3), out.end());
    EXPECT_EQ(Bytes(out.begin(), out.end()), hex("00 00 00 03 61 62 63"));
    GuardedBuffer empty(4);
    EXPECT_EQ(tlv_encode_buffer(empty.data(), 10, source.data(), 0), empty.end());
    EXPECT_EQ(Bytes(empty.begin(), empty.end()), hex("00 0A 00 00"));
}

TEST(RawElement, NothingIsWrittenWithoutBothEnds) {
    Bytes out(8, untouched);
    EXPECT_EQ(tlv_encode_buffer(out.data(), 1, nullptr, 0), nullptr);
    EXPECT_EQ(out, Bytes(8, untouched));
    EXPECT_EQ(tlv_encode_buffer(nullptr, 1, out.data(), 3), nullptr);
}

// Only the header is looked at: here there is nothing behind it.
TEST(RawElement, IsReadWithoutItsValue) {
    GuardedBuffer in(4);
    fill(in, hex("03 EA 00 10")).make_read_only();
    uint16_t tag = 0;
    uint16_t length = 0;
    const uint8_t *value = nullptr;
    EXPECT_EQ(tlv_decode_buffer(in.data(), &tag, &length, &value), in.data() + 20);
    EXPECT_EQ(tag, 1002);
    EXPECT_EQ(length, 16);
    EXPECT_EQ(value, in.data() + 4);
}

TEST(RawElement, ReadingStoresNothingWhenAPointerIsMissing) {
    const Bytes in = hex("03 EA 00 10");
    uint16_t tag = 1;
    uint16_t length = 2;
    const uint8_t *value = in.data();
    EXPECT_EQ(tlv_decode_buffer(nullptr, &tag, &length, &value), nullptr);
    EXPECT_EQ(tlv_decode_buffer(in.data(), nullptr, &length, &value), nullptr);
    EXPECT_EQ(tlv_decode_buffer(in.data(), &tag, nullptr, &value), nullptr);
    EXPECT_EQ(tlv_decode_buffer(in.data(), &tag, &length, nullptr), nullptr);
    EXPECT_EQ(tag, 1);
    EXPECT_EQ(length, 2);
    EXPECT_EQ(value, in.data());
}

// The header alone decides: a refused element's value is never read.
template <class Value>
void expect_refused(const Operations<Value> &operations, uint16_t tag, uint16_t length) {
    expect_decoded(operations, be16(tag) + be16(length), Distance(), Image<Value>());
}

// `sent` is what the encoder writes; the decoder wants the same value under the tag `accepted`.
template <class Value>
void expect_scalar(const Operations<Value> &operations, Value value, const Bytes &sent, uint16_t accepted) {
    SCOPED_TRACE(sent);
    Image<Value> record;
    *record = value;
    EXPECT_EQ(encoding(operations, record), sent);

    const Bytes received = be16(accepted) + Bytes(sent.begin() + 2, sent.end());
    expect_decoded(operations, received, sent.size(), record);

    constexpr uint16_t length = sizeof(Value);
    for (const int tag : {accepted - 1, accepted + 1, accepted + 256, 0}) {
        expect_refused(operations, static_cast<uint16_t>(tag), length);
    }
    for (const int wrong : {length - 1, length + 1, length + 256, 0}) {
        expect_refused(operations, accepted, static_cast<uint16_t>(wrong));
    }
    expect_null_results(operations, record, received, {sent.size(), Distance()});
    expect_nothing_from_null(operations);
}

TEST(Scalar, IsAnElementOfItsOwnTag) {
    expect_scalar<uint8_t>(SCALAR_OPERATIONS(uint8), 0xFE, hex("00 02 00 01 FE"), 2);
    expect_scalar<int8_t>(SCALAR_OPERATIONS(int8), -2, hex("00 03 00 01 FE"), 3);
    expect_scalar<uint16_t>(SCALAR_OPERATIONS(uint16), 0xFEDC, hex("00 04 00 02 FE DC"), 4);
    expect_scalar<int16_t>(SCALAR_OPERATIONS(int16), -2, hex("00 05 00 02 FF FE"), 5);
    expect_scalar<uint32_t>(SCALAR_OPERATIONS(uint32), 0x01020304, hex("00 06 00 04 01 02 03 04"), 6);
    expect_scalar<int32_t>(SCALAR_OPERATIONS(int32), -2, hex("00 07 00 04 FF FF FF FE"), 7);
    expect_scalar<uint64_t>(SCALAR_OPERATIONS(uint64), 0xFEDCBA9876543210,
                            hex("00 08 00 08 FE DC BA 98 76 54 32 10"), 8);
    expect_scalar<int64_t>(SCALAR_OPERATIONS(int64), std::numeric_limits<int64_t>::min(),
                           hex("00 09 00 08 80 00 00 00 00 00 00 00"), 9);
}

// The tag of uint8 is read where its own is written, so that a char is refused by its own decoder.
TEST(Scalar, CharDecodesWhatUint8Encodes) {
    expect_scalar<char>(SCALAR_OPERATIONS(char), 'A', hex("00 01 00 01 41"), 2);
}

class Memory : public testing::Test {
protected:
    void SetUp() override { osal_double_reset(); }
    void TearDown() override {
        EXPECT_EQ(osal_double_faults(), 0U);
        osal_double_reset();
    }

    static void expect_call(size_t index, osal_operation operation, uint32_t size, const void *block) {
        const osal_call call = osal_double_call(index);
        EXPECT_EQ(call.operation, operation);
        EXPECT_EQ(call.selector, 0U);
        EXPECT_EQ(call.size, size);
        EXPECT_EQ(call.block, block);
    }
};

TEST_F(Memory, IsThePlatformsPoolZeroWhichAlsoClears) {
    void *block = tlv_malloc(5);
    tlv_free(block);
    auto *zero = static_cast<uint8_t *>(tlv_calloc(3, 5));
    ASSERT_NE(zero, nullptr);
    EXPECT_EQ(Bytes(zero, zero + 15), Bytes(15, 0));
    ASSERT_EQ(osal_double_call_count(), 4U);
    expect_call(0, OSAL_MALLOC, 5, block);
    expect_call(1, OSAL_FREE, 5, block);
    expect_call(2, OSAL_MALLOC, 15, zero);
    expect_call(3, OSAL_MEMSET, 15, zero);
}

TEST_F(Memory, CallocWrapsAt32Bits) {
    EXPECT_NE(tlv_calloc(0x10000, 0x10000), nullptr);
    EXPECT_EQ(osal_double_call(0).size, 0U);
    EXPECT_NE(tlv_calloc(0x10001, 0x10000), nullptr);
    EXPECT_EQ(osal_double_call(2).size, 0x10000U);
}

TEST_F(Memory, FailureGivesNullAndClearsNothing) {
    osal_double_fail(1, 1);
    EXPECT_EQ(tlv_malloc(UINT32_MAX), nullptr);
    EXPECT_EQ(tlv_calloc(1, 1), nullptr);
    ASSERT_EQ(osal_double_call_count(), 2U);
    expect_call(0, OSAL_MALLOC, UINT32_MAX, nullptr);
    expect_call(1, OSAL_MALLOC, 1, nullptr);
}

} // namespace

} // namespace tlvmsg_test
