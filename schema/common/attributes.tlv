//! Routing instances, redundancy groups, counters and times, and enumerations that no type of any family
//! holds.

import "strings.tlv"

/// Routing instance: two numbers and its name.
struct vrf_info = 1020 {
    uint32    value_1
    uint16    value_2
    vrf_name  name
}

/// Redundancy group: a number and its name.
struct rg_info_new = 1022 {
    uint32   value
    rg_name  name
}

/// Pair of 64-bit statistics counters.
struct stat_counters = 1023 {
    uint64  counter_1
    uint64  counter_2
}

struct zel_binidx = 1717 {  // tlvc: W003 because nothing tells what it is for
    uint32  value_1
    uint32  value_2
}

/// Time, as up to nine bytes.
struct time_second = 1724 {
    bytes[9]  time
}

/// Handle of an interface.
enum if_handle = 1005  // tlvc: W002 because no type of any family holds it

/// Index of an access list.
enum acl_index = 1011  // tlvc: W002 because no type of any family holds it

/// Direction of packets.
enum pak_direction = 1024  // tlvc: W002 because no type of any family holds it

/// Configuration action.
enum cfg_action = 1027  // tlvc: W002 because no type of any family holds it

/// IP protocol.
enum ip_proto = 1028  // tlvc: W002 because no type of any family holds it

/// Protocol.
enum proto = 1029  // tlvc: W002 because no type of any family holds it

/// Protocol of layers 4 to 7.
enum proto_l4_l7 = 1030  // tlvc: W002 because no type of any family holds it

/// Type of a link.
enum link_type = 1031  // tlvc: W002 because no type of any family holds it

/// Type of an encapsulation.
enum encap_type = 1032  // tlvc: W002 because no type of any family holds it

/// Direction of a statistic.
enum stat_direction = 1033  // tlvc: W002 because no type of any family holds it

enum dov_position = 1034  // tlvc: W002, W003 because no type of any family holds it, and nothing tells what it is for
enum arch_type = 1035  // tlvc: W002, W003 because no type of any family holds it, and nothing tells what it is for

/// Action on an object.
enum obm_obj_action = 1036  // tlvc: W002 because no type of any family holds it

/// Status of an object.
enum object_status = 1037  // tlvc: W002 because no type of any family holds it

/// State of a channel.
enum channel_state = 1038  // tlvc: W002 because no type of any family holds it

/// Update action.
enum upd_action = 1718  // tlvc: W002 because no type of any family holds it

/// State of a batch.
enum batch_state = 1728  // tlvc: W002 because no type of any family holds it
