//! Types that many families share: the session header and interface identity, strings and names, addresses,
//! and small enumerations for protocols, directions, actions and states.

// This file holds network and hardware addresses.

enum addr_length = 1013

/// A version 4 address is a plain 32-bit number on the wire, not a byte array like the other addresses.
enum ipv4_addr = 1014

/// Chooses what an ip_address holds.
enum addr_type = 1025

bytes en_address_addr_array[6]

/// Hardware address of up to six bytes; zel_mac_addr has the same shape under another tag.
struct en_address = 1012 {
    en_address_addr_array  addr
}

bytes ipv6_addr_addr_array[16]

/// Version 6 address.
struct ipv6_addr = 1015 {
    ipv6_addr_addr_array  addr
}

bytes ipv4_maddr_addr_array[8]

/// Version 4 address in eight bytes, twice what one address needs.
struct ipv4_maddr = 1016 {
    ipv4_maddr_addr_array  addr
}

bytes ipv6_maddr_addr_array[32]

/// Version 6 address in 32 bytes, twice what one address needs.
struct ipv6_maddr = 1017 {
    ipv6_maddr_addr_array  addr
}

/// An address of the type that is named before it; with any other type there is none, which is no fault.
union ip_address_type_union by addr_type type {
    1: ipv4_addr   ipv4 @end_by_length
    2: ipv6_addr   ipv6
    3: ipv4_maddr  ipv4_maddr
    4: ipv6_maddr  ipv6_maddr
}

/// Network address of either version. Its length stands behind it and is not checked against it.
struct ip_address = 1018 {
    addr_type              type
    ip_address_type_union  address
    addr_length            length
}
