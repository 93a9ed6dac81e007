//! Connection manager: establish command, debug switch, and heartbeat and service point statistics. None of
//! its messages carries a session header.

/// Two numbers of an establish command.
struct establish_cmd = 1708 {
    uint32  value_1
    uint32  value_2
}

/// Establish command of the connection manager.
message zel_establish_cmd_message { establish_cmd cmd }

/// Debug switch of the connection manager.
enum kavu_debug = 1711

/// Whether a debug switch is enabled or disabled.
enum enable_disable = 1710

/// Setting of a debug switch.
message zel_cm_debug_msg_message { kavu_debug debug  enable_disable enable }

/// Counters of the heartbeat.
struct heartbeat_statistics = 1712 {
    uint64  counter_1
    uint64  counter_2
    uint64  counter_3
    uint64  counter_4
    uint64  counter_5
    uint64  counter_6
    uint32  counter_7
    uint32  counter_8
    uint32  counter_9
    uint32  counter_10
}

/// Counters of one service point.
struct service_point_statistics = 1713 {
    uint64  counter_1
    uint64  counter_2
    uint64  counter_3
    uint64  counter_4
    uint64  counter_5
    uint64  counter_6
    uint64  counter_7
}

/// Heartbeat and service point statistics, and a further number.
struct conn_mgr_stats = 1714 {
    heartbeat_statistics  heartbeat
    /// Number of service points. Decoding takes it from the array, modulo 256.
    uint8                 count
    dynamic array         sap_stats of service_point_statistics counted by uint8
    uint64                counter
}

/// Statistics of the connection manager.
message zel_conn_mgr_stats_message { conn_mgr_stats stats }
