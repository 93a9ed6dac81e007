//! Generic reports, show and clear requests, and statistics that travel together.

import "../common/session.tlv"
import "statistics.tlv"

/// Text of a free-form report, behind a number.
struct kavu_ethernet_generic_report = 1284 {
    uint8        value
    bytes[1900]  buffer
}

/// Free-form report of Ethernet; has neither session header nor interface identifier.
message zel_kavu_ethernet_generic_report_message { kavu_ethernet_generic_report generic_report }

/// Type of a show request for an interface.
enum kavu_ethernet_show_if_req_type = 1290

/// Request to show an interface.
message zel_kavu_ethernet_show_if_req_message {
    app_sess_hdr                    session
    ifid                            interface
    kavu_ethernet_show_if_req_type  show_if_req_type
}

/// Type of a clear request for an interface.
enum kavu_ethernet_clear_if_req_type = 1291

/// Request to clear an interface.
message zel_kavu_ethernet_clear_if_req_message {
    app_sess_hdr                     session
    ifid                             interface
    kavu_ethernet_clear_if_req_type  clear_if_req_type
}

/// General and IEEE 802.3 statistics of a port.
message zel_kavu_ethernet_stats_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_ether_stats              stats
    zel_ether_dot3_stats_bundle  dot3_stats_bundle
}

/// General, IEEE 802.3 and extended statistics of a port.
message zel_kavu_ethernet_ext_stats_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_ether_stats              stats
    zel_ether_dot3_stats_bundle  dot3_stats_bundle
    zel_ether_ext_stats          ext_stats
}
