//! Synchronous serial interfaces: settings, counters, status and reports. Most settings are one interface
//! state; only the names of their messages tell them apart.

import "../common/session.tlv"
import "../ethernet/interface.tlv"

/// Hardware counters of a serial interface.
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

/// State of the signals of a serial interface.
enum zel_t_serial_signal_status = 1337

/// Identifier of the applique of a serial interface.
enum zel_t_serial_applique_id = 1338

/// Status of a serial interface: its signals and its applique.
struct zel_t_serial_status = 1340 {
    zel_t_serial_signal_status  signal_status
    zel_t_serial_applique_id    applique_id
    uint32                      value
    if_state                    state
}

/// State of a serial interface, in two parts.
struct zel_t_serial_cstate = 1341 {
    if_state  state_1
    if_state  state_2
}

/// Transmit delay, which is signed.
struct zel_t_serial_tx_delay = 1342 {
    int32  delay
}

/// Clock source of a serial interface.
enum zel_t_clock_src = 1339

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

/// Command to set the state of a serial interface.
message zel_t_serial_cstate_message { app_sess_hdr session  ifid interface  zel_t_serial_cstate cstate }

/// Command to set the loopback of a serial interface.
message zel_t_serial_loopback_message { app_sess_hdr session  ifid interface  if_state state }

/// Command about the applique of a serial interface, without a body.
message zel_t_serial_applique_message { app_sess_hdr session  ifid interface }

/// Command to set the 32-bit CRC of a serial interface.
message zel_t_serial_crc32_message { app_sess_hdr session  ifid interface  if_state state }

/// Command to set the data inversion of a serial interface.
message zel_t_serial_inv_data_message { app_sess_hdr session  ifid interface  if_state state }

/// Command to set the limit of received bytes of a serial interface.
message zel_t_serial_rxbytes_message { app_sess_hdr session  ifid interface  if_rxbytes rxbytes }

/// Command to set the encapsulation of a serial interface.
message zel_t_serial_encap_message { app_sess_hdr session  ifid interface  if_enctype enctype }

/// Command to clear the counters of a serial interface, without a body.
message zel_t_serial_clr_cnt_message { app_sess_hdr session  ifid interface }

/// Command to set NRZI on a serial interface.
message zel_t_serial_nrzi_message { app_sess_hdr session  ifid interface  if_state state }

/// Command to set NRZI on one on a serial interface.
message zel_t_serial_nrzi_on_one_message { app_sess_hdr session  ifid interface  if_state state }

/// Command to set the clock inversion of a serial interface.
message zel_t_serial_inv_clock_message { app_sess_hdr session  ifid interface  if_state state }

/// Command to set the DCE timing of a serial interface.
message zel_t_serial_dce_timing_message { app_sess_hdr session  ifid interface  if_state state }

/// Command to set the baud index of a serial interface, as a clock rate.
message zel_t_serial_baud_idx_message { app_sess_hdr session  ifid interface  if_clkrate clkrate }

/// Command to set the clock rate of a serial interface.
message zel_t_serial_clock_message { app_sess_hdr session  ifid interface  if_clkrate clkrate }

/// Command to set the alternative idle of a serial interface.
message zel_t_serial_alt_idle_message { app_sess_hdr session  ifid interface  if_state state }

/// Command to set whether a serial interface ignores DCD.
message zel_t_serial_ignore_dcd_message { app_sess_hdr session  ifid interface  if_state state }

/// Command to set the bandwidth of a serial interface.
message zel_t_serial_bw_message { app_sess_hdr session  ifid interface  if_bw bw }

/// Command to set the clock threshold of a serial interface, as a clock rate.
message zel_t_serial_clock_threshold_message { app_sess_hdr session  ifid interface  if_clkrate clkrate }

/// Command to set the transmit delay of a serial interface.
message zel_t_serial_tx_delay_message { app_sess_hdr session  ifid interface  zel_t_serial_tx_delay tx_delay }

/// Command to make many settings of a serial interface at once.
message zel_t_serial_bulk_cfg_message { app_sess_hdr session  ifid interface  zel_t_serial_cfg config }

/// Kind of a show request to a serial module.
enum kavu_t_serial_show_if_req_type = 1346

/// Request to show an interface of a serial module.
message zel_kavu_t_serial_show_if_req_message {
    app_sess_hdr                    session
    ifid                            interface
    kavu_t_serial_show_if_req_type  req_type
}

/// Kind of a clear request to a serial module.
enum kavu_t_serial_clear_if_req_type = 1367

/// Request to clear an interface of a serial module.
message zel_kavu_t_serial_clear_if_req_message {
    app_sess_hdr                     session
    ifid                             interface
    kavu_t_serial_clear_if_req_type  req_type
}

/// Report of the state of a serial interface.
message zel_t_serial_state_upd_message { app_sess_hdr session  ifid interface  if_cdc cdc }

/// Report of a serial interface's hardware counters.
message zel_t_serial_hw_cnt_upd_message { app_sess_hdr session  ifid interface  zel_t_serial_hw_cnt hw_cnt }

/// Report of a serial interface's status.
message zel_t_serial_status_upd_message { app_sess_hdr session  ifid interface  zel_t_serial_status status }

/// Free-form report of a serial module: a number and up to 1,900 characters of text.
struct kavu_t_serial_generic_report = 1345 {
    uint8        value
    bytes[1900]  buffer
}

/// Generic report of a serial module, with neither session header nor interface.
message zel_kavu_t_serial_generic_report_message { kavu_t_serial_generic_report generic_report }
