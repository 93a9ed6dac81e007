//! Cross-connections between time slots and DS0 dumps of T1/E1 modules. The types mirror those of the voice
//! ports, with tags of their own.

import "../common/session.tlv"

/// One pair of a connection between time slots.
struct zel_conn_pair = 1237 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
}

/// Room for one pair, on purpose, although its count could say more.
array zel_tdm_conn_req_conn_pair_array of zel_conn_pair[1]

/// Cross-connection of time slots to set up.
struct zel_tdm_conn_req = 1238 {
    uint16                            value_1
    uint16                            value_2
    uint16                            value_3
    zel_tdm_conn_req_conn_pair_array  conn_pair
}

/// Answer to a connection set-up. It holds its one pair directly, not in an array.
struct zel_tdm_conn_resp = 1239 {
    uint16         value_1
    uint16         value_2
    zel_conn_pair  conn_pair
    uint16         value_3
    uint16         value_4
    uint16         value_5
}

/// Request to the module to set up a cross-connection of time slots.
message tdm_conn_req_message { app_sess_hdr session  ifid interface  zel_tdm_conn_req tdm_conn_req }

/// The module's answer to tdm_conn_req_message.
message tdm_conn_resp_message { app_sess_hdr session  ifid interface  zel_tdm_conn_resp tdm_conn_resp }

/// Where a DS0 dump goes, as text.
bytes zel_ds0_dump_req_destination_array[335]

/// DS0 dump to take, and its destination.
struct zel_ds0_dump_req = 1240 {
    uint16                              value_1
    uint16                              value_2
    uint16                              value_3
    uint16                              value_4
    uint16                              value_5
    uint16                              value_6
    zel_ds0_dump_req_destination_array  destination
}

/// Answer to a DS0 dump request, in five numbers.
struct zel_ds0_dump_resp = 1244 {
    uint16  value_1
    uint16  value_2
    uint16  value_3
    uint16  value_4
    uint16  value_5
}

/// Request to the module to capture the contents of a time slot.
message ds0_dump_req_message { app_sess_hdr session  ifid interface  zel_ds0_dump_req ds0_dump_req }

/// The module's answer to ds0_dump_req_message.
message ds0_dump_resp_message { app_sess_hdr session  ifid interface  zel_ds0_dump_resp ds0_dump_resp }
