//! Card IPC blocks, which are carried without a look inside.

import "../common/session.tlv"

/// Type of a card IPC block.
enum zel_ipc_msg_type = 1600

/// Card IPC block with its type.
struct ipc_msg = 1601 {
    zel_ipc_msg_type  type
    /// Separate from the array's count.
    uint32            value
    bytes[1000]       msg
}

/// Card IPC block of an interface.
message f35_msg_message { app_sess_hdr session  ifid interface  ipc_msg ipc_msg }
