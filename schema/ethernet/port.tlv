//! Port configuration and state: speed, duplex, auto-negotiation, media, flow control, VLANs, link.

import "../common/session.tlv"
import "interface.tlv"

/// Speed of a port.
enum zel_ether_speed = 1146

/// Duplex of a port.
enum zel_ether_duplex = 1147

/// Auto-negotiation of a port.
enum zel_ether_autoneg = 1148

/// Media of a port.
enum zel_ether_media = 1145

/// Bitmap of 4,096 VLAN identifiers.
array ether_cfg_vlan_bitmask_array of uint32[128]

/// Bitmap of 4,096 VLAN identifiers, for tunnelling.
array ether_cfg_vlan_cfg_tunn_array of uint32[128]

/// Settings of a port, VLAN bitmaps included.
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

/// Flow control of a port.
enum zel_ether_fc = 1149

/// Two flow-control settings, which only their order tells apart.
struct ether_fc_cfg = 1627 {
    zel_ether_fc  fc_1
    zel_ether_fc  fc_2
}

/// State of auto-negotiation: a number, duplex, speed and two flow-control settings.
struct ether_autoneg_state = 1118 {
    uint8             value
    zel_ether_duplex  duplex
    zel_ether_speed   speed
    zel_ether_fc      fc_1
    zel_ether_fc      fc_2
}

/// Remote notification of an AC.
struct if_ac_remote_notify = 1122 {
    zel_boolean  remote_notify
}

/// Whether there is a cross-connect on the hardware interface descriptor.
struct xconn_on_hwidb = 1123 {
    zel_boolean  on_hwidb
}

/// Cstate of a port, as an interface state.
message ether_cstate_message { app_sess_hdr session  ifid interface  if_state state }

enum if_shut = 1727  // tlvc: W003 because nothing tells what it is for

/// Shut-on-reload of a port.
message ether_shuton_reload_message { app_sess_hdr session  ifid interface  if_shut shut }

/// Remote notification of the AC of a port, with its cross-connect flag.
message ether_ac_remote_notify_message {
    app_sess_hdr         session
    ifid                 interface
    if_ac_remote_notify  ac_remote_notify
    xconn_on_hwidb       xconn_on_hwidb
}

/// Receive byte limit of a port.
message ether_rxbytes_message { app_sess_hdr session  ifid interface  if_rxbytes rxbytes }

/// Flow-control configuration of a port.
message ether_fc_config_message { app_sess_hdr session  ifid interface  ether_fc_cfg fc_cfg }

/// Configuration of a port.
message ether_config_message { app_sess_hdr session  ifid interface  ether_cfg ether_cfg }

/// Further settings of a port: flow control, an interface state and two numbers.
struct ether_more_cfg = 1257 {
    zel_ether_fc  fc_1
    zel_ether_fc  fc_2
    if_state      state
    uint32        value_1
    uint32        value_2
}

/// Configuration of a port, with its further settings.
message ethernet_config_message {
    app_sess_hdr    session
    ifid            interface
    ether_cfg       ether_cfg
    ether_more_cfg  ether_more_cfg
}

/// Status of a port, in the structures of its configuration.
message ether_port_status_message {
    app_sess_hdr    session
    ifid            interface
    ether_cfg       ether_cfg
    ether_more_cfg  ether_more_cfg
}

/// Speed by itself.
struct zel_ether_if_speed = 1260 {
    zel_ether_speed  speed
}

/// Speed of a port, apart from its other settings.
message ether_if_speed_message { app_sess_hdr session  ifid interface  zel_ether_if_speed if_speed }

/// Duplex by itself.
struct zel_ether_if_duplex = 1261 {
    zel_ether_duplex  duplex
}

/// Duplex of a port, apart from its other settings.
message ether_if_duplex_message { app_sess_hdr session  ifid interface  zel_ether_if_duplex if_duplex }

/// Auto-negotiation by itself.
struct zel_ether_if_autoneg = 1262 {
    zel_ether_autoneg  autoneg
}

/// Auto-negotiation of a port, apart from its other settings.
message ether_if_autoneg_message { app_sess_hdr session  ifid interface  zel_ether_if_autoneg if_autoneg }

/// Reason why the link of a port is down.
message ether_link_down_reason_message { app_sess_hdr session  ifid interface  if_reason reason }

/// Two line fault flags.
struct zel_line_fault = 1234 {
    zel_boolean  flag_1
    zel_boolean  flag_2
}

/// Line faults of a port.
message ether_line_fault_message { app_sess_hdr session  ifid interface  zel_line_fault line_fault }

/// Link state of a port.
message ether_link_state_message { app_sess_hdr session  ifid interface  if_state state }

/// Media type of a port.
message ether_media_type_message { app_sess_hdr session  ifid interface  zel_ether_media media }

/// Dual rate of a port.
enum zel_ether_dual_rate = 1378

/// Dual-rate type of a port.
message ether_dual_rate_type_message { app_sess_hdr session  ifid interface  zel_ether_dual_rate dual_rate }

/// Auto-negotiation status of a port.
message ether_autoneg_status_message {
    app_sess_hdr         session
    ifid                 interface
    ether_autoneg_state  autoneg_state
}

/// Flow-control command.
struct zel_flowctrl_cmd = 1478 {
    uint8  command
}

/// Flow-control command for a port.
message ether_set_flowctrl_message { app_sess_hdr session  ifid interface  zel_flowctrl_cmd flowctrl_cmd }

/// Timestamping: a flag and a number.
struct ts_enable_cfg = 1235 {
    zel_boolean  flag
    uint8        value
}

/// Timestamping configuration of a port.
message ether_enable_port_ts_message { app_sess_hdr session  ifid interface  ts_enable_cfg ts_enable_cfg }
