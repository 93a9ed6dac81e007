//! Show and clear requests for cellular interfaces.

import "../common/session.tlv"

/// What a show request asks for.
enum kavu_t_cwan_show_if_req_type = 1642

/// Show request for a cellular interface.
message zel_kavu_t_cwan_show_if_req_message {
    app_sess_hdr                  session
    ifid                          interface
    kavu_t_cwan_show_if_req_type  request_type
}

/// What a clear request clears.
enum kavu_t_cwan_clear_if_req_type = 1643

/// Clear request for a cellular interface.
message zel_kavu_t_cwan_clear_if_req_message {
    app_sess_hdr                   session
    ifid                           interface
    kavu_t_cwan_clear_if_req_type  request_type
}
