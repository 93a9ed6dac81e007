//! Frame capture and the power-on self test (POST).

import "../common/session.tlv"
import "identifiers.tlv"
import "receive.tlv"
import "secy.tlv"
import "transmit.tlv"

/// Capture of frames in one direction.
struct macsec_frame_capture = 1698 {
    macsec_direction  direction
    zel_boolean       flag
}

/// Sets frame capture on a port.
message macsec_frame_capture_msg_message {
    app_sess_hdr          session
    ifid                  interface
    macsec_frame_capture  frame_capture
}

/// Prepares a self-test step: the SecY, the channel and both associations that it runs with.
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

bytes macsec_post_capture_data_capture_data_array[128]

/// Up to 128 bytes of a captured frame.
struct macsec_post_capture_data = 1756 {
    uint16                                       value
    macsec_post_capture_data_capture_data_array  capture_data
}

/// Carries the frame bytes of the self test.
message macsec_post_pattern_msg_message {
    app_sess_hdr              session
    ifid                      interface
    macsec_post_capture_data  post_capture_data
}

/// Verifies a self-test step, whose index stands in front of the session header as nowhere else.
message macsec_after_post_verify_msg_message {
    macsec_post_index  post_index
    app_sess_hdr       session
    ifid               interface
    macsec_sci         sci
    macsec_sa_an       sa_an
    macsec_secy_vport  secy_vport
}
