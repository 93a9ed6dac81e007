//! ATM channels, permanent virtual circuits (PVC) and their counters.

import "../common/session.tlv"
import "../ethernet/interface.tlv"
import "headers.tlv"

bytes zel_xdsl_atm_channel_para_mac_array[6]  // tlvc: W003 because it stands here for the order of types alone

/// Traffic shape of an ATM channel.
enum zel_xdsl_atm_traffic_shape = 1384

/// ATM channel: its MAC address, traffic shape and six numbers.
struct zel_xdsl_atm_channel_para = 1399 {
    zel_xdsl_atm_channel_para_mac_array  mac
    uint16                               value_1
    uint16                               value_2
    zel_xdsl_atm_traffic_shape           traffic_shape
    uint32                               value_3
    uint32                               value_4
    uint32                               value_5
    uint32                               value_6
}

/// Identifier of a PVC, in three numbers.
struct zel_xdsl_atm_pvc_identifier = 1447 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
}

/// Operation on a PVC.
enum zel_xdsl_atm_pvc_mgmt_op = 1383

/// PVC with its channel, and the operation on it.
struct zel_xdsl_atm_pvc_mgmt = 1400 {
    zel_xdsl_atm_pvc_mgmt_op     op
    zel_xdsl_atm_pvc_identifier  pvc_identifier
    zel_xdsl_atm_channel_para    channel_para
}

/// Counters of a virtual circuit.
struct zel_xdsl_atm_vc_ctrs = 1436 {
    if_count_long  counter_1
    if_count_long  counter_2
    if_count_long  counter_3
    if_count_long  counter_4
    if_count_long  counter_5
    if_count_long  counter_6
    if_count_long  counter_7
    if_count_long  counter_8
    if_count_long  counter_9
    if_count_long  counter_10
    if_count_long  counter_11
    if_count_long  counter_12
    if_count_long  counter_13
    if_count_long  counter_14
    if_count_long  counter_15
    if_timer_long  timer
    if_count_long  counter_16
    if_count_long  counter_17
}

/// Counters of an ATM interface, in the shape of those of a circuit.
struct zel_xdsl_atm_if_stats = 1465 {
    zel_xdsl_atm_vc_ctrs  vc_ctrs
}

/// Counters of one PVC.
struct zel_xdsl_atm_mgmt_vc_stats = 1435 {
    zel_xdsl_atm_pvc_identifier  pvc_identifier
    zel_xdsl_atm_vc_ctrs         vc_ctrs
}

/// Command for an operation on a PVC.
message zel_xdsl_cfg_atm_pvc_mgmt_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_atm_pvc_mgmt        atm_pvc_mgmt
}

/// Notification that the configuration of a PVC is complete.
message zel_xdsl_notif_atm_pvc_cfg_complete_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_atm_pvc_identifier  atm_pvc_identifier
}

/// Statistics of a PVC.
message zel_xdsl_stats_atm_vc_counters_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_atm_mgmt_vc_stats   atm_mgmt_vc_stats
}

/// Statistics of an ATM interface.
message zel_xdsl_stats_atm_if_counters_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_atm_if_stats        atm_if_stats
}
