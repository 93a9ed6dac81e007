//! Network and hardware addresses.

/// Version 4 address, a plain 32-bit number where the other addresses are byte arrays.
enum ipv4_addr = 1014

/// Hardware address of up to six bytes; zel_mac_addr has the same shape under another tag.
struct en_address = 1012 {
    bytes[6]  addr
}

/// Version 6 address of up to 16 bytes.
struct ipv6_addr = 1015 {
    bytes[16]  addr
}

/// Version 4 address of up to eight bytes.
struct ipv4_maddr = 1016 {
    bytes[8]  addr
}

/// Version 6 address of up to 32 bytes.
struct ipv6_maddr = 1017 {
    bytes[32]  addr
}

/// Type of a network address; chooses which address follows it.
enum addr_type = 1025

/// Address of the type that stands before it; for any other type there is none, which is no fault.
union ip_address_type_union by addr_type type {
    1: ipv4_addr   ipv4 @end_by_length
    2: ipv6_addr   ipv6
    3: ipv4_maddr  ipv4_maddr
    4: ipv6_maddr  ipv6_maddr
}

/// Length of a network address; no codec compares it with the address.
enum addr_length = 1013

/// Network address of either version: its type, the address itself and its length.
struct ip_address = 1018 {
    addr_type              type
    ip_address_type_union  address
    addr_length            length
}
