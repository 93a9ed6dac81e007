//! Session header and interface identity, and the small types that nearly every family uses beside them.

/// Type of a message.
enum app_sess_msg_type = 1002

/// Session header, which opens nearly every message: the session that it belongs to and what type it has.
struct app_sess_hdr = 1001 {
    uint32             value_1
    uint32             value_2
    uint32             value_3
    uint32             value_4
    /// For the caller to go by: no codec looks at it.
    app_sess_msg_type  msg_type
}

/// Type of a port. Stands alone: no other type holds it.
enum app_sess_port_type = 1003  // tlvc: W002 because no type of any family holds it

/// Identifies the port or interface that a message is about, normally straight behind the session header.
struct ifid = 1039 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
    uint32  value_4
    uint32  value_5
}

/// Hardware address; a full one has six bytes.
struct zel_mac_addr = 1042 {
    bytes[6]  mac
}

/// State of an interface.
enum if_state = 1061

/// Truth value, a plain 32-bit number to every codec.
enum zel_boolean = 1026
