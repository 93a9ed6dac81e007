//! Module of a port: version, activation, crypto heartbeat, USB modem and switchover.

import "../common/session.tlv"

/// Version of the module as well; no type contains it, and the message has zel_im_version.
enum zel_im_ver = 1151  // tlvc: W002 because no type of any family holds it

/// Version of the module.
enum zel_im_version = 1143

/// Version of the module that a port is on.
message ether_im_ver_message { app_sess_hdr session  ifid interface  zel_im_version im_version }

/// Whether the crypto heartbeat is supported.
struct hb_support_cfg = 1144 {
    zel_boolean  hb_support
}

/// Crypto heartbeat configuration of a port.
message ether_crypto_hb_message { app_sess_hdr session  ifid interface  hb_support_cfg hb_support_cfg }

/// Statistics of a USB modem: eleven 32-bit numbers.
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

/// Answer to usb_modem_stats_req_message.
message usb_modem_stats_resp_message {
    app_sess_hdr              session
    ifid                      interface
    zel_usb_modem_stats_resp  usb_modem_stats_resp
}

/// What a request for USB modem statistics consists of, as a number.
enum zel_usb_modem_stats_req = 1706

/// Request for the statistics of a USB modem; names no interface.
message usb_modem_stats_req_message { app_sess_hdr session  zel_usb_modem_stats_req usb_modem_stats_req }

/// Delayed switchover of a module; has no body.
message etherim_delayed_swover_message { app_sess_hdr session  ifid interface }

/// Activation of a module, as a number.
enum ether_slotd_rpx_im_activate = 1726

/// Activation of the module that a port is on.
message ether_slotd_rpx_im_activate_message {
    app_sess_hdr                 session
    ifid                         interface
    ether_slotd_rpx_im_activate  slotd_rpx_im_activate
}
