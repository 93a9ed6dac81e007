//! AT commands, ping and remote shell commands of a cellular card.

import "../common/session.tlv"

/// Block of AT commands, up to 800 bytes.
struct cwan_atcmds = 1579 {
    /// No codec counts the bytes by it.
    uint32      value
    bytes[800]  msg
}

/// Ping, which is a single number.
enum cwan_ping_msg = 1580

/// Flag of a remote shell command.
enum zel_cwan_exec_cmd_flag = 1581

/// Header of a remote shell command.
struct cwan_exec_shell_cmd_header = 1582 {
    uint32                  value_1
    uint32                  value_2
    zel_cwan_exec_cmd_flag  flag
}

/// Remote shell command of up to 800 bytes behind its header.
struct zel_cwan_exec_shell_cmd = 1583 {
    cwan_exec_shell_cmd_header  header
    bytes[800]                  buf
}

/// Message with AT commands.
message atcmds_message { app_sess_hdr session  ifid interface  cwan_atcmds atcmds }
