//! Cross-connections between time slots and DS0 dumps of T1/E1 modules. The types mirror those of the voice
//! ports, with tags of their own.

import "../common/session.tlv"

/// Pair of a cross-connection between time slots.
struct zel_conn_pair = 1237 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
}

/// A single pair, as in the request of the voice ports.
array zel_tdm_conn_req_conn_pair_array of zel_conn_pair[1]

/// Cross-connection of time slots to set up.
struct zel_tdm_conn_req = 1238 {
    uint16                            value_1
    uint16                            value_2
    uint16                            value_3
    zel_tdm_conn_req_conn_pair_array  conn_pair
}

/// Result of setting up a cross-connection, with its one pair outside any array.
struct zel_tdm_conn_resp = 1239 {
    uint16         value_1
    uint16         value_2
    zel_conn_pair  conn_pair
    uint16         value_3
    uint16         value_4
    uint16         value_5
}

/// Request to set up a cross-connection of time slots.
message tdm_conn_req_message { app_sess_hdr session  ifid interface  zel_tdm_conn_req tdm_conn_req }

/// Answer to tdm_conn_req_message.
message tdm_conn_resp_message { app_sess_hdr session  ifid interface  zel_tdm_conn_resp tdm_conn_resp }

/// Dump of a time slot to take, and its destination as text.
struct zel_ds0_dump_req = 1240 {
    uint16      value_1
    uint16      value_2
    uint16      value_3
    uint16      value_4
    uint16      value_5
    uint16      value_6
    bytes[335]  destination
}

/// Result of the dump of a time slot, in five numbers.
struct zel_ds0_dump_resp = 1244 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
    uint16  value_5
}

/// Request to capture a time slot's contents.
message ds0_dump_req_message { app_sess_hdr session  ifid interface  zel_ds0_dump_req ds0_dump_req }

/// Answer to ds0_dump_req_message.
message ds0_dump_resp_message { app_sess_hdr session  ifid interface  zel_ds0_dump_resp ds0_dump_resp }
