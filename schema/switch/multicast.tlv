//! Multicast on a switch module: group entries, snooping by VLAN and router ports.

import "../common/address.tlv"
import "../common/session.tlv"

/// A multicast group entry, with two addresses.
struct switch_mcast_entry = 1628 {
    ip_address  ip_address_1
    ip_address  ip_address_2
    uint64      value_1
    uint16      value_2
}

/// Updates a multicast group entry.
message switch_mcast_update_message { app_sess_hdr session  ifid interface  switch_mcast_entry mcast_entry }

/// Multicast snooping of one VLAN.
struct vlan_mcast_snoop_cfg = 1629 {
    uint16       value
    zel_boolean  flag_1
    zel_boolean  flag_2
}

array vlan_mcast_snoop_bulk_snoop_cfg_array of vlan_mcast_snoop_cfg[16]

/// Multicast snooping of up to 16 VLANs.
struct vlan_mcast_snoop_bulk = 1630 {
    uint32                                 value
    vlan_mcast_snoop_bulk_snoop_cfg_array  snoop_cfg
}

/// Configures multicast snooping on a set of VLANs.
message mcast_vlan_snoop_message {
    app_sess_hdr           session
    ifid                   interface
    vlan_mcast_snoop_bulk  vlan_mcast_snoop_bulk
}

/// A port that a multicast router is on.
struct mcast_mrouter_port = 1631 {
    uint16       value
    zel_boolean  flag
}

/// Configures a multicast router port.
message switch_mport_config_message {
    app_sess_hdr        session
    ifid                interface
    mcast_mrouter_port  mcast_mrouter_port
}
