//! Configuration commands to a line or a module.

import "../common/session.tlv"
import "../ethernet/interface.tlv"
import "headers.tlv"

enum zel_xdsl_atu_profile_support = 1380
enum zel_xdsl_g997_ldsf = 1385
enum zel_xdsl_g997_pmsf = 1386
enum zel_xdsl_ldsf_result = 1387
enum zel_xdsl_g997_reset = 1388
enum zel_xdsl_g997_acsf = 1389
enum zel_xdsl_g997_startupmode = 1390
enum zel_xdsl_option_dt_mode = 1392
enum zel_xdsl_sra_bitswap_op = 1428
enum zel_xdsl_delt_mode = 1438
enum zel_xdsl_line_mode = 1445

/// How a line is activated.
struct zel_xdsl_g997_lineactivate_config = 1405 {
    zel_xdsl_g997_ldsf         ldsf
    zel_xdsl_g997_pmsf         pmsf
    zel_xdsl_ldsf_result       ldsf_result
    zel_xdsl_g997_reset        reset
    uint8                      value_1
    uint8                      value_2
    zel_xdsl_g997_acsf         acsf
    zel_xdsl_g997_startupmode  startupmode
}

/// Interval of the sync mode, as two numbers.
struct zel_xdsl_sync_mode_interval = 1418 {
    uint32  value_1
    uint32  value_2
}

/// Two trellis coding flags.
struct zel_xdsl_trellis_cfg = 1425 {
    zel_boolean  flag_1
    zel_boolean  flag_2
}

bytes zel_xdsl_sysen_cfg_atse_array[8]

/// System enable (ATSE) string, up to 8 bytes.
struct zel_xdsl_sysen_cfg = 1426 {
    zel_xdsl_sysen_cfg_atse_array  atse
}

/// Whether the 30a profile is supported.
struct zel_xdsl_support_30a = 1482 {
    zel_boolean  supported
}

/// Whether forwarding is enabled.
struct zel_xdsl_enable_fwd = 1446 {
    zel_boolean  enabled
}

/// Configures the system enable string.
message zel_xdsl_cfg_sysen_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_sysen_cfg           sysen_cfg
}

/// Configures SRA and bit-swap; carries no line-operation header.
message zel_xdsl_cfg_sra_bitswap_message {
    app_sess_hdr             session
    ifid                     interface
    zel_xdsl_cmd_hdr         cmd_hdr
    zel_xdsl_sra_bitswap_op  sra_bitswap_op
}

/// Configures which ATU profiles are supported.
message zel_xdsl_cfg_atu_profile_message {
    app_sess_hdr                  session
    ifid                          interface
    zel_xdsl_cmd_hdr              cmd_hdr
    zel_xdsl_atu_profile_support  atu_profile_support
}

/// Configures the option and DT mode.
message zel_xdsl_cfg_option_dt_mode_message {
    app_sess_hdr             session
    ifid                     interface
    zel_xdsl_cmd_hdr         cmd_hdr
    zel_xdsl_option_dt_mode  option_dt_mode
}

/// Configures how a line is activated.
message zel_xdsl_cfg_line_activate_cfg_message {
    app_sess_hdr                       session
    ifid                               interface
    zel_xdsl_cmd_hdr                   cmd_hdr
    zel_xdsl_line_operation_hdr        line_operation_hdr
    zel_xdsl_g997_lineactivate_config  g997_lineactivate_config
}

/// Activates a line; needs nothing behind its headers.
message zel_xdsl_cfg_line_activation_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
}

/// Deactivates a line; needs nothing behind its headers.
message zel_xdsl_cfg_line_deactivation_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
}

/// Clears the counters; needs nothing behind the command header.
message zel_xdsl_cfg_clear_counters_message { app_sess_hdr session  ifid interface  zel_xdsl_cmd_hdr cmd_hdr }

/// Configures the interval of the sync mode.
message zel_xdsl_cfg_sync_mode_interval_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_sync_mode_interval  sync_mode_interval
}

/// Configures the DELT mode of a line.
message zel_xdsl_cfg_delt_mode_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_delt_mode           delt_mode
}

/// Starts diagnostics; needs nothing behind the command header.
message zel_xdsl_cfg_dsl_diag_start_message { app_sess_hdr session  ifid interface  zel_xdsl_cmd_hdr cmd_hdr }

/// Stops diagnostics; needs nothing behind the command header.
message zel_xdsl_cfg_dsl_diag_stop_message { app_sess_hdr session  ifid interface  zel_xdsl_cmd_hdr cmd_hdr }

/// Configures trellis coding of a line.
message zel_xdsl_cfg_trellis_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_trellis_cfg         trellis_cfg
}

/// Configures whether a line supports the 30a profile.
message zel_xdsl_cfg_support_30a_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_support_30a         support_30a
}

/// Configures the mode of a line.
message zel_xdsl_cfg_line_mode_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_line_mode           line_mode
}

/// Configures whether a line forwards.
message zel_xdsl_cfg_enable_fwd_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_enable_fwd          enable_fwd
}

/// Configures the MTU of an interface.
message zel_xdsl_cfg_if_mtu_message {
    app_sess_hdr      session
    ifid              interface
    zel_xdsl_cmd_hdr  cmd_hdr
    if_rxbytes        rxbytes
}

/// Configures SRA and bit-swap as told by a line-operation header.
message zel_xdsl_cfg_sra_bitswap_extn_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_sra_bitswap_op      sra_bitswap_op
}
