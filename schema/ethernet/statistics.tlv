//! Statistics of a port: general, extended and IEEE 802.3.

import "../common/session.tlv"
import "interface.tlv"

/// Further receive counters of the general statistics.
struct zel_ether_rx_stats_ext = 1119 {
    if_count  counter_1
    if_count  counter_2
    if_count  counter_3
    if_count  counter_4
    if_count  counter_5
    if_count  counter_6
    if_error  error_1
    if_error  error_2
    if_error  error_3
    if_error  error_4
    if_error  error_5
    if_count  counter_7
    if_error  error_6
    if_count  counter_8
    if_error  error_7
}

/// Further transmit counters of the general statistics.
struct zel_ether_tx_stats_ext = 1120 {
    if_count  counter_1
    if_count  counter_2
    if_count  counter_3
    if_count  counter_4
    if_count  counter_5
    if_count  counter_6
    if_error  error_1
    if_error  error_2
    if_count  counter_7
    if_error  error_3
    if_error  error_4
}

/// General statistics: a timer, counters, and the further ones of both directions.
struct zel_ether_stats = 1121 {
    if_timer_long           timer
    if_count                counter_1
    if_count_long           counter_2
    if_count                counter_3
    if_count_long           counter_4
    if_count                counter_5
    if_count                counter_6
    if_count                counter_7
    if_count                counter_8
    if_count                counter_9
    if_count                counter_10
    if_error                error_1
    if_error                error_2
    if_error                error_3
    if_error                error_4
    if_error                error_5
    if_error                error_6
    if_error                error_7
    if_error                error_8
    zel_ether_tx_stats_ext  tx_stats_ext
    zel_ether_rx_stats_ext  rx_stats_ext
    if_error                error_9
    if_error                error_10
    if_count                counter_11
    if_count                counter_12
    if_count                counter_13
}

/// Extended statistics: ten 64-bit counters.
struct zel_ether_ext_stats = 1306 {
    if_count_long  counter_1
    if_count_long  counter_2
    if_count_long  counter_3
    if_count_long  counter_4
    if_count_long  counter_5
    if_count_long  counter_6
    if_count_long  counter_7
    if_count_long  counter_8
    if_count_long  counter_9
    if_count_long  counter_10
}

/// Statistics setting of a port.
enum zel_ether_if_stats_config = 1259

/// Configuration of a port's statistics.
message ether_if_stats_config_message {
    app_sess_hdr               session
    ifid                       interface
    zel_ether_if_stats_config  if_stats_config
}

/// General statistics of a port.
message ether_stats_message { app_sess_hdr session  ifid interface  zel_ether_stats stats }

/// IEEE 802.3 statistics: fifteen 32-bit and six 64-bit counters.
struct zel_ether_dot3_stats_bundle = 1130 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
    uint32  counter_5
    uint32  counter_6
    uint32  counter_7
    uint32  counter_8
    uint32  counter_9
    uint32  counter_10
    uint32  counter_11
    uint32  counter_12
    uint32  counter_13
    uint32  counter_14
    uint32  counter_15
    uint64  counter_16
    uint64  counter_17
    uint64  counter_18
    uint64  counter_19
    uint64  counter_20
    uint64  counter_21
}

/// Update of a port's IEEE 802.3 statistics.
message ether_dot3_stats_update_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_ether_dot3_stats_bundle  dot3_stats_bundle
}
