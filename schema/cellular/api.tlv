//! Envelope of the modem API.

import "../common/session.tlv"
import "get.tlv"
import "get_response.tlv"
import "notify.tlv"
import "set.tlv"
import "set_response.tlv"

/// Kind of exchange in an envelope of the modem API.
enum zel_cwan_api_type = 1572

/// Exchange of the kind that stands before it; above 4 there is none.
union cwan_api_type_union by zel_cwan_api_type type {
    0: zel_cwan_msg_notify_msg    notify
    1: zel_cwan_msg_get_msg       get
    2: zel_cwan_msg_get_resp_msg  get_resp
    3: zel_cwan_msg_set_msg       set
    4: zel_cwan_msg_set_resp_msg  set_resp
}

/// One notification, request or response of the modem API.
struct cwan_api = 1573 {
    zel_cwan_api_type    type
    cwan_api_type_union  body
}

/// Message of the modem API, notification, request or response.
message api_message { app_sess_hdr session  ifid interface  cwan_api api }
