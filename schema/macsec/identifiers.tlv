//! What names a port, a secure channel or a secure association, and the settings that several records share.

import "../common/session.tlv"

enum macsec_xe_cipher_suite = 1647
enum macsec_xe_conf_offset = 1651
enum macsec_xe_validate_frames = 1652
enum macsec_direction = 1673

/// Secure channel identifier.
struct macsec_sci = 1648 {
    zel_mac_addr  mac_addr
    uint16        port_number
}

/// Association number.
struct macsec_sa_an = 1649 {
    uint16  an
}

/// Context value of the key agreement (MKA) caller, carried without interpretation.
struct macsec_mka_cb_ctx = 1653 {
    uint64  context
}

/// Virtual port of a SecY.
struct macsec_secy_vport = 1655 {
    uint16  vport
}

/// A port.
struct macsec_port = 1674 {
    uint16  port
}

/// Index of a self-test step.
struct macsec_post_index = 1730 {
    uint8  index
}

/// Packet number.
struct macsec_pn = 1750 {
    uint64  pn
}
