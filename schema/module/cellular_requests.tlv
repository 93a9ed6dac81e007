//! Show and clear requests for cellular interfaces.

import "../common/session.tlv"

/// Type of a show request for a cellular interface.
enum kavu_t_cwan_show_if_req_type = 1642

/// Request to show a cellular interface.
message zel_kavu_t_cwan_show_if_req_message {
    app_sess_hdr                  session
    ifid                          interface
    kavu_t_cwan_show_if_req_type  request_type
}

/// Type of a clear request for a cellular interface.
enum kavu_t_cwan_clear_if_req_type = 1643

/// Request to clear a cellular interface.
message zel_kavu_t_cwan_clear_if_req_message {
    app_sess_hdr                   session
    ifid                           interface
    kavu_t_cwan_clear_if_req_type  request_type
}
