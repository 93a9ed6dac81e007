//! How the engine answers a request: a result or an acknowledgement.

import "../common/session.tlv"

enum macsec_rtn_type = 1660

/// Result of a request.
struct macsec_rtn_result = 1661 {
    macsec_rtn_type  type
    uint64           value
    zel_boolean      flag
}

/// Carries the result of a request.
message macsec_rtn_resp_msg_message { app_sess_hdr session  ifid interface  macsec_rtn_result rtn_result }

/// Acknowledges a request.
message macsec_ack_msg_message { app_sess_hdr session  ifid interface  zel_boolean flag }
