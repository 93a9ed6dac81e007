//! Card IPC blocks, which are carried without a look inside.

import "../common/session.tlv"

/// Type of a card IPC block.
enum zel_ipc_msg_type = 1600

bytes ipc_msg_msg_array[1000]

/// Card IPC block with its type.
struct ipc_msg = 1601 {
    zel_ipc_msg_type   type
    /// Separate from the array's count.
    uint32             value
    ipc_msg_msg_array  msg
}

/// Card IPC block of an interface.
message f35_msg_message { app_sess_hdr session  ifid interface  ipc_msg ipc_msg }
