//! VLAN membership of ports, and the native VLAN of trunks.

import "../common/session.tlv"

/// One VLAN: a number and a flag.
struct vlan_config = 1617 {
    uint16       value
    zel_boolean  flag
}

/// Native VLAN: a number and a flag.
struct trunk_native_vlan_config = 1619 {
    uint16       value
    zel_boolean  flag
}

/// Bitmap of 4,096 VLAN identifiers.
bytes vlan_config_all_vlan_bitmap_array[512]

/// All VLANs, as a bitmap.
struct vlan_config_all = 1618 {
    vlan_config_all_vlan_bitmap_array  vlan_bitmap
}

/// Action of an update of VLAN membership.
enum vlan_action = 1614

/// Update of the membership of a port in all VLANs, with the native VLAN of its trunk.
message switch_port_vlan_update_all_message {
    app_sess_hdr              session
    ifid                      interface
    vlan_action               action
    vlan_config_all           vlan_config_all
    trunk_native_vlan_config  trunk_native_vlan_config
}

/// Update of the membership of a port in one VLAN.
message switch_port_vlan_update_message {
    app_sess_hdr  session
    ifid          interface
    vlan_action   action
    vlan_config   vlan_config
}

/// Configuration of the native VLAN of a trunk.
message switch_port_trunk_native_vlan_config_message {
    app_sess_hdr              session
    ifid                      interface
    trunk_native_vlan_config  trunk_native_vlan_config
}
