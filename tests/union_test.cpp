// Unions: the element of the chosen alternative, or nothing at all.
#include "support/operations.h"

#include <tlvmsg/common.h>
#include <tlvmsg/server.h>

namespace tlvmsg_test {

namespace {

const auto address = OPERATIONS(ip_address);
const auto address_union = OPERATIONS(ip_address_type_union);

Image<ip_address> address_record(addr_type type) {
    Image<ip_address> record;
    record->address.type = type;
    record->length = 4;
    return record;
}

Bytes address_type(uint8_t type) { return hex("04 01 00 08 00 06 00 04 00 00 00") + Bytes{type}; }

const Bytes address_length = hex("03 F5 00 08 00 06 00 04 00 00 00 04");
const Bytes ipv4_element = hex("03 F6 00 08 00 06 00 04 0A 00 00 01");

TEST(Address, OfVersion4) {
    auto record = address_record(1);
    record->address.ipv4 = 0x0A000001;
    const Bytes wire = hex("03 FA 00 24") + address_type(1) + ipv4_element + address_length;
    expect_exchange(address, record, wire);
    expect_null_results(address, record, wire, {0, 40});
    expect_nothing_from_null(address);
}

// Every alternative has a tag and a capacity of its own.
TEST(Address, OfBytesFullOrShort) {
    auto version_6 = address_record(2);
    version_6->address.ipv6.addr.count = 4;
    version_6.put(version_6->address.ipv6.addr.bytes, hex("01 02 03 04 00"));
    expect_exchange(address, version_6,
                    hex("03 FA 00 2B") + address_type(2) +
                        hex("03 F7 00 0F  00 0A 00 0B 00 04 00 02 00 04  01 02 03 04 00") + address_length);

    auto of_32_bytes = address_record(4);
    of_32_bytes->address.ipv6_maddr.addr.count = 32;
    of_32_bytes.put(of_32_bytes->address.ipv6_maddr.addr.bytes, repeated(32, hex("FF")));
    expect_exchange(address, of_32_bytes,
                    hex("03 FA 00 46") + address_type(4) + hex("03 F9 00 2A  00 0A 00 26 00 04 00 02 00 20") +
                        repeated(32, hex("FF")) + address_length);
}

TEST(Address, OfAnyOtherTypeHasNoElement) {
    for (const uint8_t type : hex("00 05 07 FF")) {
        expect_exchange(address, address_record(type),
                        hex("03 FA 00 18") + address_type(type) + address_length);
    }
}

// Other than anywhere else, an enumeration ends here by its own length, and its value may be anything.
TEST(Address, OfVersion4EndsByItsLength) {
    auto expected = address_record(1);
    expect_decoded(address,
                   hex("03 FA 00 24") + address_type(1) + hex("03 F6 00 08 00 07 00 04 0A 00 00 01") +
                       address_length,
                   40, expected);

    expected->address.ipv4 = 0x0A000001;
    expect_decoded(address,
                   hex("03 FA 00 26") + address_type(1) + hex("03 F6 00 0A 00 06 00 04 0A 00 00 01 FF FF") +
                       address_length,
                   42, expected);

    // The enumeration of the same tag, by itself, ends behind its 12 bytes and takes nothing but a uint32.
    EXPECT_EQ(decode(OPERATIONS(ipv4_addr), hex("03 F6 00 0A 00 06 00 04 0A 00 00 01")).end, 12U);
    EXPECT_EQ(decode(OPERATIONS(ipv4_addr), hex("03 F6 00 08 00 07 00 04")).end, Distance());
}

// A type that is not there chooses nothing new: the record keeps what it says, and nothing is decoded.
TEST(Address, WithoutItsTypeIsNotDecoded) {
    Image<ip_address> before;
    before->address.type = 1;
    expect_decoded(address, hex("03 FA 00 0C") + ipv4_element, 16, before, before);
}

Image<ip_address_type_union> union_record(addr_type type) {
    Image<ip_address_type_union> record;
    record->type = type;
    return record;
}

TEST(Union, ByItselfIsTheChosenElement) {
    auto record = union_record(1);
    record->ipv4 = 0x0A000001;
    EXPECT_EQ(encoding(address_union, record), ipv4_element);
    expect_decoded(address_union, ipv4_element, 12, record, union_record(1));
    expect_null_results(address_union, record, ipv4_element, {0, Distance()});
}

// Nothing to write or to read is no failure; a null position stays one.
TEST(Union, WithoutAChosenElementLeavesThePositionWhereItIs) {
    const auto record = union_record(7);
    EXPECT_EQ(address_union.size(&*record), 0);
    const Encoded encoded = encode(address_union, record, 0);
    EXPECT_EQ(encoded.end, 0U);
    expect_decoded(address_union, {}, 0, record, record);
    expect_null_results(address_union, record, ipv4_element, {0, Distance()});
    auto out = record;
    EXPECT_EQ(address_union.decode(nullptr, &*out), nullptr);
}

// This union has no record of its own: its operations take the record that holds it, selector and all.
TEST(Union, MayLiveInTheEnclosingRecord) {
    Image<svrm_ipaddr> record;
    record->addr_type = 5;
    record->ip_type = 1;
    record->dhcp_info.dhcp = 1;
    const Bytes dhcp = hex("04 BA 00 0C  04 02 00 08 00 06 00 04 00 00 00 01");
    expect_exchange(
        OPERATIONS(svrm_ipaddr), record,
        hex("04 BB 00 28  04 C8 00 08 00 06 00 04 00 00 00 05  04 C9 00 08 00 06 00 04 00 00 00 01") + dhcp);
    const auto operations = OPERATIONS(svrm_ipaddr_type_union);
    EXPECT_EQ(encoding(operations, record), dhcp);
    auto before = record;
    before->dhcp_info.dhcp = 0;
    expect_decoded(operations, dhcp, 16, record, before);
    record->ip_type = 2;
    EXPECT_EQ(encoding(operations, record), Bytes());
}

} // namespace

} // namespace tlvmsg_test
