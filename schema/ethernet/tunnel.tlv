//! VLAN tunnelling and EVC of a port.

import "../common/session.tlv"

/// Carries the state of tunnelling on a port.
message ether_tunnel_message { app_sess_hdr session  ifid interface  if_state state }

/// Tunnelling of VLANs.
struct zel_vlan_tunnel = 1133 {
    uint16       value_1
    uint16       value_2
    zel_boolean  flag
}

/// Configures VLAN tunnelling on a port.
message ether_vlan_tunnel_cfg_message { app_sess_hdr session  ifid interface  zel_vlan_tunnel vlan_tunnel }

/// EVC setting of a port.
struct evc_conf = 1134 {
    zel_boolean  evc
}

/// Configures EVC on a port.
message ether_evc_conf_message { app_sess_hdr session  ifid interface  evc_conf evc_conf }
