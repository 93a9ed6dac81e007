//! Results and acknowledgements.

import "../common/session.tlv"

/// Type of a result.
enum macsec_rtn_type = 1660

/// Result: its type, a number and a flag.
struct macsec_rtn_result = 1661 {
    macsec_rtn_type  type
    uint64           value
    zel_boolean      flag
}

/// Answer with a result.
message macsec_rtn_resp_msg_message { app_sess_hdr session  ifid interface  macsec_rtn_result rtn_result }

/// Acknowledgement, as a flag.
message macsec_ack_msg_message { app_sess_hdr session  ifid interface  zel_boolean flag }
