//! Configuration and state of a port: speed, duplex, auto-negotiation, media, flow control, VLANs, link.

import "../common/session.tlv"
import "interface.tlv"

enum zel_ether_dual_rate = 1378
enum zel_ether_media = 1145
enum zel_ether_speed = 1146
enum zel_ether_duplex = 1147
enum zel_ether_autoneg = 1148

/// Flow control.
enum zel_ether_fc = 1149

/// Bitmap of 4,096 VLAN identifiers.
array ether_cfg_vlan_bitmask_array of uint32[128]

/// Bitmap of 4,096 VLAN identifiers, for tunnelling.
array ether_cfg_vlan_cfg_tunn_array of uint32[128]

/// Configuration of a port.
struct ether_cfg = 1117 {
    zel_ether_speed                speed
    zel_ether_duplex               duplex
    zel_ether_autoneg              autoneg
    zel_ether_media                media
    loop_dir                       loopback_direction
    zel_mac_addr                   mac_addr_1
    zel_mac_addr                   mac_addr_2
    if_state                       state_1
    if_state                       state_2
    ether_cfg_vlan_bitmask_array   vlan_bitmask
    if_state                       state_3
    zel_log_event_flag             log_event_flag
    ether_cfg_vlan_cfg_tunn_array  vlan_cfg_tunn
    uint32                         value
    zel_boolean                    flag
}

/// Two flow-control settings; only their order tells them apart.
struct ether_fc_cfg = 1627 {
    zel_ether_fc  fc_1
    zel_ether_fc  fc_2
}

/// What auto-negotiation arrived at.
struct ether_autoneg_state = 1118 {
    uint8             value
    zel_ether_duplex  duplex
    zel_ether_speed   speed
    zel_ether_fc      fc_1
    zel_ether_fc      fc_2
}

/// Whether the remote AC is notified.
struct if_ac_remote_notify = 1122 {
    zel_boolean  remote_notify
}

/// Whether a cross-connect is on the hardware interface descriptor.
struct xconn_on_hwidb = 1123 {
    zel_boolean  on_hwidb
}

/// Carries the cstate of a port as an interface state.
message ether_cstate_message { app_sess_hdr session  ifid interface  if_state state }

enum if_shut = 1727

/// Carries a port's shut setting for a reload.
message ether_shuton_reload_message { app_sess_hdr session  ifid interface  if_shut shut }

/// Carries the remote AC notification and the cross-connect flag of a port.
message ether_ac_remote_notify_message {
    app_sess_hdr         session
    ifid                 interface
    if_ac_remote_notify  ac_remote_notify
    xconn_on_hwidb       xconn_on_hwidb
}

/// Carries the limit on the bytes that a port receives.
message ether_rxbytes_message { app_sess_hdr session  ifid interface  if_rxbytes rxbytes }

/// Configures flow control on a port.
message ether_fc_config_message { app_sess_hdr session  ifid interface  ether_fc_cfg fc_cfg }

/// Configures a port.
message ether_config_message { app_sess_hdr session  ifid interface  ether_cfg ether_cfg }

/// What `ether_cfg` leaves out: two flow-control settings, a state and two numbers.
struct ether_more_cfg = 1257 {
    zel_ether_fc  fc_1
    zel_ether_fc  fc_2
    if_state      state
    uint32        value_1
    uint32        value_2
}

/// Configures a port in full: as `ether_config_message`, with the further settings.
message ethernet_config_message {
    app_sess_hdr    session
    ifid            interface
    ether_cfg       ether_cfg
    ether_more_cfg  ether_more_cfg
}

/// Carries the status of a port in the shape of its configuration.
message ether_port_status_message {
    app_sess_hdr    session
    ifid            interface
    ether_cfg       ether_cfg
    ether_more_cfg  ether_more_cfg
}

/// Speed of a port as a record of its own.
struct zel_ether_if_speed = 1260 {
    zel_ether_speed  speed
}

/// Carries the speed of a port.
message ether_if_speed_message { app_sess_hdr session  ifid interface  zel_ether_if_speed if_speed }

/// Duplex mode of a port as a record of its own.
struct zel_ether_if_duplex = 1261 {
    zel_ether_duplex  duplex
}

/// Carries the duplex mode of a port.
message ether_if_duplex_message { app_sess_hdr session  ifid interface  zel_ether_if_duplex if_duplex }

/// Auto-negotiation setting of a port as a record of its own.
struct zel_ether_if_autoneg = 1262 {
    zel_ether_autoneg  autoneg
}

/// Carries the auto-negotiation setting of a port.
message ether_if_autoneg_message { app_sess_hdr session  ifid interface  zel_ether_if_autoneg if_autoneg }

/// Tells why the link of a port is down.
message ether_link_down_reason_message { app_sess_hdr session  ifid interface  if_reason reason }

/// Two line fault flags.
struct zel_line_fault = 1234 {
    zel_boolean  flag_1
    zel_boolean  flag_2
}

/// Carries the line faults of a port.
message ether_line_fault_message { app_sess_hdr session  ifid interface  zel_line_fault line_fault }

/// Carries the link state of a port.
message ether_link_state_message { app_sess_hdr session  ifid interface  if_state state }

/// Carries the media type of a port.
message ether_media_type_message { app_sess_hdr session  ifid interface  zel_ether_media media }

/// Carries the dual-rate type of a port.
message ether_dual_rate_type_message { app_sess_hdr session  ifid interface  zel_ether_dual_rate dual_rate }

/// Carries the outcome of auto-negotiation on a port.
message ether_autoneg_status_message {
    app_sess_hdr         session
    ifid                 interface
    ether_autoneg_state  autoneg_state
}

/// A flow-control command.
struct zel_flowctrl_cmd = 1478 {
    uint8  command
}

/// Gives a flow-control command to a port.
message ether_set_flowctrl_message { app_sess_hdr session  ifid interface  zel_flowctrl_cmd flowctrl_cmd }

/// Timestamping setting of a port.
struct ts_enable_cfg = 1235 {
    zel_boolean  flag
    uint8        value
}

/// Configures timestamping on a port.
message ether_enable_port_ts_message { app_sess_hdr session  ifid interface  ts_enable_cfg ts_enable_cfg }
