//! Local SPAN sessions.

import "../common/session.tlv"

/// Port vector of a local SPAN session.
enum span_port_vector = 1625

/// Local SPAN session: a number and three port vectors, which only their order tells apart.
struct local_span_session = 1626 {
    uint16            value
    span_port_vector  port_vector_1
    span_port_vector  port_vector_2
    span_port_vector  port_vector_3
}

/// Configuration of a local SPAN session; names no interface, since a session is not bound to one.
message local_span_session_cfg_message { app_sess_hdr session  local_span_session local_span_session }
