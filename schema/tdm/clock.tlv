//! Clock sourcing, and adaptive clock recovery for emulated circuits.

import "../common/session.tlv"
import "cem.tlv"

/// Clock sourcing of an emulated circuit.
struct clk_source_cfg = 1180 {
    zel_cem_id   cem_id
    uint8        value
    zel_boolean  flag
}

/// Type of the clock in a clock recovery.
enum zel_clock_type = 1202

/// Clock source in a clock recovery. Not clock_src, which has a tag of its own.
enum zel_clock_src = 1067

/// Adaptive clock recovery of an emulated circuit.
struct clk_recovery_cfg = 1181 {
    zel_cem_id      cem_id
    uint8           value
    zel_clock_type  clock_type
    zel_clock_src   clock_source
    zel_boolean     flag
}

/// State of a clock.
enum zel_clk_status = 1204

/// State of one clock, with a number and a flag.
struct clk_info = 1182 {
    uint32          value
    zel_clk_status  status
    zel_boolean     flag
}

/// One clock for each DS1.
array clk_recovery_status_ds1_clk_info_array of clk_info[24]

/// One clock for each DS3.
array clk_recovery_status_ds3_clk_info_array of clk_info[3]

/// Clock states of a module: those of its DS1s, those of its DS3s, and a single one.
struct clk_recovery_status = 1183 {
    clk_recovery_status_ds1_clk_info_array  ds1_clk_info
    clk_recovery_status_ds3_clk_info_array  ds3_clk_info
    clk_info                                info
}

/// Request to configure the recovery of a circuit's clock.
message clock_recovery_config_message { app_sess_hdr session  ifid interface  clk_recovery_cfg config }

/// Report of the clock states, for which clock_recovery_status_request_message asks.
message clock_recovery_status_message { app_sess_hdr session  ifid interface  clk_recovery_status status }

/// Request to configure the sourcing of a circuit's clock.
message clock_sourcing_config_message { app_sess_hdr session  ifid interface  clk_source_cfg config }

/// Request for the clock states, without a body.
message clock_recovery_status_request_message { app_sess_hdr session  ifid interface }
