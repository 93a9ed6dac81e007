//! Frame capture and the power-on self test (POST).

import "../common/session.tlv"
import "identifiers.tlv"
import "receive.tlv"
import "secy.tlv"
import "transmit.tlv"

/// Frame capture: its direction and a flag.
struct macsec_frame_capture = 1698 {
    macsec_direction  direction
    zel_boolean       flag
}

/// Request to set the frame capture of a port.
message macsec_frame_capture_msg_message {
    app_sess_hdr          session
    ifid                  interface
    macsec_frame_capture  frame_capture
}

/// Request of the self test for one step: SecY, virtual port, SC and both SAs.
message macsec_pre_post_request_msg_message {
    app_sess_hdr            session
    ifid                    interface
    macsec_post_index       post_index
    macsec_set_secy_config  set_secy_config
    macsec_secy_vport       secy_vport
    macsec_sci              sci
    macsec_create_rx_sa     create_rx_sa
    macsec_install_tx_sa    install_tx_sa
}

/// Bytes of a captured frame, behind a number.
struct macsec_post_capture_data = 1756 {
    /// Separate from the array's count.
    uint16      value
    bytes[128]  capture_data
}

/// Pattern of the self test, as bytes of a captured frame.
message macsec_post_pattern_msg_message {
    app_sess_hdr              session
    ifid                      interface
    macsec_post_capture_data  post_capture_data
}

/// Verification after the self test; the index of the step stands in front of the session header, as in no
/// other message.
message macsec_after_post_verify_msg_message {
    macsec_post_index  post_index
    app_sess_hdr       session
    ifid               interface
    macsec_sci         sci
    macsec_sa_an       sa_an
    macsec_secy_vport  secy_vport
}
