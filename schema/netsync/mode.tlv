//! Network option and synchronization mode, feature selection, and participation of modules.

import "../common/session.tlv"
import "interface.tlv"

/// Network option of synchronization.
enum zel_netsync_net_option = 1310

/// Network option by itself.
struct netsync_sync_option = 1313 {
    zel_netsync_net_option  net_option
}

/// Network mode: the network option alone.
message zel_netsync_net_mode_message { netsync_sync_option sync_option }

/// Synchronization mode: the network option and an interface.
message zel_netsync_sync_mode_message { netsync_sync_option sync_option  zelnetsync_intf netsync_intf }

/// Feature mode, a flag.
struct netsync_feature_mode = 1322 {
    zel_boolean  feature_mode
}

/// Feature selection; the same bytes as its one member.
message zel_netsync_feature_selection_message { netsync_feature_mode mode }

/// Network option of an interface.
message zel_cc_network_option_message {
    app_sess_hdr         session
    ifid                 interface
    netsync_sync_option  sync_option
}

/// Module, in two numbers.
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
