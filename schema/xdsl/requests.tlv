//! Generic get and log, modem test, show and clear.

import "../common/session.tlv"
import "headers.tlv"

/// Log block; its response buffer holds up to 1,900 bytes.
struct zel_xdsl_generic_log_block = 1419 {
    uint32       value_1
    uint32       value_2
    uint32       value_3
    zel_boolean  flag
    bytes[1900]  cmd_resp_buf
}

/// Modem test; its command string holds up to 48 bytes.
struct zel_xdsl_test_modem_req = 1427 {
    zel_boolean  flag
    bytes[48]    cmd_str
}

/// What a generic get request asks for.
enum zel_xdsl_gen_request_type = 1437

/// Request for what its request type names.
message zel_xdsl_generic_get_request_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    zel_xdsl_line_operation_hdr  line_operation_hdr
    zel_xdsl_gen_request_type    gen_request_type
}

/// Response with a log block.
message zel_xdsl_resp_generic_log_message {
    app_sess_hdr                session
    ifid                        interface
    zel_xdsl_cmd_hdr            cmd_hdr
    zel_xdsl_generic_log_block  generic_log_block
}

/// Request for a modem test.
message zel_xdsl_req_test_modem_message {
    app_sess_hdr             session
    ifid                     interface
    zel_xdsl_cmd_hdr         cmd_hdr
    zel_xdsl_test_modem_req  test_modem_req
}

/// Type of the interface that a show or clear request is about.
enum kavu_xdsl_if_req_iface_type = 1481

/// Kind of a show request to an xDSL module.
enum kavu_xdsl_show_if_req_type = 1475

/// Request to show an interface of an xDSL module.
message zel_kavu_xdsl_show_if_req_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    kavu_xdsl_if_req_iface_type  if_req_iface_type
    kavu_xdsl_show_if_req_type   show_if_req_type
}

/// Kind of a clear request to an xDSL module.
enum kavu_xdsl_clear_if_req_type = 1476

/// Request to clear an interface of an xDSL module.
message zel_kavu_xdsl_clear_if_req_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_xdsl_cmd_hdr             cmd_hdr
    kavu_xdsl_if_req_iface_type  if_req_iface_type
    kavu_xdsl_clear_if_req_type  clear_if_req_type
}
