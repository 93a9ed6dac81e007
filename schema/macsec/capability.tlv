//! Capabilities of the engine.

import "../common/session.tlv"
import "identifiers.tlv"

/// Request for the capabilities; has no body.
message macsec_capability_get_msg_message { app_sess_hdr session  ifid interface }

/// Capabilities: seven flags, a cipher suite and seven numbers.
struct macsec_capability_resp = 1650 {
    zel_boolean             flag_1
    zel_boolean             flag_2
    zel_boolean             flag_3
    zel_boolean             flag_4
    zel_boolean             flag_5
    zel_boolean             flag_6
    zel_boolean             flag_7
    macsec_xe_cipher_suite  cipher_suite
    uint32                  value_1
    uint32                  value_2
    uint32                  value_3
    uint32                  value_4
    uint32                  value_5
    uint32                  value_6
    uint32                  value_7
}

/// Answer to macsec_capability_get_msg_message.
message macsec_capability_resp_msg_message {
    app_sess_hdr            session
    ifid                    interface
    macsec_capability_resp  capability_resp
}
