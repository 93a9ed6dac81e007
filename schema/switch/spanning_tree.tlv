//! Spanning-tree state of the ports of a switch module.

import "../common/session.tlv"

enum stpstate = 1622

/// One spanning-tree state.
struct stp_state = 1623 {
    uint16    value
    stpstate  state
}

array stp_state_bulk_stpstate_array of stp_state[62]

/// Up to 62 spanning-tree states.
struct stp_state_bulk = 1624 {
    uint16                         value
    stp_state_bulk_stpstate_array  stpstate
}

/// Carries one spanning-tree state of a port.
message switch_port_stp_state_message { app_sess_hdr session  ifid interface  stp_state stp_state }

/// Carries up to 62 spanning-tree states of a port at once.
message switch_port_stp_state_bulk_message {
    app_sess_hdr    session
    ifid            interface
    stp_state_bulk  stp_state_bulk
}
