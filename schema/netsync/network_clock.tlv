//! Network clocks of the PLL, and lists of clocks.

import "../common/session.tlv"
import "interface.tlv"

/// PLL interface type of a clock.
enum zel_pll_intf_type = 1315

/// Clock mode of a network clock.
enum zel_netsync_clkmode = 1309

/// Network clock of the PLL.
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

/// Configuration of a network clock.
message zel_netsync_cfg_network_clk_message { netsync_cfg_network_clk cfg_network_clk }

/// Removal of a network clock.
message zel_netsync_rem_network_clk_message { netsync_cfg_network_clk cfg_network_clk }

/// One clock.
struct netsync_clk = 1323 {
    uint16             value_1
    uint16             value_2
    uint16             value_3
    zel_netsync_intf   intf
    zel_pll_intf_type  pll_intf_type
    uint8              value_4
}

/// Up to seven clocks, in two arrays with counts of their own.
struct netsync_clks = 1324 {
    /// Separate from the counts of the arrays.
    uint8           value
    netsync_clk[2]  clks
    netsync_clk[5]  clks_extended
}

/// List of clocks.
message zel_netsync_clks_message { netsync_clks clks }

/// Source of a clock.
message zel_netsync_clk_src_message { netsync_clk clk }
