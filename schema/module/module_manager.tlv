//! The module manager: attributes, errors, stop and reload, host status, echo, reports and code signing. None
//! of its messages carries a session header.

/// Attributes, up to 1900 bytes.
bytes kavu_mm_attributes_mm_attributes_array[1900]

/// Attributes of a module as one block of bytes.
struct kavu_mm_attributes = 1245 {
    kavu_mm_attributes_mm_attributes_array  attributes
}

/// Carries the attributes of a module.
message zel_kavu_mm_attributes_message { kavu_mm_attributes attributes }

/// MAC address of six bytes, without a zero byte behind it.
bytes cp_l2_info_mac_array[6]

/// CP layer 2 information; the DP, HP and FC records have the same members.
struct cp_l2_info = 1246 {
    uint16                value_1
    cp_l2_info_mac_array  mac
    uint16                value_2
    uint8                 value_3
}

/// MAC address of six bytes, without a zero byte behind it.
bytes dp_l2_info_mac_array[6]

/// DP layer 2 information.
struct dp_l2_info = 1247 {
    uint16                value_1
    dp_l2_info_mac_array  mac
    uint16                value_2
    uint8                 value_3
}

/// MAC address of six bytes, without a zero byte behind it.
bytes dp_hp1_l2_info_mac_array[6]

/// DP HP1 layer 2 information.
struct dp_hp1_l2_info = 1248 {
    uint16                    value_1
    dp_hp1_l2_info_mac_array  mac
    uint16                    value_2
    uint8                     value_3
}

/// MAC address of six bytes, without a zero byte behind it.
bytes dp_hp2_l2_info_mac_array[6]

/// DP HP2 layer 2 information.
struct dp_hp2_l2_info = 1249 {
    uint16                    value_1
    dp_hp2_l2_info_mac_array  mac
    uint16                    value_2
    uint8                     value_3
}

/// MAC address of six bytes, without a zero byte behind it.
bytes fc_l2_info_mac_array[6]

/// FC layer 2 information.
struct fc_l2_info = 1250 {
    uint16                value_1
    fc_l2_info_mac_array  mac
    uint16                value_2
    uint8                 value_3
}

/// PID string, up to 32 bytes.
bytes kavu_l2_info_pid_str_array[32]

/// Layer 2 information with the PID string.
struct kavu_l2_info = 1251 {
    uint16                      value_1
    uint16                      value_2
    kavu_l2_info_pid_str_array  pid
}

/// All layer 2 information of a module, one structure behind the other.
message zel_kavu_l2_info_message {
    cp_l2_info      cp
    dp_l2_info      dp
    dp_hp1_l2_info  dp_hp1
    dp_hp2_l2_info  dp_hp2
    fc_l2_info      fc
    kavu_l2_info    l2_info
}

enum kavu_mm_error_severity = 1278

/// Error text, up to 80 bytes.
bytes kavu_mm_error_text_text_array[80]

/// Text of an error.
struct kavu_mm_error_text = 1277 {
    kavu_mm_error_text_text_array  text
}

/// Error of a module, by severity and text.
message zel_kavu_mm_error_message { kavu_mm_error_severity severity  kavu_mm_error_text error_text }

enum kavu_module_reload_pwr = 1715

/// Stop request, with the power setting of a reload.
struct kavu_mm_stop_request = 1256 {
    uint32                  value
    kavu_module_reload_pwr  module_reload_pwr
}

/// Asks a module to stop.
message zel_kavu_mm_stop_request_message { kavu_mm_stop_request stop_request }

enum kavu_mm_module_stop_status = 1253
enum kavu_mm_stop_response = 1254

/// Answers a stop request.
message zel_kavu_mm_stop_response_message {
    kavu_mm_module_stop_status  stop_status
    kavu_mm_stop_response       stop_response
}

/// Report, up to 1900 bytes.
bytes kavu_mm_generic_report_buffer_array[1900]

/// Generic report of a module.
struct kavu_mm_generic_report = 1255 {
    uint8                                value
    kavu_mm_generic_report_buffer_array  buffer
}

