//! Transmit SCs and SAs, key material included.

import "../common/session.tlv"
import "identifiers.tlv"

/// Request to create a transmit SC on a virtual port.
message macsec_create_tx_sc_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_secy_vport  secy_vport
    macsec_mka_cb_ctx  mka_cb_ctx
}

/// Request to delete the transmit SC of a virtual port.
message macsec_delete_tx_sc_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_secy_vport  secy_vport
    macsec_mka_cb_ctx  mka_cb_ctx
}

/// Transmit SA with its keys, which pass through unchecked and unchanged.
struct macsec_install_tx_sa = 1662 {
    uint16       value_1
    uint16       value_2
    uint32       value_3
    zel_boolean  flag
    uint16       value_4
    /// Secure association key, of which a 128-bit cipher uses 16 of the 32 bytes.
    bytes[32]    sak_key
    /// Hash subkey.
    bytes[16]    hash_key
    /// Short secure channel identifier (SSCI).
    bytes[4]     ssci
    /// Salt of extended packet numbers.
    bytes[12]    salt
}

/// Request to install an SA of a transmit SC.
message macsec_install_tx_sa_msg_message {
    app_sess_hdr          session
    ifid                  interface
    macsec_install_tx_sa  install_tx_sa
    macsec_mka_cb_ctx     mka_cb_ctx
}

/// Request to delete an SA of a transmit SC.
message macsec_delete_tx_sa_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_sa_an       sa_an
    macsec_secy_vport  secy_vport
    macsec_mka_cb_ctx  mka_cb_ctx
}

/// Request to manage a transmit SC.
message macsec_manage_tx_sc_msg_message {
    app_sess_hdr  session
    ifid          interface
    zel_boolean   flag
    macsec_sci    sci
}
