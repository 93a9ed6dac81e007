//! State, statistics and reports of a server module, and router information.

import "../common/session.tlv"

/// Status text of the server, behind a number.
struct svrm_server_status = 1219 {
    /// Separate from the array's count.
    uint32       value
    bytes[1024]  text as svrm_server_status_string_array
}

/// Exchange of the server's status.
message svrm_server_status_msg_message { app_sess_hdr session  ifid interface  svrm_server_status status }

/// Type of a server statistic.
enum svrm_stats_type = 1231

/// Server statistic: its type and a 64-bit number.
struct svrm_svr_stats = 1220 {
    svrm_stats_type  stats_type
    uint64           counter
}

/// Exchange of a server statistic.
message svrm_stats_message { app_sess_hdr session  ifid interface  svrm_svr_stats stats }

/// Connection state; the same bytes as a link state message of the same content.
message svrm_cstate_msg_message { app_sess_hdr session  ifid interface  if_state state }

/// Link state; the same bytes as a connection state message of the same content.
message svrm_link_state_message { app_sess_hdr session  ifid interface  if_state state }

/// PID and chassis of the router, behind three numbers.
struct svrm_rtr_info = 1233 {
    uint8      value_1
    uint8      value_2
    uint8      value_3
    bytes[32]  pid as svrm_rtr_info_pid_str_array
    bytes[32]  chassis as svrm_rtr_info_chas_str_array
}

/// Exchange of router information.
message svrm_rtr_info_msg_message { app_sess_hdr session  ifid interface  svrm_rtr_info router_info }

/// Text of a free-form report, behind a number.
struct kavu_svrm_generic_report = 1283 {
    uint8        value
    bytes[1900]  buffer
}

/// Free-form report of a server module; has neither session header nor interface identifier.
message zel_kavu_svrm_generic_report_message { kavu_svrm_generic_report generic_report }
