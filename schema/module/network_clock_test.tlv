//! Tests of network clock synchronization.

import "../common/session.tlv"

/// Six numbers of a clock synchronization test.
struct test_network_clk_sync = 1344 {
    int32   value_1
    uint8   value_2
    uint32  value_3
    uint8   value_4
    uint8   value_5
    uint16  value_6
}

/// Test of network clock synchronization; has neither session header nor interface identifier.
message zel_test_network_clk_sync_msg_message { test_network_clk_sync network_clk_sync }

/// Network clock mode, a flag.
struct test_network_clk_mode = 1369 {
    zel_boolean  mode
}

/// Test of the network clock mode; has neither session header nor interface identifier.
message zel_test_network_clk_mode_msg_message { test_network_clk_mode network_clk_mode }
