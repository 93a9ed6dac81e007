//! VLAN tunnelling and EVC of a port.

import "../common/session.tlv"

/// Tunnelling on a port, as an interface state.
message ether_tunnel_message { app_sess_hdr session  ifid interface  if_state state }

/// VLAN tunnelling: two numbers and a flag.
struct zel_vlan_tunnel = 1133 {
    uint16       value_1
    uint16       value_2
    zel_boolean  flag
}

/// VLAN tunnelling configuration of a port.
message ether_vlan_tunnel_cfg_message { app_sess_hdr session  ifid interface  zel_vlan_tunnel vlan_tunnel }

/// EVC setting.
struct evc_conf = 1134 {
    zel_boolean  evc
}

/// EVC configuration of a port.
message ether_evc_conf_message { app_sess_hdr session  ifid interface  evc_conf evc_conf }
