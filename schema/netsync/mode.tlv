//! Network option and synchronization mode, feature selection, and participation of modules.

import "../common/session.tlv"
import "interface.tlv"

enum zel_netsync_net_option = 1310

/// The network option alone, as most messages of this file carry it.
struct netsync_sync_option = 1313 {
    zel_netsync_net_option  net_option
}

/// Network option, with neither session header nor interface identifier.
message zel_netsync_net_mode_message { netsync_sync_option sync_option }

/// Network option and interface, with neither session header nor interface identifier.
message zel_netsync_sync_mode_message { netsync_sync_option sync_option  zelnetsync_intf netsync_intf }

/// Feature selection: one flag.
struct netsync_feature_mode = 1322 {
    zel_boolean  feature_mode
}

/// The body alone: on the wire it cannot be told from netsync_feature_mode.
message zel_netsync_feature_selection_message { netsync_feature_mode mode }

/// Network option, behind the usual session header and interface identifier.
message zel_cc_network_option_message {
    app_sess_hdr         session
    ifid                 interface
    netsync_sync_option  sync_option
}

/// A module, by two numbers.
struct zelnetsync_module = 1368 {
    uint16  value_1
    uint16  value_2
}

/// Participation of a module: the module and a flag.
message zel_netsync_participate_message {
    app_sess_hdr       session
    ifid               interface
    zelnetsync_module  participant
    zel_boolean        flag
}
