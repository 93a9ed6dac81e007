//! Interfaces that take part in clock distribution, and their signal types.

enum zel_netsync_intf = 1307
enum zel_netsync_intf_sig = 1308

/// An interface and its signal type.
struct zelnetsync_intf = 1312 {
    uint16                value_1
    uint16                value_2
    uint16                value_3
    zel_netsync_intf      intf
    zel_netsync_intf_sig  signal_type
}
