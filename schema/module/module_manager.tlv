//! Module manager: attributes, errors, stop and reload, host status, echo, reports, show and clear requests,
//! code signing and MAC assignment. None of its messages carries a session header.

/// Attributes as one block of bytes.
struct kavu_mm_attributes = 1245 {
    bytes[1900]  attributes as kavu_mm_attributes_mm_attributes_array
}

/// Attributes of a module.
message zel_kavu_mm_attributes_message { kavu_mm_attributes attributes }

/// CP layer 2 information. Its MAC address is a byte array of its own, not a zel_mac_addr, as in the DP, HP
/// and FC structures.
struct cp_l2_info = 1246 {
    uint16    value_1
    bytes[6]  mac
    uint16    value_2
    uint8     value_3
}

/// DP layer 2 information.
struct dp_l2_info = 1247 {
    uint16    value_1
    bytes[6]  mac
    uint16    value_2
    uint8     value_3
}

/// DP HP1 layer 2 information.
struct dp_hp1_l2_info = 1248 {
    uint16    value_1
    bytes[6]  mac
    uint16    value_2
    uint8     value_3
}

/// DP HP2 layer 2 information.
struct dp_hp2_l2_info = 1249 {
    uint16    value_1
    bytes[6]  mac
    uint16    value_2
    uint8     value_3
}

/// FC layer 2 information.
struct fc_l2_info = 1250 {
    uint16    value_1
    bytes[6]  mac
    uint16    value_2
    uint8     value_3
}

/// PID string of the layer 2 information, behind two numbers.
struct kavu_l2_info = 1251 {
    uint16     value_1
    uint16     value_2
    bytes[32]  pid as kavu_l2_info_pid_str_array
}

/// Layer 2 information of a module, all of it.
message zel_kavu_l2_info_message {
    cp_l2_info      cp
    dp_l2_info      dp
    dp_hp1_l2_info  dp_hp1
    dp_hp2_l2_info  dp_hp2
    fc_l2_info      fc
    kavu_l2_info    l2_info
}

/// Text of an error.
struct kavu_mm_error_text = 1277 {
    bytes[80]  text
}

/// Severity of a module's error.
enum kavu_mm_error_severity = 1278

/// Error of a module: severity and text.
message zel_kavu_mm_error_message { kavu_mm_error_severity severity  kavu_mm_error_text error_text }

enum kavu_module_reload_pwr = 1715  // tlvc: W003 because nothing tells what it is for

/// Reload power value of a stop request, behind a number.
struct kavu_mm_stop_request = 1256 {
    uint32                  value
    kavu_module_reload_pwr  module_reload_pwr
}

/// Request to stop a module.
message zel_kavu_mm_stop_request_message { kavu_mm_stop_request stop_request }

/// Stop status of a module.
enum kavu_mm_module_stop_status = 1253

/// Response to a stop request.
enum kavu_mm_stop_response = 1254

/// Answer to zel_kavu_mm_stop_request_message.
message zel_kavu_mm_stop_response_message {
    kavu_mm_module_stop_status  stop_status
    kavu_mm_stop_response       stop_response
}

/// Text of a free-form report, behind a number.
struct kavu_mm_generic_report = 1255 {
    uint8        value
    bytes[1900]  buffer
}

/// Free-form report of a module.
message zel_kavu_mm_generic_report_message { kavu_mm_generic_report generic_report }

/// Reload reason as text.
struct kavu_mm_reload = 1258 {
    bytes[80]  reason
}

/// Reload of a module.
message zel_kavu_mm_reload_message { kavu_mm_reload reload }

/// Status of the host.
enum kavu_mm_host_status = 1264

/// Host status, as a message of its own.
message zel_kavu_mm_host_status_message { kavu_mm_host_status host_status }

/// Data to echo, behind five numbers; there is room for one byte less than in a generic report.
struct kavu_mm_echo_req = 1279 {
    uint64       value_1
    uint32       value_2
    uint32       value_3
    uint16       value_4
    uint8        value_5
    bytes[1899]  data
}

/// Request for an echo.
message zel_kavu_mm_echo_req_message { kavu_mm_echo_req echo_req }

/// Echoed data, behind the members of the request.
struct kavu_mm_echo_resp = 1280 {
    uint64       value_1
    uint32       value_2
    uint32       value_3
    uint16       value_4
    uint8        value_5
    bytes[1899]  data
}

/// Answer to zel_kavu_mm_echo_req_message.
message zel_kavu_mm_echo_resp_message { kavu_mm_echo_resp echo_resp }

/// Type of a show request for a module.
enum kavu_mm_show_mod_req_type = 1292

/// Request to show a module.
message zel_kavu_mm_show_mod_req_message { kavu_mm_show_mod_req_type request_type }

/// Type of a clear request for a module.
enum kavu_mm_clear_mod_req_type = 1294

/// Request to clear a module.
message zel_kavu_mm_clear_mod_req_message { kavu_mm_clear_mod_req_type request_type }

/// Show options as text.
struct kavu_mm_show_mod_dev_req = 1293 {
    bytes[80]  options as kavu_mm_show_mod_dev_req_option_string_array
}

/// Request to show a device of a module.
message zel_kavu_mm_show_mod_dev_req_message { kavu_mm_show_mod_dev_req show_mod_dev_req }

/// Type of a code-signing request.
enum zel_kavu_mm_mod_codesign_req_type = 1467

/// Request for code signing.
message zel_kavu_mm_mod_codesign_req_message { zel_kavu_mm_mod_codesign_req_type request_type }

/// Type of a code-signing response.
enum zel_kavu_mm_mod_codesign_resp_type = 1469

/// Code-signing data with their type.
struct kavu_mm_mod_codesign_resp_data = 1470 {
    zel_kavu_mm_mod_codesign_resp_type  type
    bytes[512]                          codesign_data
}

/// Up to two pieces of code-signing data, behind a number.
struct kavu_mm_mod_codesign_resp_payload = 1471 {
    /// Separate from the array's count.
    uint8                              value
    kavu_mm_mod_codesign_resp_data[2]  payload
}

/// Answer to zel_kavu_mm_mod_codesign_req_message.
message zel_kavu_mm_mod_codesign_resp_message { kavu_mm_mod_codesign_resp_payload payload }

/// MAC address as a byte array of its own, not as a zel_mac_addr.
struct kavu_mm_mod_mac = 1479 {
    bytes[6]  mac
}

/// MAC address to assign to a module.
message zel_kavu_mm_mod_mac_assign_message { kavu_mm_mod_mac mac }
