//! Local SPAN (port mirroring) sessions of a switch module.

import "../common/session.tlv"

enum span_port_vector = 1625

/// A session and its three port vectors, which only their order tells apart.
struct local_span_session = 1626 {
    uint16            value
    span_port_vector  port_vector_1
    span_port_vector  port_vector_2
    span_port_vector  port_vector_3
}

/// Configures a session; carries no interface, since a session is not bound to one.
message local_span_session_cfg_message { app_sess_hdr session  local_span_session local_span_session }
