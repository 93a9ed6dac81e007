//! Card IPC blocks, which the library carries without looking inside.

import "../common/session.tlv"

enum zel_ipc_msg_type = 1600

/// IPC block, up to 1000 bytes.
bytes ipc_msg_msg_array[1000]

/// One card IPC block.
struct ipc_msg = 1601 {
    zel_ipc_msg_type   type
    uint32             value
    ipc_msg_msg_array  msg
}

/// A card IPC block of one interface.
message f35_msg_message { app_sess_hdr session  ifid interface  ipc_msg ipc_msg }
