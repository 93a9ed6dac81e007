//! BITS framing and GPS settings.

import "../common/session.tlv"
import "interface.tlv"
import "mode.tlv"

/// Line code of BITS framing.
enum zel_netsync_intf_linecode = 1325

/// Line build-out of BITS framing.
enum zel_netsync_intf_lbo = 1326

/// Mode of BITS.
enum zel_netsync_rpbits_mode = 1327

/// Impedance of BITS framing.
enum zel_netsync_intf_impedance = 1328

/// Line code, line build-out and impedance of BITS, with signal type, network option and mode.
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

/// Configuration of BITS framing.
message zel_netsync_rpbits_cfg_message { netsync_rpbits_cfg rpbits_cfg }

/// Mode of GPS.
enum zel_netsync_gps_mode = 1330

/// Signal type and mode of GPS, with a number and two flags.
struct netsync_rspgps_cfg = 1331 {
    uint16                value
    zel_boolean           flag_1
    zel_netsync_intf_sig  signal_type
    zel_boolean           flag_2
    zel_netsync_gps_mode  gps_mode
}

/// Configuration of GPS.
message zel_netsync_rspgps_cfg_message { netsync_rspgps_cfg rspgps_cfg }
