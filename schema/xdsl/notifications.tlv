//! Notifications of a line: connection, activation, power management, state and customer profile.

import "../common/session.tlv"
import "configuration.tlv"
import "headers.tlv"
import "inventory.tlv"
import "status.tlv"

/// TC selection of a line.
enum zel_xdsl_system_tc_selection = 1395

/// System configuration of a line, which is its TC selection.
struct zel_xdsl_sys_cfg = 1444 {
    zel_xdsl_system_tc_selection  tc_selection
}

/// Notification that a connection is up, with its channels, system settings and inventory.
message zel_xdsl_notif_conn_up_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_chan_status         chan_status
    zel_xdsl_sys_cfg             sys_cfg
    zel_xdsl_sysen_cfg           sysen_cfg
    zel_xdsl_inventory_info      inventory_info
}

/// Notification that a connection is down, without a body.
message zel_xdsl_notif_conn_down_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
}

/// Notification of a line's activation configuration.
message zel_xdsl_notif_activate_cfg_message {
    app_sess_hdr                       session
    ifid                               interface
    zel_xdsl_cmd_hdr                   cmd_hdr
    zel_xdsl_line_operation_hdr        line_operation_hdr
    zel_xdsl_g997_lineactivate_config  g997_lineactivate_config
}

/// Failure of a line.
enum zel_xdsl_g997_linefailure = 1379

/// Notification that a connection failed.
message zel_xdsl_notif_conn_failure_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_g997_linefailure    failure
}

/// Power management state of a line.
enum zel_xdsl_g997_pms = 1391

/// Notification of a line's power management state.
message zel_xdsl_notif_pwr_mgmt_status_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_g997_pms            power_state
}

/// State of a line.
enum zel_xdsl_line_status = 1394

/// Notification of a line's state.
message zel_xdsl_notif_line_state_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_line_status         line_status
}

/// Customer profile flag of a line.
enum zel_xdsl_customer_profile_flag = 1641

/// Notification of a line's customer profile flag.
message zel_xdsl_notif_customer_profile_flag_message {
    app_sess_hdr                    session
    ifid                            interface
    zel_xdsl_cmd_hdr                cmd_hdr
    zel_xdsl_line_operation_hdr     line_operation_hdr
    zel_xdsl_customer_profile_flag  customer_profile_flag
}
