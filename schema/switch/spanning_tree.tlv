//! Spanning-tree port states.

import "../common/session.tlv"

/// Spanning-tree state of a port.
enum stpstate = 1622

/// Spanning-tree state, behind a number.
struct stp_state = 1623 {
    uint16    value
    stpstate  state
}

/// Spanning-tree states in bulk.
struct stp_state_bulk = 1624 {
    /// Separate from the array's count.
    uint16         value
    stp_state[62]  stpstate
}

/// Single spanning-tree state of a port.
message switch_port_stp_state_message { app_sess_hdr session  ifid interface  stp_state stp_state }

/// Spanning-tree states of a port in bulk.
message switch_port_stp_state_bulk_message {
    app_sess_hdr    session
    ifid            interface
    stp_state_bulk  stp_state_bulk
}
