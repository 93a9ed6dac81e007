//! Optics of a port: ITU channel, SFPs, transceivers of other makers, transport mode and DWDM G.709.

import "../common/session.tlv"

/// ITU channel of an XFP.
struct zel_xfp_itu_chan = 1142 {
    uint8  channel
}

/// ITU channel to set on the XFP of a port.
message ether_set_xfp_itu_chan_message { app_sess_hdr session  ifid interface  zel_xfp_itu_chan xfp_itu_chan }

/// What an SFP notification says.
enum zel_notify_ssfp = 1474

/// SFP notification of a port.
message notify_ssfp_message { app_sess_hdr session  ifid interface  zel_notify_ssfp notify_ssfp }

/// Information on transceivers of other makers.
enum zel_3rd_party_xcvr_info = 1646

/// Admission of transceivers of other makers; names no interface.
message allow_third_party_xcvr_message { app_sess_hdr session  zel_3rd_party_xcvr_info third_party_xcvr_info }

/// Transport mode of a port.
struct zel_ether_transport_mode = 1747 {
    uint8  mode
}

/// Transport mode to set on a port.
message ether_set_transport_mode_message {
    app_sess_hdr              session
    ifid                      interface
    zel_ether_transport_mode  transport_mode
}

/// G.709 mode of a DWDM controller: numbers, flags, and a buffer of bytes.
struct zel_ether_dwdm_g709_mode = 1748 {
    uint8        value_1
    zel_boolean  flag_1
    uint8        value_2
    uint8        value_3
    uint8        value_4
    uint8        value_5
    uint8        value_6
    zel_boolean  flag_2
    bytes[129]   buffer as zel_ether_dwdm_g709_mode_buf_ptr_array
    zel_boolean  flag_3
    zel_boolean  flag_4
    zel_boolean  flag_5
    uint8        value_7
    uint64       value_8
    uint8        value_9
    uint32       value_10
    zel_boolean  flag_6
}

/// G.709 mode to set on a DWDM controller.
message ether_set_dwdm_ctrl_g709_mode_message {
    app_sess_hdr              session
    ifid                      interface
    zel_ether_dwdm_g709_mode  dwdm_g709_mode
}
