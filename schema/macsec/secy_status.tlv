//! Status, configuration and SC summary of a SecY: requests and answers.

import "../common/session.tlv"
import "identifiers.tlv"

/// Request for the status of a port's SecY.
message macsec_get_secy_status_msg_message { app_sess_hdr session  ifid interface  macsec_port port }

/// Receive status counters.
struct zel_rx_status_counters = 1680 {
    uint64       counter_1
    uint32       counter_2
    uint16       value
    zel_boolean  flag_1
    zel_boolean  flag_2
}

/// Bundle of receive status counters.
struct macsec_rx_status_bundle = 1681 {
    uint8          count
    dynamic array  rx_status_counters of zel_rx_status_counters counted by uint8
}

/// Configuration of a SecY, as read back.
struct macsec_get_secy_config = 1682 {
    macsec_xe_cipher_suite     cipher_suite
    macsec_xe_validate_frames  validate_frames
    zel_boolean                flag_1
    uint32                     value_1
    zel_boolean                flag_2
    zel_boolean                flag_3
    zel_boolean                flag_4
    zel_boolean                flag_5
    macsec_xe_conf_offset      conf_offset
    zel_boolean                flag_6
    uint32                     value_2
    zel_boolean                flag_7
    zel_boolean                flag_8
    uint32                     value_3
}

/// Configuration of a port's SecY, with its receive status counters.
message macsec_get_secy_config_msg_message {
    app_sess_hdr             session
    ifid                     interface
    macsec_port              port
    macsec_get_secy_config   secy_config
    macsec_rx_status_bundle  rx_status_bundle
}

/// Nine status flags of a SecY.
struct macsec_secy_status = 1689 {
    zel_boolean  flag_1
    zel_boolean  flag_2
    zel_boolean  flag_3
    zel_boolean  flag_4
    zel_boolean  flag_5
    zel_boolean  flag_6
    zel_boolean  flag_7
    zel_boolean  flag_8
    zel_boolean  flag_9
}

/// Answer to macsec_get_secy_status_msg_message.
message macsec_secy_status_msg_message {
    app_sess_hdr        session
    ifid                interface
    macsec_port         port
    macsec_secy_status  secy_status
}

/// Request for the SC summary of a virtual port.
message macsec_get_summary_sc_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_secy_vport  secy_vport
}

/// Number of SCs.
enum macsec_sc_num = 1746

/// Answer to macsec_get_summary_sc_msg_message.
message macsec_get_summary_sc_rsp_msg_message {
    app_sess_hdr       session
    ifid               interface
    macsec_secy_vport  secy_vport
    macsec_sc_num      sc_num
}
