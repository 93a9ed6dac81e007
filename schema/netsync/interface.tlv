//! Interfaces of clock distribution and their signal types.

/// Interface in network synchronization.
enum zel_netsync_intf = 1307

/// Signal type of an interface.
enum zel_netsync_intf_sig = 1308

/// Interface and its signal type, behind three numbers.
struct zelnetsync_intf = 1312 {
    uint16                value_1
    uint16                value_2
    uint16                value_3
    zel_netsync_intf      intf
    zel_netsync_intf_sig  signal_type
}
