//! Strings, passwords, user names, and the names of objects. The decoder allocates their characters and puts
//! a zero byte behind them, as there is one on the wire. The length before the characters and the count in
//! their array are one field: the array's is read last and stays.

dynamic bytes zel_vstring_vstring_array counted by uint32

/// Plain string.
struct zel_vstring = 1719 {
    uint32                     count
    zel_vstring_vstring_array  characters
}

dynamic bytes zel_password_vstring_password_array counted by uint32

/// Password; zel_aes_password_vstring is the encrypted form.
struct zel_password_vstring = 1721 {
    uint32                               count
    zel_password_vstring_password_array  password
}

dynamic bytes zel_username_vstring_username_array counted by uint32

/// User name.
struct zel_username_vstring = 1723 {
    uint32                               count
    zel_username_vstring_username_array  username
}

dynamic bytes zel_aes_password_vstring_password_array counted by uint32

/// Encrypted password, opaque here: its characters travel unchanged.
struct zel_aes_password_vstring = 1720 {
    uint16                                   value
    uint32                                   count
    zel_aes_password_vstring_password_array  password
}

dynamic bytes zel_aes_vstring_aes_string_array counted by uint32

/// Encrypted string, as opaque as an encrypted password.
struct zel_aes_vstring = 1722 {
    uint16                            value
    uint32                            count
    zel_aes_vstring_aes_string_array  aes_string
}

dynamic bytes acl_handle_name_array counted by uint16

/// Name of an access list.
struct acl_handle = 1006 {
    uint16                 count
    acl_handle_name_array  name
}

dynamic bytes dov_handle_name_name_array counted by uint16

/// Name of a handle.
struct dov_handle_name = 1007 {
    uint16                      count
    dov_handle_name_name_array  name
}

dynamic bytes if_name_name_array counted by uint8

/// Name of an interface of at most 255 characters, the most that its count can say.
struct if_name = 1008 {
    uint8               count
    if_name_name_array  name
}

dynamic bytes route_map_name_str_array counted by uint16

/// Name of a route map.
struct route_map_name = 1009 {
    uint16                    count
    route_map_name_str_array  str
}

dynamic bytes dov_bytestr_bytes_array counted by uint16

/// Opaque bytes.
struct dov_bytestr = 1010 {
    uint16                   count
    dov_bytestr_bytes_array  bytes
}

dynamic bytes vrf_name_str_array counted by uint16

/// Name of a routing instance.
struct vrf_name = 1019 {
    uint16              count
    vrf_name_str_array  str
}

dynamic bytes rg_name_str_array counted by uint16

/// Name of a redundancy group.
struct rg_name = 1021 {
    uint16             count
    rg_name_str_array  str
}
