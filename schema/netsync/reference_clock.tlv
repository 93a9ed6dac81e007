//! Selection of reference clock interfaces, squelching, and the external (BITS) clock.

import "../common/session.tlv"
import "interface.tlv"

/// Selects a reference clock interface.
message zel_netsync_tib_ref_clock_message {
    app_sess_hdr     session
    ifid             interface
    zelnetsync_intf  netsync_intf
    zel_boolean      flag
}

/// Squelches an external interface.
message zel_netsync_squelch_ext_intf_message {
    app_sess_hdr     session
    ifid             interface
    zelnetsync_intf  netsync_intf
}

/// Changes the signal type of an interface.
message zel_netsync_signal_type_update_message {
    app_sess_hdr     session
    ifid             interface
    zelnetsync_intf  netsync_intf
}

/// External (BITS) clock configuration: two interfaces.
struct netsync_external_clk_cfg = 1314 {
    zelnetsync_intf  netsync_intf_1
    zelnetsync_intf  netsync_intf_2
}

/// Configures the external (BITS) clock.
message zel_netsync_external_clk_cfg_message {
    app_sess_hdr              session
    ifid                      interface
    netsync_external_clk_cfg  external_clk_cfg
}
