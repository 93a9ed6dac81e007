//! Receive SCs and SAs, key material included.

import "../common/session.tlv"
import "identifiers.tlv"

/// Request to create a receive SC.
message macsec_create_rx_sc_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_sci         sci
    macsec_secy_vport  secy_vport
    macsec_mka_cb_ctx  mka_cb_ctx
}

/// Receive SA with its keys, which pass through unchecked and unchanged.
struct macsec_create_rx_sa = 1663 {
    uint16     value_1
    uint32     value_2
    uint16     value_3
    /// Secure association key, of which a 128-bit cipher uses 16 of the 32 bytes.
    bytes[32]  sak_key
    /// Hash subkey.
    bytes[16]  hash_key
    /// Short secure channel identifier (SSCI).
    bytes[4]   ssci
    /// Salt of extended packet numbers.
    bytes[12]  salt
}

/// Request to create an SA of a receive SC.
message macsec_create_rx_sa_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_create_rx_sa  create_rx_sa
    macsec_sci           sci
    macsec_secy_vport    secy_vport
    macsec_mka_cb_ctx    mka_cb_ctx
}

/// Request to delete a receive SC.
message macsec_delete_rx_sc_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_sci         sci
    macsec_secy_vport  secy_vport
    macsec_mka_cb_ctx  mka_cb_ctx
}

/// Request to delete an SA of a receive SC.
message macsec_delete_rx_sa_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_sci         sci
    macsec_sa_an       sa_an
    macsec_secy_vport  secy_vport
    macsec_mka_cb_ctx  mka_cb_ctx
}
