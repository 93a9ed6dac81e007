//! Input of one pulse per second (1PPS), and the time-of-day port.

import "../common/session.tlv"

/// State of the 1PPS input.
enum zel_netsync_1pps_input_state = 1333

/// Status of 1PPS; the same bytes as its one member.
message zel_netsync_1pps_state_message { zel_netsync_1pps_input_state input_state }

/// Type of a time-of-day port.
enum zel_netsync_tod_port_type = 1466

/// Type of a time-of-day port, behind a flag.
struct zel_netsync_tod_port_cfg = 1334 {
    zel_boolean                flag
    zel_netsync_tod_port_type  type
}

/// Configuration of a time-of-day port.
message zel_netsync_tod_port_cfg_msg_message { zel_netsync_tod_port_cfg cfg }

/// Type of a time-of-day port, behind four flags.
struct zel_netsync_tod_port_mode = 1335 {
    zel_boolean                flag_1
    zel_boolean                flag_2
    zel_boolean                flag_3
    zel_boolean                flag_4
    zel_netsync_tod_port_type  type
}

/// Mode of a time-of-day port.
message zel_netsync_tod_port_mode_msg_message { zel_netsync_tod_port_mode mode }

/// Source of the 1PPS input.
enum zel_netsync_1pps_input_source = 1473

/// Source of 1PPS; the same bytes as its one member.
message zel_netsync_1pps_source_msg_message { zel_netsync_1pps_input_source input_source }
