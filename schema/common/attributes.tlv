//! Small shared records, and the enumerations for handles, protocols, directions, actions and states. The
//! library carries every value of these enumerations as a number and checks none.

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

/// A pair of 64-bit statistics counters.
struct stat_counters = 1023 {
    uint64  counter_1
    uint64  counter_2
}

struct zel_binidx = 1717 {
    uint32  value_1
    uint32  value_2
}

bytes time_second_time_array[9]

/// A time as up to nine bytes.
struct time_second = 1724 {
    time_second_time_array  time
}

enum if_handle = 1005
enum acl_index = 1011
enum pak_direction = 1024
enum cfg_action = 1027
enum ip_proto = 1028
enum proto = 1029
enum proto_l4_l7 = 1030
enum link_type = 1031
enum encap_type = 1032
enum stat_direction = 1033
enum dov_position = 1034
enum arch_type = 1035
enum obm_obj_action = 1036
enum object_status = 1037
enum channel_state = 1038
enum upd_action = 1718
enum batch_state = 1728
