//! Tag clearing, matching of control frames and of headers, and default actions.

import "../common/session.tlv"
import "identifiers.tlv"

/// Mode of tag clearing.
enum macsec_tag_clear_mode = 1670

/// Tag clearing: its mode and three numbers.
struct macsec_set_tag_clear = 1671 {
    macsec_tag_clear_mode  mode
    uint32                 value_1
    uint32                 value_2
    uint16                 value_3
}

/// Request to set the tag clearing of a virtual port.
message macsec_set_tag_clear_msg_message {
    app_sess_hdr          session
    ifid                  interface
    macsec_set_tag_clear  set_tag_clear
    macsec_secy_vport     secy_vport
}

/// Match of control frames: two numbers and a MAC address.
struct macsec_set_control_frame_match = 1675 {
    uint16        value_1
    uint16        value_2
    zel_mac_addr  mac_addr
}

/// Request to set the control-frame match of a port.
message macsec_set_control_frame_match_msg_message {
    app_sess_hdr                    session
    ifid                            interface
    macsec_port                     port
    macsec_set_control_frame_match  set_control_frame_match
}

bytes macsec_set_match_pattern_header_array[20]  // tlvc: W003 because it stands here for the order of types alone

bytes macsec_set_match_pattern_dmac_array[6]  // tlvc: W003 because it stands here for the order of types alone

/// Action on a pattern match.
enum macsec_pattern_match_action = 1672

/// Match pattern of a header and a destination MAC address, with its direction and action.
struct macsec_set_match_pattern = 1676 {
    macsec_set_match_pattern_header_array  header
    /// Destination MAC address.
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

/// Request to set a match pattern on a virtual port.
message macsec_set_match_pattern_msg_message {
    app_sess_hdr              session
    ifid                      interface
    macsec_set_match_pattern  set_match_pattern
    macsec_secy_vport         secy_vport
}

/// Direction and action of the match pattern to delete.
struct macsec_delete_match_pattern = 1677 {
    macsec_direction             direction
    macsec_pattern_match_action  action
}

/// Request to delete a match pattern from a virtual port.
message macsec_delete_match_pattern_msg_message {
    app_sess_hdr                 session
    ifid                         interface
    macsec_port                  port
    macsec_delete_match_pattern  delete_match_pattern
    macsec_secy_vport            secy_vport
}

/// One of the engine's default actions.
enum default_action = 1678

/// Six default actions, which only their order tells apart.
struct macsec_default_action = 1679 {
    default_action  action_1
    default_action  action_2
    default_action  action_3
    default_action  action_4
    default_action  action_5
    default_action  action_6
}

/// Default actions of a port.
message macsec_default_action_msg_message {
    app_sess_hdr           session
    ifid                   interface
    macsec_default_action  default_action
}

/// Request for the default actions; has no body.
message macsec_get_default_action_msg_message { app_sess_hdr session  ifid interface }
