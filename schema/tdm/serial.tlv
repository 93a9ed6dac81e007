//! Synchronous serial interfaces: settings, counters, status, reports.
//! Most settings are one interface state; only the names of their messages tell them apart.

import "../common/session.tlv"
import "../ethernet/interface.tlv"

/// Hardware counters.
struct zel_t_serial_hw_cnt = 1336 {
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

enum zel_t_serial_signal_status = 1337
enum zel_t_serial_applique_id = 1338
enum zel_t_clock_src = 1339

/// Status of a serial interface: its signals and its applique.
struct zel_t_serial_status = 1340 {
    zel_t_serial_signal_status  signal_status
    zel_t_serial_applique_id    applique_id
    uint32                      value
    if_state                    state
}

/// State of a serial interface.
struct zel_t_serial_cstate = 1341 {
    if_state  state_1
    if_state  state_2
}

/// Transmit delay. It is signed.
struct zel_t_serial_tx_delay = 1342 {
    int32  delay
}

/// Bulk configuration of a serial interface.
struct zel_t_serial_cfg = 1343 {
    if_enctype          enctype
    if_rxbytes          rxbytes
    if_state            state_1
    if_state            state_2
    if_state            state_3
    if_state            state_4
    uint32              value
    zel_t_clock_src     clock_source
    if_state            state_5
    if_state            state_6
    if_state            state_7
    if_state            state_8
    zel_log_event_flag  log_event_flag
    if_state            state_9
    if_state            state_10
    if_state            state_11
    if_state            state_12
    if_state            state_13
}

/// Carries a state of the interface to the module.
message zel_t_serial_cstate_message { app_sess_hdr session  ifid interface  zel_t_serial_cstate cstate }

/// Sets the loopback.
message zel_t_serial_loopback_message { app_sess_hdr session  ifid interface  if_state state }

/// Concerns the applique. There is no body.
message zel_t_serial_applique_message { app_sess_hdr session  ifid interface }

/// Sets the 32-bit CRC.
message zel_t_serial_crc32_message { app_sess_hdr session  ifid interface  if_state state }

/// Sets the data inversion.
message zel_t_serial_inv_data_message { app_sess_hdr session  ifid interface  if_state state }

/// Sets the limit of received bytes.
message zel_t_serial_rxbytes_message { app_sess_hdr session  ifid interface  if_rxbytes rxbytes }

/// Sets the encapsulation.
message zel_t_serial_encap_message { app_sess_hdr session  ifid interface  if_enctype enctype }

/// Clears the counters. There is no body.
message zel_t_serial_clr_cnt_message { app_sess_hdr session  ifid interface }

/// Sets NRZI.
message zel_t_serial_nrzi_message { app_sess_hdr session  ifid interface  if_state state }

/// Sets NRZI on one.
message zel_t_serial_nrzi_on_one_message { app_sess_hdr session  ifid interface  if_state state }

/// Sets the clock inversion.
message zel_t_serial_inv_clock_message { app_sess_hdr session  ifid interface  if_state state }

/// Sets the DCE timing.
message zel_t_serial_dce_timing_message { app_sess_hdr session  ifid interface  if_state state }

/// Sets the baud index, as a clock rate.
message zel_t_serial_baud_idx_message { app_sess_hdr session  ifid interface  if_clkrate clkrate }

/// Sets the clock rate.
message zel_t_serial_clock_message { app_sess_hdr session  ifid interface  if_clkrate clkrate }

/// Sets the alternative idle.
message zel_t_serial_alt_idle_message { app_sess_hdr session  ifid interface  if_state state }

/// Sets whether DCD is ignored.
message zel_t_serial_ignore_dcd_message { app_sess_hdr session  ifid interface  if_state state }

/// Sets the bandwidth.
message zel_t_serial_bw_message { app_sess_hdr session  ifid interface  if_bw bw }

/// Sets the clock threshold, as a clock rate.
message zel_t_serial_clock_threshold_message { app_sess_hdr session  ifid interface  if_clkrate clkrate }

/// Sets the transmit delay.
message zel_t_serial_tx_delay_message { app_sess_hdr session  ifid interface  zel_t_serial_tx_delay tx_delay }

/// Configures many settings of the interface at once.
message zel_t_serial_bulk_cfg_message { app_sess_hdr session  ifid interface  zel_t_serial_cfg config }

/// Kind of show request.
enum kavu_t_serial_show_if_req_type = 1346

/// Request to show an interface.
message zel_kavu_t_serial_show_if_req_message {
    app_sess_hdr                    session
    ifid                            interface
    kavu_t_serial_show_if_req_type  req_type
}

/// Kind of clear request.
enum kavu_t_serial_clear_if_req_type = 1367

/// Request to clear an interface.
message zel_kavu_t_serial_clear_if_req_message {
    app_sess_hdr                     session
    ifid                             interface
    kavu_t_serial_clear_if_req_type  req_type
}

/// The module reports the state of the interface.
message zel_t_serial_state_upd_message { app_sess_hdr session  ifid interface  if_cdc cdc }

/// The module reports hardware counters.
message zel_t_serial_hw_cnt_upd_message { app_sess_hdr session  ifid interface  zel_t_serial_hw_cnt hw_cnt }

/// The module reports the status of the interface.
message zel_t_serial_status_upd_message { app_sess_hdr session  ifid interface  zel_t_serial_status status }

/// Text of a generic report.
bytes kavu_t_serial_generic_report_buffer_array[1900]

/// Free-form report: a number and up to 1,900 characters of text.
struct kavu_t_serial_generic_report = 1345 {
    uint8                                      value
    kavu_t_serial_generic_report_buffer_array  buffer
}

/// Report that the module sends up, with neither session header nor interface.
message zel_kavu_t_serial_generic_report_message { kavu_t_serial_generic_report generic_report }
