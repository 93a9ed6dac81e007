//! Hardware inventory of the engine.

import "../common/session.tlv"

/// Request for the hardware inventory; has no body.
message macsec_get_hw_inventory_msg_message { app_sess_hdr session  ifid interface }

/// Two SA counters.
struct macsec_sa_counters = 1731 {
    uint32  counter_1
    uint32  counter_2
}

/// Eleven HMAC counters.
struct macsec_hmac_counters = 1732 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
    uint32  counter_5
    uint32  counter_6
    uint32  counter_7
    uint32  counter_8
    uint32  counter_9
    uint32  counter_10
    uint32  counter_11
}

/// Eleven LMAC counters.
struct macsec_lmac_counters = 1733 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
    uint32  counter_5
    uint32  counter_6
    uint32  counter_7
    uint32  counter_8
    uint32  counter_9
    uint32  counter_10
    uint32  counter_11
}

/// Answer to macsec_get_hw_inventory_msg_message.
message macsec_get_hw_inventory_rsp_msg_message {
    app_sess_hdr          session
    ifid                  interface
    macsec_sa_counters    sa_counters
    macsec_hmac_counters  hmac_counters
    macsec_lmac_counters  lmac_counters
}
