//! Generic report of T1/E1 modules, and show and clear requests to them.

import "../common/session.tlv"

/// Free-form report of a T1/E1 module: a number and up to 1,900 characters of text.
struct kavu_t1e1_generic_report = 1282 {
    uint8        value
    bytes[1900]  buffer
}

/// Generic report of a T1/E1 module, with neither session header nor interface.
message zel_kavu_t1e1_generic_report_message { kavu_t1e1_generic_report generic_report }

/// Kind of a show request to a T1/E1 module.
enum kavu_t1e1_show_if_req_type = 1288

/// Request to show an interface of a T1/E1 module.
message zel_kavu_t1e1if_show_if_req_message {
    app_sess_hdr                session
    ifid                        interface
    kavu_t1e1_show_if_req_type  req_type
}

/// Kind of a clear request to a T1/E1 module.
enum kavu_t1e1_clear_if_req_type = 1289

/// Request to clear an interface of a T1/E1 module.
message zel_kavu_t1e1if_clear_if_req_message {
    app_sess_hdr                 session
    ifid                         interface
    kavu_t1e1_clear_if_req_type  req_type
}
