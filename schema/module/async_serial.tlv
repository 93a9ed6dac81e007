//! Module management messages: how the control plane manages a plug-in module as a whole, and a few small
//! kinds of module. Many leave out the session header, the interface identifier, or both.

// This file holds configuration and statistics of asynchronous serial lines.

import "../common/session.tlv"

enum kavu_async_serial_flowcontrol_type = 1741

/// A pair of flow control settings.
struct kavu_async_serial_flowcontrol_data = 1738 {
    kavu_async_serial_flowcontrol_type  flowcontrol_1
    kavu_async_serial_flowcontrol_type  flowcontrol_2
}

/// Sets the flow control of a line.
message cfg_kavu_async_flowcontrol_message {
    app_sess_hdr                        session
    ifid                                interface
    kavu_async_serial_flowcontrol_data  flowcontrol
}

enum kavu_async_serial_parity_type = 1740

/// Sets the parity of a line.
message cfg_kavu_async_parity_message {
    app_sess_hdr                   session
    ifid                           interface
    kavu_async_serial_parity_type  parity
}

enum kavu_async_serial_databits = 1737

/// Sets the data bits of a line.
message cfg_kavu_async_databits_message {
    app_sess_hdr                session
    ifid                        interface
    kavu_async_serial_databits  databits
}

enum kavu_async_serial_stopbits_type = 1739

/// Sets the stop bits of a line.
message cfg_kavu_async_stopbits_message {
    app_sess_hdr                     session
    ifid                             interface
    kavu_async_serial_stopbits_type  stopbits
}

/// A pair of line speeds.
struct kavu_async_serial_speed = 1734 {
    uint32  value_1
    uint32  value_2
}

/// Sets the speed of a line.
message cfg_kavu_async_speed_message { app_sess_hdr session  ifid interface  kavu_async_serial_speed speed }

/// Special characters: eight numbers.
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

/// Sets the special characters of a line.
message cfg_kavu_async_spec_character_message {
    app_sess_hdr                      session
    ifid                              interface
    kavu_async_serial_spec_character  spec_character
}

enum kavu_async_serial_signal_type = 1745

/// Signal of a line.
message kavu_async_serial_signal_message {
    app_sess_hdr                   session
    ifid                           interface
    kavu_async_serial_signal_type  signal
}

/// Sets the state of a line.
message cfg_kavu_async_cstate_message { app_sess_hdr session  ifid interface  if_state state }

/// Statistics: eight counters and six flags.
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

/// Configures a line at once, each part as in its own message.
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

/// What a show request asks for.
enum kavu_async_serial_show_if_req_type = 1742

/// Show request for a line.
message zel_kavu_async_serial_show_if_req_message {
    app_sess_hdr                        session
    ifid                                interface
    kavu_async_serial_show_if_req_type  request_type
}

/// What a clear request clears.
enum kavu_async_serial_clear_if_req_type = 1743

/// Clear request for a line.
message zel_kavu_async_serial_clear_if_req_message {
    app_sess_hdr                         session
    ifid                                 interface
    kavu_async_serial_clear_if_req_type  request_type
}

/// Clears the counters of a line. Has no body: session header and interface identifier say it all.
message zel_kavu_async_serial_clr_cnt_message { app_sess_hdr session  ifid interface }

/// Report, up to 1900 bytes.
bytes kavu_async_serial_generic_report_buffer_array[1900]

/// Generic report on asynchronous serial lines.
struct kavu_async_serial_generic_report = 1744 {
    uint8                                          value
    kavu_async_serial_generic_report_buffer_array  buffer
}

/// Carries a generic report. The body alone, unlike the other messages about these lines.
message zel_kavu_async_serial_generic_report_message { kavu_async_serial_generic_report generic_report }
