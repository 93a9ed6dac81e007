//! Test messages for network clock synchronization.

import "../common/session.tlv"

/// Body of a clock synchronization test.
struct test_network_clk_sync = 1344 {
    int32   value_1
    uint8   value_2
    uint32  value_3
    uint8   value_4
    uint8   value_5
    uint16  value_6
}

/// Clock synchronization test. The body alone, without session header.
message zel_test_network_clk_sync_msg_message { test_network_clk_sync network_clk_sync }

/// Network clock mode: one flag.
struct test_network_clk_mode = 1369 {
    zel_boolean  mode
}

/// Network clock mode test. The body alone, without session header.
message zel_test_network_clk_mode_msg_message { test_network_clk_mode network_clk_mode }
