//! What nearly every message opens with: the session header and the identity of the interface it is about,
//! and the few small types that all families use beside them.

enum app_sess_msg_type = 1002

/// Opens nearly every message: the session that the message belongs to, then what kind of message it is.
struct app_sess_hdr = 1001 {
    uint32             value_1
    uint32             value_2
    uint32             value_3
    uint32             value_4
    /// Kind of message, for the caller to go by: no codec looks at it.
    app_sess_msg_type  msg_type
}

/// Stands alone: no other type holds it.
enum app_sess_port_type = 1003

/// Names the port or interface that a message is about, normally straight behind the session header.
struct ifid = 1039 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
    uint32  value_4
    uint32  value_5
}

/// The bytes of a hardware address; a full one has six.
bytes zel_mac_addr_mac_array[6]

/// Hardware address.
struct zel_mac_addr = 1042 {
    zel_mac_addr_mac_array  mac
}

/// Interface state.
enum if_state = 1061

/// Truth value, 12 bytes on the wire like every enumeration.
enum zel_boolean = 1026
