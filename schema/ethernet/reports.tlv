//! Free-form reports, show and clear requests, and statistics that travel together.

import "../common/session.tlv"
import "statistics.tlv"

bytes kavu_ethernet_generic_report_buffer_array[1900]

/// A free-form report of up to 1,900 bytes.
struct kavu_ethernet_generic_report = 1284 {
    uint8                                      value
    kavu_ethernet_generic_report_buffer_array  buffer
}

/// Carries a free-form report alone: no session header and no interface.
message zel_kavu_ethernet_generic_report_message { kavu_ethernet_generic_report generic_report }

enum kavu_ethernet_show_if_req_type = 1290

/// Requests a show of an interface.
message zel_kavu_ethernet_show_if_req_message {
    app_sess_hdr                    session
    ifid                            interface
    kavu_ethernet_show_if_req_type  show_if_req_type
}

enum kavu_ethernet_clear_if_req_type = 1291

/// Requests a clear on an interface.
message zel_kavu_ethernet_clear_if_req_message {
    app_sess_hdr                     session
    ifid                             interface
    kavu_ethernet_clear_if_req_type  clear_if_req_type
}

/// Carries the general and the IEEE 802.3 statistics of a port.
message zel_kavu_ethernet_stats_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_ether_stats              stats
    zel_ether_dot3_stats_bundle  dot3_stats_bundle
}

/// Carries the general, the IEEE 802.3 and the extended statistics of a port.
message zel_kavu_ethernet_ext_stats_message {
    app_sess_hdr                 session
    ifid                         interface
    zel_ether_stats              stats
    zel_ether_dot3_stats_bundle  dot3_stats_bundle
    zel_ether_ext_stats          ext_stats
}
