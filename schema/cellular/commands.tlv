//! Commands that are carried to a cellular card: AT commands, ping and remote shell commands.

import "../common/session.tlv"

/// AT command block, up to 800 bytes.
bytes cwan_atcmds_msg_array[800]

/// Carries AT commands.
struct cwan_atcmds = 1579 {
    uint32                 value
    cwan_atcmds_msg_array  msg
}

/// A ping is a single number.
enum cwan_ping_msg = 1580

enum zel_cwan_exec_cmd_flag = 1581

/// Stands before every remote shell command.
struct cwan_exec_shell_cmd_header = 1582 {
    uint32                  value_1
    uint32                  value_2
    zel_cwan_exec_cmd_flag  flag
}

/// Shell command buffer, up to 800 bytes.
bytes zel_cwan_exec_shell_cmd_buf_array[800]

/// A remote shell command.
struct zel_cwan_exec_shell_cmd = 1583 {
    cwan_exec_shell_cmd_header         header
    zel_cwan_exec_shell_cmd_buf_array  buf
}

/// AT command transport of one cellular interface.
message atcmds_message { app_sess_hdr session  ifid interface  cwan_atcmds atcmds }
