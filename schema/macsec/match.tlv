//! Tag clearing, the match of control frames and of header patterns, and default actions.

import "../common/session.tlv"
import "identifiers.tlv"

enum macsec_tag_clear_mode = 1670

/// Tag clearing: its mode and three numbers.
struct macsec_set_tag_clear = 1671 {
    macsec_tag_clear_mode  mode
    uint32                 value_1
    uint32                 value_2
    uint16                 value_3
}

/// Sets tag clearing on a virtual port.
message macsec_set_tag_clear_msg_message {
    app_sess_hdr          session
    ifid                  interface
    macsec_set_tag_clear  set_tag_clear
    macsec_secy_vport     secy_vport
}

enum macsec_pattern_match_action = 1672

/// Match of control frames.
struct macsec_set_control_frame_match = 1675 {
    uint16        value_1
    uint16        value_2
    zel_mac_addr  mac_addr
}

/// Sets the control-frame match of a port.
message macsec_set_control_frame_match_msg_message {
    app_sess_hdr                    session
    ifid                            interface
    macsec_port                     port
    macsec_set_control_frame_match  set_control_frame_match
}

bytes macsec_set_match_pattern_header_array[20]
bytes macsec_set_match_pattern_dmac_array[6]

/// A header pattern of up to 20 bytes and a destination MAC address, with the action on a match.
struct macsec_set_match_pattern = 1676 {
    macsec_set_match_pattern_header_array  header
    macsec_set_match_pattern_dmac_array    dmac
    uint32                                 value_1
    zel_boolean                            flag_1
    zel_boolean                            flag_2
    zel_boolean                            flag_3
    uint16                                 value_2
    uint16                                 value_3
    uint16                                 value_4
    uint32                                 value_5
    uint8                                  value_6
    macsec_direction                       direction
    macsec_pattern_match_action            action
}

/// Sets a match pattern on a virtual port.
message macsec_set_match_pattern_msg_message {
    app_sess_hdr              session
    ifid                      interface
    macsec_set_match_pattern  set_match_pattern
    macsec_secy_vport         secy_vport
}

/// Names the pattern to delete by direction and action.
struct macsec_delete_match_pattern = 1677 {
    macsec_direction             direction
    macsec_pattern_match_action  action
}

/// Deletes a match pattern from a virtual port.
message macsec_delete_match_pattern_msg_message {
    app_sess_hdr                 session
    ifid                         interface
    macsec_port                  port
    macsec_delete_match_pattern  delete_match_pattern
    macsec_secy_vport            secy_vport
}

enum default_action = 1678

/// Six default actions; only their order tells them apart.
struct macsec_default_action = 1679 {
    default_action  action_1
    default_action  action_2
    default_action  action_3
    default_action  action_4
    default_action  action_5
    default_action  action_6
}

/// Carries the default actions of a port.
message macsec_default_action_msg_message {
    app_sess_hdr           session
    ifid                   interface
    macsec_default_action  default_action
}

/// Asks for the default actions; needs no body.
message macsec_get_default_action_msg_message { app_sess_hdr session  ifid interface }
