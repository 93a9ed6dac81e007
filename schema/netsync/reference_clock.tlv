//! Reference clock interfaces: selection, squelching, signal types, and the external (BITS) clock.

import "../common/session.tlv"
import "interface.tlv"

/// Selection of a reference clock interface.
message zel_netsync_tib_ref_clock_message {
    app_sess_hdr     session
    ifid             interface
    zelnetsync_intf  netsync_intf
    zel_boolean      flag
}

/// Squelching of an external interface.
message zel_netsync_squelch_ext_intf_message {
    app_sess_hdr     session
    ifid             interface
    zelnetsync_intf  netsync_intf
}

/// Update of the signal type of an interface.
message zel_netsync_signal_type_update_message {
    app_sess_hdr     session
    ifid             interface
    zelnetsync_intf  netsync_intf
}

/// Two interfaces of the external (BITS) clock.
struct netsync_external_clk_cfg = 1314 {
    zelnetsync_intf  netsync_intf_1
    zelnetsync_intf  netsync_intf_2
}

/// Configuration of the external (BITS) clock.
message zel_netsync_external_clk_cfg_message {
    app_sess_hdr              session
    ifid                      interface
    netsync_external_clk_cfg  external_clk_cfg
}
