//! Network clocks of the PLL and the list of clocks.

import "../common/session.tlv"
import "interface.tlv"

enum zel_netsync_clkmode = 1309
enum zel_pll_intf_type = 1315

/// Network clock configuration of the PLL.
struct netsync_cfg_network_clk = 1316 {
    uint16                value_1
    uint16                value_2
    uint16                value_3
    zel_netsync_intf      intf
    zel_pll_intf_type     pll_intf_type
    zel_netsync_clkmode   clock_mode
    zel_netsync_intf_sig  signal_type
    zel_boolean           flag
}

/// Configures a network clock. The body alone, without session header.
message zel_netsync_cfg_network_clk_message { netsync_cfg_network_clk cfg_network_clk }

/// Removes a network clock. The body alone, without session header.
message zel_netsync_rem_network_clk_message { netsync_cfg_network_clk cfg_network_clk }

/// One clock; the body of a message of its own, and the element of the lists.
struct netsync_clk = 1323 {
    uint16             value_1
    uint16             value_2
    uint16             value_3
    zel_netsync_intf   intf
    zel_pll_intf_type  pll_intf_type
    uint8              value_4
}

/// Up to 2 clocks.
array netsync_clks_clks_array of netsync_clk[2]

/// Up to 5 more clocks.
array netsync_clks_clks_extended_array of netsync_clk[5]

/// List of up to 7 clocks, in two arrays that are counted separately.
struct netsync_clks = 1324 {
    uint8                             value
    netsync_clks_clks_array           clks
    netsync_clks_clks_extended_array  clks_extended
}

/// The clock list alone, without session header.
message zel_netsync_clks_message { netsync_clks clks }

/// The clock source alone, without session header.
message zel_netsync_clk_src_message { netsync_clk clk }
