//! Asynchronous serial lines: configuration, signals and statistics.

import "../common/session.tlv"

/// Flow control of an asynchronous serial line.
enum kavu_async_serial_flowcontrol_type = 1741

/// Two flow-control settings, which only their order tells apart.
struct kavu_async_serial_flowcontrol_data = 1738 {
    kavu_async_serial_flowcontrol_type  flowcontrol_1
    kavu_async_serial_flowcontrol_type  flowcontrol_2
}

/// Configuration of the flow control of a line.
message cfg_kavu_async_flowcontrol_message {
    app_sess_hdr                        session
    ifid                                interface
    kavu_async_serial_flowcontrol_data  flowcontrol
}

/// Parity of an asynchronous serial line.
enum kavu_async_serial_parity_type = 1740

/// Configuration of the parity of a line.
message cfg_kavu_async_parity_message {
    app_sess_hdr                   session
    ifid                           interface
    kavu_async_serial_parity_type  parity
}

/// Data bits of an asynchronous serial line.
enum kavu_async_serial_databits = 1737

/// Configuration of the data bits of a line.
message cfg_kavu_async_databits_message {
    app_sess_hdr                session
    ifid                        interface
    kavu_async_serial_databits  databits
}

/// Stop bits of an asynchronous serial line.
enum kavu_async_serial_stopbits_type = 1739

/// Configuration of the stop bits of a line.
message cfg_kavu_async_stopbits_message {
    app_sess_hdr                     session
    ifid                             interface
    kavu_async_serial_stopbits_type  stopbits
}

/// Speed of a line, in two numbers.
struct kavu_async_serial_speed = 1734 {
    uint32  value_1
    uint32  value_2
}

/// Configuration of the speed of a line.
message cfg_kavu_async_speed_message { app_sess_hdr session  ifid interface  kavu_async_serial_speed speed }

/// Special characters, in eight numbers.
struct kavu_async_serial_spec_character = 1735 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
    uint32  value_4
    uint32  value_5
    uint32  value_6
    uint32  value_7
    uint32  value_8
}

/// Configuration of the special characters of a line.
message cfg_kavu_async_spec_character_message {
    app_sess_hdr                      session
    ifid                              interface
    kavu_async_serial_spec_character  spec_character
}

/// Type of a signal of an asynchronous serial line.
enum kavu_async_serial_signal_type = 1745

/// Signal of a line.
message kavu_async_serial_signal_message {
    app_sess_hdr                   session
    ifid                           interface
    kavu_async_serial_signal_type  signal
}

/// Cstate configuration of a line, as an interface state.
message cfg_kavu_async_cstate_message { app_sess_hdr session  ifid interface  if_state state }

/// Eight counters and six flags of a line.
struct kavu_async_serial_stats = 1736 {
    uint64       counter_1
    uint64       counter_2
    uint64       counter_3
    uint64       counter_4
    uint64       counter_5
    uint64       counter_6
    uint64       counter_7
    uint64       counter_8
    zel_boolean  flag_1
    zel_boolean  flag_2
    zel_boolean  flag_3
    zel_boolean  flag_4
    zel_boolean  flag_5
    zel_boolean  flag_6
}

/// Statistics of a line.
message kavu_async_serial_stats_message {
    app_sess_hdr             session
    ifid                     interface
    kavu_async_serial_stats  stats
}

/// Configuration of a line all at once, each part as in a message of its own.
message cfg_kavu_async_combo_message {
    app_sess_hdr                        session
    ifid                                interface
    kavu_async_serial_parity_type       parity
    kavu_async_serial_databits          databits
    kavu_async_serial_stopbits_type     stopbits
    kavu_async_serial_speed             speed
    kavu_async_serial_spec_character    spec_character
    kavu_async_serial_flowcontrol_data  flowcontrol
    if_state                            state
}

/// Type of a show request for a line.
enum kavu_async_serial_show_if_req_type = 1742

/// Request to show a line.
message zel_kavu_async_serial_show_if_req_message {
    app_sess_hdr                        session
    ifid                                interface
    kavu_async_serial_show_if_req_type  request_type
}

/// Type of a clear request for a line.
enum kavu_async_serial_clear_if_req_type = 1743

/// Request to clear a line.
message zel_kavu_async_serial_clear_if_req_message {
    app_sess_hdr                         session
    ifid                                 interface
    kavu_async_serial_clear_if_req_type  request_type
}

/// Clearing of the counters of a line; has no body.
message zel_kavu_async_serial_clr_cnt_message { app_sess_hdr session  ifid interface }

/// Text of a free-form report, behind a number.
struct kavu_async_serial_generic_report = 1744 {
    uint8        value
    bytes[1900]  buffer
}

/// Free-form report of asynchronous serial lines; has neither session header nor interface identifier.
message zel_kavu_async_serial_generic_report_message { kavu_async_serial_generic_report generic_report }
