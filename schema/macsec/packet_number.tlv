//! Packet numbers: notifications, the next one, and updates of the lowest one.

import "../common/session.tlv"
import "identifiers.tlv"

/// Two numbers of a packet-number notification.
struct macsec_pn_notify = 1669 {
    uint64  value_1
    uint16  value_2
}

/// Notification about packet numbers.
message macsec_pn_notify_msg_message { app_sess_hdr session  ifid interface  macsec_pn_notify pn_notify }

/// Lowest packet number of a receive SA, in two numbers.
struct macsec_update_lowest_pn_rx_sa = 1683 {
    uint16  value_1
    uint32  value_2
}

/// Update of the lowest packet number of a receive SA, given by its SC.
message macsec_update_lowest_pn_rx_sa_msg_message {
    app_sess_hdr                   session
    ifid                           interface
    macsec_update_lowest_pn_rx_sa  update
    macsec_sci                     sci
}

/// Return of the next packet number of an SA.
message macsec_next_pn_ret_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_sci    sci
    macsec_sa_an  sa_an
    macsec_pn     pn
}

/// Update of the lowest packet number of a receive SA, given by SC, virtual port and association number.
message macsec_rx_sa_lpn_update_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_sci         sci
    macsec_secy_vport  secy_vport
    macsec_sa_an       sa_an
    macsec_pn          pn
}
