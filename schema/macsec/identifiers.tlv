//! Identifiers of ports, SCs and SAs, and the settings that several structures share.

import "../common/session.tlv"

/// Cipher suite of a SecY.
enum macsec_xe_cipher_suite = 1647

/// Confidentiality offset of a SecY.
enum macsec_xe_conf_offset = 1651

/// Frame validation of a SecY.
enum macsec_xe_validate_frames = 1652

/// Direction of a match pattern or of a frame capture.
enum macsec_direction = 1673

/// Secure channel identifier (SCI).
struct macsec_sci = 1648 {
    zel_mac_addr  mac_addr
    uint16        port_number
}

/// Association number (AN).
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

/// Port of the engine.
struct macsec_port = 1674 {
    uint16  port
}

/// Index of a self-test step.
struct macsec_post_index = 1730 {
    uint8  index
}

/// Packet number (PN).
struct macsec_pn = 1750 {
    uint64  pn
}
