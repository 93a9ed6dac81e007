//! T3/E3 interfaces: configuration, tests, DS3 tables, counters and reports. An update (_upd_) with the body
//! of a command is the same bytes: only the name tells the direction.

import "../common/session.tlv"
import "../ethernet/interface.tlv"
import "serial_line.tlv"

/// Framing of a T3/E3 interface.
enum zel_serial_t3e3_framing = 1092

/// Service bits of a T3/E3 interface.
enum zel_serial_svc_bits = 1100

/// DSU mode of a T3/E3 interface.
enum zel_serial_dsu_mode = 1093

/// Remote bandwidth flag of a T3/E3 interface.
enum zel_serial_remote_bw_flag = 1101

/// Bulk configuration of a T3/E3 interface.
struct zel_t3e3_cfg = 1103 {
    zel_serial_t3e3_framing    framing
    uint16                     value_1
    if_state                   state_1
    zel_serial_svc_bits        svc_bits
    uint32                     value_2
    zel_serial_dsu_mode        dsu_mode
    clock_src                  clock_source
    if_state                   state_2
    if_state                   state_3
    loop_loc                   loop_location
    loop_dir                   loop_direction
    if_state                   state_4
    zel_serial_remote_bw_flag  remote_bw_flag
    if_rxbytes                 rxbytes
    zel_log_event_flag         log_event_flag
    if_state                   state_5
}

/// Loopback state of a T3/E3 interface.
enum zel_t3e3_lb_stat = 1114

/// Raw DS3 statistics, with the loopback state.
struct zel_t3e3_dsx3mib_raw_stats = 1104 {
    uint32            counter_1
    uint32            counter_2
    uint32            counter_3
    uint32            counter_4
    uint32            counter_5
    uint32            counter_6
    uint32            counter_7
    uint32            counter_8
    uint32            counter_9
    uint32            counter_10
    uint32            counter_11
    uint32            counter_12
    uint32            counter_13
    uint32            counter_14
    uint32            counter_15
    zel_t3e3_lb_stat  lb_stat
}

/// DS3 table.
struct zel_t3e3_dsx3TableType = 1105 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint16  counter_4
    uint16  counter_5
    uint16  counter_6
    uint16  counter_7
    uint16  counter_8
    uint16  counter_9
    uint16  counter_10
    uint16  counter_11
    uint8   counter_12
}

/// DS3 table in the ANSI form.
struct zel_t3e3_dsx3TableTypeANSI = 1106 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
    uint16  counter_5
    uint16  counter_6
    uint16  counter_7
    uint16  counter_8
    uint16  counter_9
    uint16  counter_10
}

/// Current DS3 tables, one of each form.
struct zel_t3e3_dsx3MIBDataCurr = 1107 {
    uint16                      value_1
    uint16                      value_2
    uint8                       value_3
    uint8                       value_4
    uint8                       value_5
    uint8                       value_6
    zel_t3e3_dsx3TableType      table
    zel_t3e3_dsx3TableTypeANSI  ansi_table
}

/// Previous DS3 tables, one of each form.
struct zel_t3e3_dsx3MIBDataPrev = 1108 {
    zel_t3e3_dsx3TableType      table
    zel_t3e3_dsx3TableTypeANSI  ansi_table
}

/// Performance-monitoring counters, with the loopback state and the clock source.
struct zel_t3e3_pmon_mib_cnt = 1109 {
    zel_t3e3_lb_stat  lb_stat
    clock_src         clock_source
    uint32            counter_1
    uint32            counter_2
    uint32            counter_3
    uint32            counter_4
    uint32            counter_5
    uint8             counter_6
    uint32            counter_7
    uint32            counter_8
    uint32            counter_9
    uint32            counter_10
}

/// Hardware counters of a T3/E3 interface.
struct zel_t3e3_hw_cnt = 1110 {
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
}

/// Results of a bit-error-rate test, with an interface state.
struct zel_t3e3_dsx3BERTData = 1111 {
    if_state  state
    uint32    value_1
    uint32    value_2
    uint32    value_3
    uint32    value_4
    uint32    value_5
    uint32    value_6
}

/// State of a bit-error-rate test on a T3/E3 interface.
enum zel_t3e3_bert_state = 1115

/// Bit-error-rate test: its pattern, its state and its results.
struct zel_t3e3_bert_info = 1112 {
    uint16                   value_1
    uint32                   value_2
    zel_serial_bert_pattern  pattern
    if_state                 state
    zel_t3e3_bert_state      bert_state
    zel_t3e3_dsx3BERTData    results
}

/// Command to set the limit of received bytes of a T3/E3 interface.
message zel_t3e3if_rxbytes_message { app_sess_hdr session  ifid interface  if_rxbytes rxbytes }

/// Command to set the remote bandwidth flag of a T3/E3 interface.
message zel_t3e3if_remote_bw_message {
    app_sess_hdr               session
    ifid                       interface
    zel_serial_remote_bw_flag  remote_bw_flag
}

/// Command with the cstate of a T3/E3 interface, an interface state.
message zel_t3e3if_cstate_message { app_sess_hdr session  ifid interface  if_state state }

/// Command to set the encapsulation of a T3/E3 interface.
message zel_t3e3if_encap_message { app_sess_hdr session  ifid interface  if_enctype enctype }

