//! Network synchronization messages: frequency and time distribution between the control plane and the
//! modules and timing cards. Some leave out the session header, the interface identifier, or both.

// This file holds BITS framing and GPS settings.

import "../common/session.tlv"
import "interface.tlv"
import "mode.tlv"

enum zel_netsync_intf_linecode = 1325
enum zel_netsync_intf_lbo = 1326
enum zel_netsync_rpbits_mode = 1327
enum zel_netsync_intf_impedance = 1328

/// BITS framing: line code, line build-out and impedance, with signal type and network option.
struct netsync_rpbits_cfg = 1329 {
    uint16                      value
    zel_boolean                 flag
    zel_netsync_intf_sig        signal_type
    zel_netsync_net_option      net_option
    zel_netsync_intf_linecode   line_code
    zel_netsync_intf_lbo        line_build_out
    zel_netsync_rpbits_mode     mode
    zel_netsync_intf_impedance  impedance
}

enum zel_netsync_gps_mode = 1330

/// Configures BITS framing. The body alone, without session header.
message zel_netsync_rpbits_cfg_message { netsync_rpbits_cfg rpbits_cfg }

/// GPS settings.
struct netsync_rspgps_cfg = 1331 {
    uint16                value
    zel_boolean           flag_1
    zel_netsync_intf_sig  signal_type
    zel_boolean           flag_2
    zel_netsync_gps_mode  gps_mode
}

/// Configures GPS. The body alone, without session header.
message zel_netsync_rspgps_cfg_message { netsync_rspgps_cfg rspgps_cfg }
