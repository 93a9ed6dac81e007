//! xDSL line modules: commands from the control plane; notifications, statistics and answers from the
//! module. First come ATM channels and permanent virtual circuits (PVC).

import "../common/session.tlv"
import "../ethernet/interface.tlv"
import "headers.tlv"

enum zel_xdsl_atm_pvc_mgmt_op = 1383
enum zel_xdsl_atm_traffic_shape = 1384

bytes zel_xdsl_atm_channel_para_mac_array[6]

/// An ATM channel: its MAC address, traffic shape and six numbers.
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

/// Identifies a PVC by three numbers.
struct zel_xdsl_atm_pvc_identifier = 1447 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
}

/// An operation on a PVC.
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

/// Counters of an ATM interface, in the shape of a circuit's.
struct zel_xdsl_atm_if_stats = 1465 {
    zel_xdsl_atm_vc_ctrs  vc_ctrs
}

/// Counters of one PVC.
struct zel_xdsl_atm_mgmt_vc_stats = 1435 {
    zel_xdsl_atm_pvc_identifier  pvc_identifier
    zel_xdsl_atm_vc_ctrs         vc_ctrs
}

/// Commands an operation on a PVC.
message zel_xdsl_cfg_atm_pvc_mgmt_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_atm_pvc_mgmt        atm_pvc_mgmt
}

/// Notifies that the configuration of a PVC is complete.
message zel_xdsl_notif_atm_pvc_cfg_complete_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_atm_pvc_identifier  atm_pvc_identifier
}

/// Carries the counters of a PVC.
message zel_xdsl_stats_atm_vc_counters_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_atm_mgmt_vc_stats   atm_mgmt_vc_stats
}

/// Carries the counters of an ATM interface.
message zel_xdsl_stats_atm_if_counters_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_atm_if_stats        atm_if_stats
}
