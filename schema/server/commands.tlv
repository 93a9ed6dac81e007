//! UART sessions, server commands and their results, password reset, blocking and boot URL.

import "../common/session.tlv"

/// UART of a server module.
enum svrm_module_uart_type = 1227

/// UART by itself.
struct svrm_uart_data = 1216 {
    svrm_module_uart_type  uart_type
}

/// Selection of a UART session.
message svrm_session_msg_message { app_sess_hdr session  ifid interface  svrm_uart_data uart }

/// Command to the server.
enum svrm_exec_svr_cmd = 1228

/// Server command by itself.
struct svrm_exec_action = 1217 {
    svrm_exec_svr_cmd  command
}

/// Exchange of a server command.
message svrm_exec_msg_message { app_sess_hdr session  ifid interface  svrm_exec_action action }

/// Type of a password reset.
enum svrm_reset_password_type = 1230

/// Password reset by itself.
struct svrm_pwreset_data = 1218 {
    svrm_reset_password_type  password_type
}

/// Exchange of a password reset.
message svrm_pwreset_msg_message { app_sess_hdr session  ifid interface  svrm_pwreset_data password_reset }

/// Blocking configuration.
struct svrm_blk_cfg = 1221 {
    zel_boolean  blocking
}

/// Exchange of the blocking configuration.
message svrm_blk_msg_message { app_sess_hdr session  ifid interface  svrm_blk_cfg blk_cfg }

/// Type of a command's result.
enum svrm_result_type = 1232

/// Result of a command: its type, two numbers and a text.
struct svrm_result_cfg = 1222 {
    uint8             value_1
    svrm_result_type  type
    uint8             value_2
    bytes[1024]       text as svrm_result_cfg_msg_array
}

/// Exchange of a command's result.
message svrm_result_msg_message { app_sess_hdr session  ifid interface  svrm_result_cfg result }

/// Boot URL of the server, behind a number.
struct svrm_svr_boot_url = 1223 {
    /// Separate from the array's count.
    uint32       value
    bytes[1024]  url as svrm_svr_boot_url_url_str_array
}

/// Exchange of the boot URL.
message svrm_svr_boot_msg_message { app_sess_hdr session  ifid interface  svrm_svr_boot_url boot_url }
