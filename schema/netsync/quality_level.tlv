//! SSM quality levels (QL), sent and received, of one port or of all ports at once.

import "../common/session.tlv"
import "interface.tlv"
import "mode.tlv"

/// SSM settings of a TIB: two numbers, a flag and the network option.
struct netsync_update_ssm_on_tib = 1317 {
    uint16                  value_1
    uint16                  value_2
    zel_boolean             flag
    zel_netsync_net_option  net_option
}

/// Update of the SSM on a TIB; has no interface identifier.
message zel_netsync_update_ssm_on_tib_message {
    app_sess_hdr               session
    netsync_update_ssm_on_tib  update_ssm_on_tib
}

/// SSM quality level of a port.
enum zel_netsync_ql = 1311

/// Quality levels of up to 64 ports, in three arrays with counts of their own, apart from the numbers before
/// them. Serves both directions.
struct netsync_update_all_ports_ql = 1318 {
    uint16              value_1
    uint16              value_2
    uint16              value_3
    zel_netsync_ql[10]  ql_value
    zel_netsync_ql[30]  ql_value_extended
    zel_netsync_ql[24]  ql_value_extended2
}

/// Quality level sent on a port.
message zel_netsync_update_tx_ql_message {
    app_sess_hdr     session
    ifid             interface
    zelnetsync_intf  netsync_intf
    zel_netsync_ql   ql
}

/// Quality level received on a port.
message zel_netsync_update_rx_ql_message {
    app_sess_hdr     session
    ifid             interface
    zelnetsync_intf  netsync_intf
    zel_netsync_ql   ql
}

/// Quality levels sent on all ports.
message zel_netsync_update_all_ports_tx_ql_message {
    app_sess_hdr                 session
    ifid                         interface
    netsync_update_all_ports_ql  update_all_ports_ql
}

/// Quality levels received on all ports.
message zel_netsync_update_all_ports_rx_ql_message {
    app_sess_hdr                 session
    ifid                         interface
    netsync_update_all_ports_ql  update_all_ports_ql
}
