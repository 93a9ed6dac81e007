//! VLANs and QinQ pairs of a port: adding, removing and counting.

import "../common/session.tlv"

/// VLAN identifier and a flag.
struct zel_vlan_id = 1116 {
    uint16       id
    zel_boolean  flag
}

/// Bitmap of 4,096 VLAN identifiers.
array all_vlan_cfg_vlan_bitmask_array of uint32[128]

/// Bitmap of 4,096 VLAN identifiers, for tunnelling.
array all_vlan_cfg_vlan_cfg_tunn_array of uint32[128]

/// VLANs of a port, as bitmaps.
struct all_vlan_cfg = 1124 {
    all_vlan_cfg_vlan_bitmask_array   vlan_bitmask
    all_vlan_cfg_vlan_cfg_tunn_array  vlan_cfg_tunn
}

/// VLAN to add to a port.
message ether_vlan_add_message { app_sess_hdr session  ifid interface  zel_vlan_id vlan_id }

/// VLANs to add to a port all at once.
message ether_vlan_add_all_message { app_sess_hdr session  ifid interface  all_vlan_cfg all_vlan_cfg }

/// Removal of all VLANs from a port; has no body.
message ether_vlan_remove_all_message { app_sess_hdr session  ifid interface }

/// VLAN to remove from a port.
message ether_vlan_remove_message { app_sess_hdr session  ifid interface  zel_vlan_id vlan_id }

/// Counters of one VLAN.
struct zel_vlan_counters = 1125 {
    zel_vlan_id  vlan_id
    uint64       counter_1
    uint32       counter_2
    uint32       counter_3
    uint32       counter_4
    uint32       counter_5
    uint32       counter_6
    uint64       counter_7
    uint32       counter_8
    uint32       counter_9
    uint32       counter_10
}

/// Counters of several VLANs.
struct zel_vlan_stat_bundle = 1126 {
    uint8          count
    dynamic array  vlan_counters of zel_vlan_counters counted by uint8
}

/// Statistics of a port by VLAN.
message zel_tib_vlan_stats_message {
    app_sess_hdr          session
    ifid                  interface
    zel_vlan_stat_bundle  vlan_stat_bundle
}

/// Identity of a QinQ pair: three numbers and a flag.
struct zel_qinq_id = 1127 {
    uint16       value_1
    uint16       value_2
    uint16       value_3
    zel_boolean  flag
}

/// QinQ pair to add to a port.
message ether_qinq_add_message { app_sess_hdr session  ifid interface  zel_qinq_id qinq_id }

/// QinQ pair to remove from a port.
message ether_qinq_remove_message { app_sess_hdr session  ifid interface  zel_qinq_id qinq_id }

/// Counters of one QinQ pair, behind two numbers.
struct zel_qinq_counters = 1128 {
    uint16  value_1
    uint16  value_2
    uint64  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
    uint64  counter_5
    uint32  counter_6
    uint32  counter_7
    uint32  counter_8
}

/// Counters of several QinQ pairs.
struct zel_qinq_stat_bundle = 1129 {
    uint8          count
    dynamic array  qinq_counters of zel_qinq_counters counted by uint8
}

/// Statistics of a port by QinQ pair.
message zel_tib_qinq_stats_message {
    app_sess_hdr          session
    ifid                  interface
    zel_qinq_stat_bundle  qinq_stat_bundle
}
