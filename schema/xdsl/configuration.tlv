//! Configuration commands to a line or a module.

import "../common/session.tlv"
import "../ethernet/interface.tlv"
import "headers.tlv"

/// LDSF setting of the activation of a line.
enum zel_xdsl_g997_ldsf = 1385

/// PMSF setting of the activation of a line.
enum zel_xdsl_g997_pmsf = 1386

/// LDSF result in the activation of a line.
enum zel_xdsl_ldsf_result = 1387

/// Reset setting of the activation of a line.
enum zel_xdsl_g997_reset = 1388

/// ACSF setting of the activation of a line.
enum zel_xdsl_g997_acsf = 1389

/// Start-up mode of a line.
enum zel_xdsl_g997_startupmode = 1390

/// Activation configuration of a line.
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

/// Interval of the sync mode, in two numbers.
struct zel_xdsl_sync_mode_interval = 1418 {
    uint32  value_1
    uint32  value_2
}

/// Trellis configuration, in two flags.
struct zel_xdsl_trellis_cfg = 1425 {
    zel_boolean  flag_1
    zel_boolean  flag_2
}

/// System enable (ATSE) string, up to 8 bytes.
struct zel_xdsl_sysen_cfg = 1426 {
    bytes[8]  atse
}

/// Whether the 30a profile is supported.
struct zel_xdsl_support_30a = 1482 {
    zel_boolean  supported
}

/// Whether forwarding is enabled.
struct zel_xdsl_enable_fwd = 1446 {
    zel_boolean  enabled
}

/// Command to configure the system enable string.
message zel_xdsl_cfg_sysen_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_sysen_cfg           sysen_cfg
}

/// Operation on SRA and bit-swap.
enum zel_xdsl_sra_bitswap_op = 1428

/// Command to configure SRA and bit-swap, without a line-operation header.
message zel_xdsl_cfg_sra_bitswap_message {
    app_sess_hdr             session
    ifid                     interface
    zel_xdsl_cmd_hdr         cmd_hdr
    zel_xdsl_sra_bitswap_op  sra_bitswap_op
}

/// Support of ATU profiles.
enum zel_xdsl_atu_profile_support = 1380

/// Command to configure the ATU profiles.
message zel_xdsl_cfg_atu_profile_message {
    app_sess_hdr                  session
    ifid                          interface
    zel_xdsl_cmd_hdr              cmd_hdr
    zel_xdsl_atu_profile_support  atu_profile_support
}

/// Option DT mode.
enum zel_xdsl_option_dt_mode = 1392

/// Command to configure the option DT mode.
message zel_xdsl_cfg_option_dt_mode_message {
    app_sess_hdr             session
    ifid                     interface
    zel_xdsl_cmd_hdr         cmd_hdr
    zel_xdsl_option_dt_mode  option_dt_mode
}

/// Command to configure the activation of a line.
message zel_xdsl_cfg_line_activate_cfg_message {
    app_sess_hdr                       session
    ifid                               interface
    zel_xdsl_cmd_hdr                   cmd_hdr
    zel_xdsl_line_operation_hdr        line_operation_hdr
    zel_xdsl_g997_lineactivate_config  g997_lineactivate_config
}

/// Command to activate a line, without a body.
message zel_xdsl_cfg_line_activation_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
}

/// Command to deactivate a line, without a body.
message zel_xdsl_cfg_line_deactivation_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
}

/// Command to clear the counters, without anything behind the command header.
message zel_xdsl_cfg_clear_counters_message { app_sess_hdr session  ifid interface  zel_xdsl_cmd_hdr cmd_hdr }

/// Command to configure the interval of the sync mode.
message zel_xdsl_cfg_sync_mode_interval_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_sync_mode_interval  sync_mode_interval
}

/// DELT mode of a line.
enum zel_xdsl_delt_mode = 1438

/// Command to configure the DELT mode of a line.
message zel_xdsl_cfg_delt_mode_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_delt_mode           delt_mode
}

/// Command to start diagnostics, without anything behind the command header.
message zel_xdsl_cfg_dsl_diag_start_message { app_sess_hdr session  ifid interface  zel_xdsl_cmd_hdr cmd_hdr }

/// Command to stop diagnostics, without anything behind the command header.
message zel_xdsl_cfg_dsl_diag_stop_message { app_sess_hdr session  ifid interface  zel_xdsl_cmd_hdr cmd_hdr }

/// Command to configure the trellis of a line.
message zel_xdsl_cfg_trellis_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_trellis_cfg         trellis_cfg
}

/// Command to configure the 30a profile support of a line.
message zel_xdsl_cfg_support_30a_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_support_30a         support_30a
}

/// Mode of a line.
enum zel_xdsl_line_mode = 1445

/// Command to configure the mode of a line.
message zel_xdsl_cfg_line_mode_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_line_mode           line_mode
}

/// Command to configure the forwarding of a line.
message zel_xdsl_cfg_enable_fwd_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_enable_fwd          enable_fwd
}

/// Command to configure the MTU of an interface.
message zel_xdsl_cfg_if_mtu_message {
    app_sess_hdr      session
    ifid              interface
    zel_xdsl_cmd_hdr  cmd_hdr
    if_rxbytes        rxbytes
}

/// Command to configure SRA and bit-swap, with a line-operation header.
message zel_xdsl_cfg_sra_bitswap_extn_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_sra_bitswap_op      sra_bitswap_op
}
