//! Performance counters of a line and its channels, and their history.

import "../common/session.tlv"
import "headers.tlv"

/// Performance counters of a channel.
struct zel_xdsl_pm_channel_counters = 1411 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
    uint32  counter_5
}

/// Performance counters of the data path.
struct zel_xdsl_pm_datapath_counters = 1412 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
    uint32  counter_5
    uint32  counter_6
    uint32  counter_7
    uint32  counter_8
    uint32  counter_9
    uint32  counter_10
    uint32  counter_11
}

/// History of performance counters.
struct zel_xdsl_pm_history_stats = 1413 {
    uint32  counter_1
    uint32  counter_2
}

/// Performance counters of line initialisation.
struct zel_xdsl_pm_lineinit_counters = 1414 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
    uint32  counter_5
    uint32  counter_6
    uint32  counter_7
    uint32  counter_8
    uint32  counter_9
}

/// Performance counters of line seconds.
struct zel_xdsl_pm_linesec_counters = 1415 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
    uint32  counter_5
    uint32  counter_6
    uint32  counter_7
    uint32  counter_8
    uint32  counter_9
    uint32  counter_10
    uint32  counter_11
    uint32  counter_12
}

/// Type of the performance counters in an update.
enum zel_xdsl_pm_cntr_type = 1430

/// Update of the counters of line initialisation.
message zel_xdsl_stats_pm_lineinit_counters_update_message {
    app_sess_hdr                   session
    ifid                           interface
    zel_xdsl_cmd_hdr               cmd_hdr
    zel_xdsl_line_operation_hdr    line_operation_hdr
    zel_xdsl_pm_cntr_type          pm_cntr_type
    zel_xdsl_pm_lineinit_counters  pm_lineinit_counters
}

/// Update of the counters of line seconds.
message zel_xdsl_stats_pm_linesec_counters_update_message {
    app_sess_hdr                  session
    ifid                          interface
    zel_xdsl_cmd_hdr              cmd_hdr
    zel_xdsl_line_operation_hdr   line_operation_hdr
    zel_xdsl_pm_cntr_type         pm_cntr_type
    zel_xdsl_pm_linesec_counters  pm_linesec_counters
}

/// Update of the counters of a channel.
message zel_xdsl_stats_pm_channel_counters_update_message {
    app_sess_hdr                  session
    ifid                          interface
    zel_xdsl_cmd_hdr              cmd_hdr
    zel_xdsl_line_operation_hdr   line_operation_hdr
    zel_xdsl_pm_cntr_type         pm_cntr_type
    zel_xdsl_pm_channel_counters  pm_channel_counters
}

/// Update of the counters of the data path.
message zel_xdsl_stats_pm_datapath_counters_update_message {
    app_sess_hdr                   session
    ifid                           interface
    zel_xdsl_cmd_hdr               cmd_hdr
    zel_xdsl_line_operation_hdr    line_operation_hdr
    zel_xdsl_pm_cntr_type          pm_cntr_type
    zel_xdsl_pm_datapath_counters  pm_datapath_counters
}

/// Type of the history in an update.
enum zel_xdsl_pm_hist_stat_type = 1431

/// Update of the history of performance counters.
message zel_xdsl_stats_pm_history_stats_update_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_pm_hist_stat_type   pm_hist_stat_type
    zel_xdsl_pm_history_stats    pm_history_stats
}
