//! Generic report of T1/E1 modules, and show and clear requests to them.

import "../common/session.tlv"

/// Text of a generic report.
bytes kavu_t1e1_generic_report_buffer_array[1900]

/// Free-form report: a number and up to 1,900 characters of text.
struct kavu_t1e1_generic_report = 1282 {
    uint8                                  value
    kavu_t1e1_generic_report_buffer_array  buffer
}

/// Report that the module sends up, with neither session header nor interface.
message zel_kavu_t1e1_generic_report_message { kavu_t1e1_generic_report generic_report }

/// Kind of show request.
enum kavu_t1e1_show_if_req_type = 1288

/// Request to show an interface.
message zel_kavu_t1e1if_show_if_req_message {
    app_sess_hdr                session
    ifid                        interface
    kavu_t1e1_show_if_req_type  req_type
}

/// Kind of clear request.
enum kavu_t1e1_clear_if_req_type = 1289

/// Request to clear an interface.
message zel_kavu_t1e1if_clear_if_req_message {
    app_sess_hdr                 session
    ifid                         interface
    kavu_t1e1_clear_if_req_type  req_type
}
