//! Multicast group entries, snooping by VLAN, and router ports.

import "../common/address.tlv"
import "../common/session.tlv"

/// Multicast group entry: two addresses and two numbers.
struct switch_mcast_entry = 1628 {
    ip_address  ip_address_1
    ip_address  ip_address_2
    uint64      value_1
    uint16      value_2
}

/// Update of a multicast group entry.
message switch_mcast_update_message { app_sess_hdr session  ifid interface  switch_mcast_entry mcast_entry }

/// Multicast snooping of one VLAN.
struct vlan_mcast_snoop_cfg = 1629 {
    uint16       value
    zel_boolean  flag_1
    zel_boolean  flag_2
}

/// Multicast snooping of several VLANs.
struct vlan_mcast_snoop_bulk = 1630 {
    /// Separate from the array's count.
    uint32                    value
    vlan_mcast_snoop_cfg[16]  snoop_cfg
}

/// Multicast snooping in bulk.
message mcast_vlan_snoop_message {
    app_sess_hdr           session
    ifid                   interface
    vlan_mcast_snoop_bulk  vlan_mcast_snoop_bulk
}

/// Multicast router port: a number and a flag.
struct mcast_mrouter_port = 1631 {
    uint16       value
    zel_boolean  flag
}

/// Configuration of a multicast router port.
message switch_mport_config_message {
    app_sess_hdr        session
    ifid                interface
    mcast_mrouter_port  mcast_mrouter_port
}