/// Carries a generic report.
message zel_kavu_mm_generic_report_message { kavu_mm_generic_report generic_report }

/// Reload reason, up to 80 bytes.
bytes kavu_mm_reload_reason_array[80]

/// Reload, with its reason as a text.
struct kavu_mm_reload = 1258 {
    kavu_mm_reload_reason_array  reason
}

/// Reloads a module.
message zel_kavu_mm_reload_message { kavu_mm_reload reload }

enum kavu_mm_host_status = 1264

/// Status of the host.
message zel_kavu_mm_host_status_message { kavu_mm_host_status host_status }

/// Data to echo, up to 1899 bytes: one less than a generic report holds.
bytes kavu_mm_echo_req_data_array[1899]

/// Data to echo, behind five numbers.
struct kavu_mm_echo_req = 1279 {
    uint64                       value_1
    uint32                       value_2
    uint32                       value_3
    uint16                       value_4
    uint8                        value_5
    kavu_mm_echo_req_data_array  data
}

/// Asks for an echo.
message zel_kavu_mm_echo_req_message { kavu_mm_echo_req echo_req }

/// Echoed data, up to 1899 bytes.
bytes kavu_mm_echo_resp_data_array[1899]

/// Echoed data, with the members of the request.
struct kavu_mm_echo_resp = 1280 {
    uint64                        value_1
    uint32                        value_2
    uint32                        value_3
    uint16                        value_4
    uint8                         value_5
    kavu_mm_echo_resp_data_array  data
}

/// Answers an echo request.
message zel_kavu_mm_echo_resp_message { kavu_mm_echo_resp echo_resp }

/// What a show request asks for.
enum kavu_mm_show_mod_req_type = 1292

/// Show request for a module.
message zel_kavu_mm_show_mod_req_message { kavu_mm_show_mod_req_type request_type }

/// What a clear request clears.
enum kavu_mm_clear_mod_req_type = 1294

/// Clear request for a module.
message zel_kavu_mm_clear_mod_req_message { kavu_mm_clear_mod_req_type request_type }

/// Show options, up to 80 bytes.
bytes kavu_mm_show_mod_dev_req_option_string_array[80]

/// Show options, as a text.
struct kavu_mm_show_mod_dev_req = 1293 {
    kavu_mm_show_mod_dev_req_option_string_array  options
}

/// Show request for a device of a module.
message zel_kavu_mm_show_mod_dev_req_message { kavu_mm_show_mod_dev_req show_mod_dev_req }

/// Kind of a code-signing request.
enum zel_kavu_mm_mod_codesign_req_type = 1467

/// Code-signing request.
message zel_kavu_mm_mod_codesign_req_message { zel_kavu_mm_mod_codesign_req_type request_type }

enum zel_kavu_mm_mod_codesign_resp_type = 1469

/// Code-signing data, up to 512 bytes.
bytes kavu_mm_mod_codesign_resp_data_codesign_data_array[512]

/// One piece of code-signing data and its kind.
struct kavu_mm_mod_codesign_resp_data = 1470 {
    zel_kavu_mm_mod_codesign_resp_type                  type
    kavu_mm_mod_codesign_resp_data_codesign_data_array  codesign_data
}

/// Up to 2 pieces of code-signing data, held in the record.
array kavu_mm_mod_codesign_resp_payload_payload_array of kavu_mm_mod_codesign_resp_data[2]

/// Body of a code-signing response.
struct kavu_mm_mod_codesign_resp_payload = 1471 {
    uint8                                            value
    kavu_mm_mod_codesign_resp_payload_payload_array  payload
}

/// Answers a code-signing request.
message zel_kavu_mm_mod_codesign_resp_message { kavu_mm_mod_codesign_resp_payload payload }

/// MAC address of six bytes, without a zero byte behind it.
bytes kavu_mm_mod_mac_mac_array[6]

/// MAC address as plain bytes, not as the shared address type.
struct kavu_mm_mod_mac = 1479 {
    kavu_mm_mod_mac_mac_array  mac
}

/// Assigns a MAC address to a module.
message zel_kavu_mm_mod_mac_assign_message { kavu_mm_mod_mac mac }
