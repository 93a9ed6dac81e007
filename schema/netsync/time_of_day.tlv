//! The one-pulse-per-second (1PPS) input and the time-of-day port.

import "../common/session.tlv"

enum zel_netsync_1pps_input_state = 1333

/// 1PPS status. The number alone: on the wire it cannot be told from zel_netsync_1pps_input_state.
message zel_netsync_1pps_state_message { zel_netsync_1pps_input_state input_state }

enum zel_netsync_tod_port_type = 1466

/// Configuration of a time-of-day port.
struct zel_netsync_tod_port_cfg = 1334 {
    zel_boolean                flag
    zel_netsync_tod_port_type  type
}

/// Configures a time-of-day port. The body alone, without session header.
message zel_netsync_tod_port_cfg_msg_message { zel_netsync_tod_port_cfg cfg }

/// Mode of a time-of-day port, with the type of the port.
struct zel_netsync_tod_port_mode = 1335 {
    zel_boolean                flag_1
    zel_boolean                flag_2
    zel_boolean                flag_3
    zel_boolean                flag_4
    zel_netsync_tod_port_type  type
}

/// Mode of a time-of-day port. The body alone, without session header.
message zel_netsync_tod_port_mode_msg_message { zel_netsync_tod_port_mode mode }

enum zel_netsync_1pps_input_source = 1473

/// Source of 1PPS. The number alone: on the wire it cannot be told from zel_netsync_1pps_input_source.
message zel_netsync_1pps_source_msg_message { zel_netsync_1pps_input_source input_source }
