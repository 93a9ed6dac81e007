//! Receive secure channels (SC) and secure associations (SA), key material included.

import "../common/session.tlv"
import "identifiers.tlv"

/// Creates a receive channel.
message macsec_create_rx_sc_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_sci         sci
    macsec_secy_vport  secy_vport
    macsec_mka_cb_ctx  mka_cb_ctx
}

bytes macsec_create_rx_sa_sak_key_array[32]
bytes macsec_create_rx_sa_hash_key_array[16]
bytes macsec_create_rx_sa_ssci_array[4]
bytes macsec_create_rx_sa_salt_array[12]

/// A receive association with its keys, which pass through unchecked and unchanged.
struct macsec_create_rx_sa = 1663 {
    uint16                              value_1
    uint32                              value_2
    uint16                              value_3
    /// The secure association key: up to 32 bytes.
    macsec_create_rx_sa_sak_key_array   sak_key
    /// The hash subkey.
    macsec_create_rx_sa_hash_key_array  hash_key
    /// The short secure channel identifier.
    macsec_create_rx_sa_ssci_array      ssci
    /// The salt of extended packet numbers.
    macsec_create_rx_sa_salt_array      salt
}

/// Creates an association of a receive channel.
message macsec_create_rx_sa_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_create_rx_sa  create_rx_sa
    macsec_sci           sci
    macsec_secy_vport    secy_vport
    macsec_mka_cb_ctx    mka_cb_ctx
}

/// Deletes a receive channel.
message macsec_delete_rx_sc_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_sci         sci
    macsec_secy_vport  secy_vport
    macsec_mka_cb_ctx  mka_cb_ctx
}

/// Deletes one association of a receive channel.
message macsec_delete_rx_sa_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_sci         sci
    macsec_sa_an       sa_an
    macsec_secy_vport  secy_vport
    macsec_mka_cb_ctx  mka_cb_ctx
}
