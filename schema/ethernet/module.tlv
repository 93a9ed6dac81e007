//! What concerns the port's module: version, activation, crypto heartbeat, USB modem and switchover.

import "../common/session.tlv"

enum zel_im_ver = 1151

/// Version of the module.
enum zel_im_version = 1143

/// Carries the version of the module.
message ether_im_ver_message { app_sess_hdr session  ifid interface  zel_im_version im_version }

/// Whether the crypto heartbeat is supported.
struct hb_support_cfg = 1144 {
    zel_boolean  hb_support
}

/// Configures the crypto heartbeat.
message ether_crypto_hb_message { app_sess_hdr session  ifid interface  hb_support_cfg hb_support_cfg }

/// Eleven 32-bit counters of a USB modem.
struct zel_usb_modem_stats_resp = 1707 {
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

/// Answers `usb_modem_stats_req_message` with the modem's counters.
message usb_modem_stats_resp_message {
    app_sess_hdr              session
    ifid                      interface
    zel_usb_modem_stats_resp  usb_modem_stats_resp
}

enum zel_usb_modem_stats_req = 1706

/// Asks for the counters of a USB modem; names no interface.
message usb_modem_stats_req_message { app_sess_hdr session  zel_usb_modem_stats_req usb_modem_stats_req }

/// Delayed switchover of a module; needs no body.
message etherim_delayed_swover_message { app_sess_hdr session  ifid interface }

enum ether_slotd_rpx_im_activate = 1726

/// Carries the activation of a module.
message ether_slotd_rpx_im_activate_message {
    app_sess_hdr                 session
    ifid                         interface
    ether_slotd_rpx_im_activate  slotd_rpx_im_activate
}