/// Kind of a maintenance data link message.
enum zel_t3_mdl_tx_msg = 1102

/// Command with a kind of maintenance data link message.
message zel_t3e3if_mdl_state_message { app_sess_hdr session  ifid interface  zel_t3_mdl_tx_msg mdl_tx_msg }

/// Command to clear the counters of a T3/E3 interface, without a body.
message zel_t3e3if_clr_cnt_message { app_sess_hdr session  ifid interface }

/// Type of a T3/E3 port.
enum zel_t3e3_port_type = 1113

/// Command to set the type of a T3/E3 port.
message zel_t3e3if_port_type_message { app_sess_hdr session  ifid interface  zel_t3e3_port_type port_type }

/// Command for a bit-error-rate test on a T3/E3 interface.
message zel_t3e3if_bert_message { app_sess_hdr session  ifid interface  zel_serial_bert_cfg bert_cfg }

/// Command about the errors of a bit-error-rate test, with a counter.
message zel_t3e3if_bert_err_message { app_sess_hdr session  ifid interface  if_count count }

/// Command to make many settings of a T3/E3 interface at once.
message zel_t3e3if_bulk_cfg_message { app_sess_hdr session  ifid interface  zel_t3e3_cfg config }

/// Command to set the maintenance data link strings.
message zel_t3e3if_mdl_str_message { app_sess_hdr session  ifid interface  zel_serial_mdl_str mdl_str }

/// Command to set the trail trace strings.
message zel_t3e3if_ttb_str_message { app_sess_hdr session  ifid interface  zel_serial_ttb_str ttb_str }

/// Command for no loopback, without a body.
message zel_t3e3if_no_loopback_message { app_sess_hdr session  ifid interface }

/// Report of a T3/E3 interface's state.
message zel_t3e3if_state_upd_message { app_sess_hdr session  ifid interface  if_cdc cdc }

/// Report of a T3/E3 interface's remote bandwidth flag.
message zel_t3e3if_remote_bw_upd_message {
    app_sess_hdr               session
    ifid                       interface
    zel_serial_remote_bw_flag  remote_bw_flag
}

/// Report of maintenance data link strings.
message zel_t3e3if_mdl_str_upd_message { app_sess_hdr session  ifid interface  zel_serial_mdl_str mdl_str }

/// Report of trail trace strings.
message zel_t3e3if_ttb_str_upd_message { app_sess_hdr session  ifid interface  zel_serial_ttb_str ttb_str }

/// Report of raw DS3 statistics.
message zel_t3e3if_mib_raw_stat_upd_message {
    app_sess_hdr                session
    ifid                        interface
    zel_t3e3_dsx3mib_raw_stats  raw_stats
}

/// Report of the current DS3 tables.
message zel_t3e3if_curr_mib_upd_message {
    app_sess_hdr              session
    ifid                      interface
    zel_t3e3_dsx3MIBDataCurr  mib_data
}

/// Report of previous DS3 tables.
message zel_t3e3if_prev_mib_upd_message {
    app_sess_hdr              session
    ifid                      interface
    zel_t3e3_dsx3MIBDataPrev  mib_data
}

/// Report of a T3/E3 interface's performance-monitoring counters.
message zel_t3e3if_pmon_mib_upd_message {
    app_sess_hdr           session
    ifid                   interface
    zel_t3e3_pmon_mib_cnt  pmon_mib_cnt
}

/// Report of a T3/E3 interface's hardware counters.
message zel_t3e3if_hw_cnt_upd_message { app_sess_hdr session  ifid interface  zel_t3e3_hw_cnt hw_cnt }

/// Report of a bit-error-rate test on a T3/E3 interface.
message zel_t3e3if_bert_info_upd_message {
    app_sess_hdr        session
    ifid                interface
    zel_t3e3_bert_info  bert_info
}

/// Free-form report of a T3/E3 module: a number and up to 1,900 characters of text.
struct kavu_t3e3_generic_report = 1281 {
    uint8        value
    bytes[1900]  buffer
}

/// Generic report of a T3/E3 module, with neither session header nor interface.
message zel_kavu_t3e3_generic_report_message { kavu_t3e3_generic_report generic_report }

/// Kind of a show request to a T3/E3 module.
enum kavu_t3e3_show_if_req_type = 1286

/// Request to show an interface of a T3/E3 module.
message zel_kavu_t3e3if_show_if_req_message {
    app_sess_hdr                session
    ifid                        interface
    kavu_t3e3_show_if_req_type  req_type
}

/// Kind of a clear request to a T3/E3 module.
enum kavu_t3e3_clear_if_req_type = 1287

/// Request to clear an interface of a T3/E3 module.
message zel_kavu_t3e3if_clear_if_req_message {
    app_sess_hdr                 session
    ifid                         interface
    kavu_t3e3_clear_if_req_type  req_type
}

/// Single maintenance data link string.
struct t3e3if_mdl_string = 1302 {
    bytes[40]  mdl_str
}

/// Kind of a single maintenance data link string.
enum zel_t3e3if_mdl_type = 1303

/// Command to set a single maintenance data link string, whose kind stands before it, outside the structure.
message zel_t3e3if_mdl_string_message {
    app_sess_hdr         session
    ifid                 interface
    zel_t3e3if_mdl_type  mdl_type
    t3e3if_mdl_string    mdl_string
}
