//! SecY of a port: configuration, management, enabling and delayed protection.

import "../common/session.tlv"
import "identifiers.tlv"

/// Configuration to give to a SecY.
struct macsec_set_secy_config = 1654 {
    macsec_xe_cipher_suite     cipher_suite
    macsec_xe_validate_frames  validate_frames
    zel_mac_addr               mac_addr
    uint16                     value_1
    zel_boolean                flag_1
    uint32                     value_2
    zel_boolean                flag_2
    zel_boolean                flag_3
    zel_boolean                flag_4
    zel_boolean                flag_5
    macsec_xe_conf_offset      conf_offset
}

/// Request to configure a SecY.
message macsec_set_secy_config_msg_message {
    app_sess_hdr            session
    ifid                    interface
    macsec_set_secy_config  set_secy_config
}

/// Management action on a SecY.
enum macsec_secy_manage = 1656

/// What to do with a SecY: the action and a number.
struct macsec_secy_action = 1657 {
    macsec_secy_manage  manage
    uint16              value
}

/// Request to manage a SecY.
message macsec_set_secy_msg_message { app_sess_hdr session  ifid interface  macsec_secy_action secy_action }

/// Enabling of MACsec.
enum macsec_enable = 1658

/// Enabling action by itself.
struct macsec_enable_action = 1659 {
    macsec_enable  enable
}

/// Request to set whether MACsec is enabled on a port.
message macsec_enable_macsec_msg_message {
    app_sess_hdr          session
    ifid                  interface
    macsec_enable_action  enable_action
}

/// Whether delayed protection is enabled.
struct macsec_delay_enable_flag = 1749 {
    zel_boolean  enable
}

/// Request to set the delayed protection of a virtual port.
message macsec_delay_protect_enable_msg_message {
    app_sess_hdr              session
    ifid                      interface
    macsec_secy_vport         secy_vport
    macsec_delay_enable_flag  delay_enable_flag
}
