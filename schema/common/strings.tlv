//! Strings, passwords, user names, and the names of objects. The decoder allocates their characters and puts
//! a zero byte behind them, as there is one on the wire. The length before the characters and the count in
//! their array are one field: the array's is read last and stays.

/// Plain string.
struct zel_vstring = 1719 {
    uint32         count
    dynamic bytes  characters counted by uint32 as zel_vstring_vstring_array
}

/// Password; zel_aes_password_vstring is the encrypted form.
struct zel_password_vstring = 1721 {
    uint32         count
    dynamic bytes  password counted by uint32
}

/// User name.
struct zel_username_vstring = 1723 {
    uint32         count
    dynamic bytes  username counted by uint32
}

/// Encrypted password, opaque here: its characters travel unchanged.
struct zel_aes_password_vstring = 1720 {
    uint16         value
    uint32         count
    dynamic bytes  password counted by uint32
}

/// Encrypted string, as opaque as an encrypted password.
struct zel_aes_vstring = 1722 {
    uint16         value
    uint32         count
    dynamic bytes  aes_string counted by uint32
}

/// Name of an access list.
struct acl_handle = 1006 {
    uint16         count
    dynamic bytes  name counted by uint16
}

/// Name of a handle.
struct dov_handle_name = 1007 {
    uint16         count
    dynamic bytes  name counted by uint16
}

/// Name of an interface of at most 255 characters, the most that its count can say.
struct if_name = 1008 {
    uint8          count
    dynamic bytes  name counted by uint8
}

/// Name of a route map.
struct route_map_name = 1009 {
    uint16         count
    dynamic bytes  str counted by uint16
}

/// Opaque bytes.
struct dov_bytestr = 1010 {
    uint16         count
    dynamic bytes  bytes counted by uint16
}

/// Name of a routing instance.
struct vrf_name = 1019 {
    uint16         count
    dynamic bytes  str counted by uint16
}

/// Name of a redundancy group.
struct rg_name = 1021 {
    uint16         count
    dynamic bytes  str counted by uint16
}
