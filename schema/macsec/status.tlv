//! Status and configuration of SCs and SAs: requests and answers.

import "../common/session.tlv"
import "identifiers.tlv"

/// Request for the identifier of a receive SC.
message macsec_get_rx_sci_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sci    sci
}

/// Answer to macsec_get_rx_sci_msg_message.
message macsec_rx_sci_msg_message { app_sess_hdr session  ifid interface  macsec_port port  macsec_sci sci }

/// Request for the status of a receive SC.
message macsec_get_rx_sc_status_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sci    sci
}

/// Request for the configuration of a receive SC.
message macsec_get_rx_sc_config_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sci    sci
}

/// Configuration of a receive SC, a flag.
struct macsec_rx_sc_config = 1690 {
    zel_boolean  flag
}

/// Answer to macsec_get_rx_sc_config_msg_message.
message macsec_rx_sc_config_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_rx_sc_config  rx_sc_config
}

/// Status of a receive SC.
struct macsec_rx_sc_status = 1691 {
    zel_boolean  flag
    uint32       value_1
    uint32       value_2
    uint32       value_3
}

/// Answer to macsec_get_rx_sc_status_msg_message.
message macsec_rx_sc_status_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_sci           sci
    macsec_rx_sc_status  rx_sc_status
}

/// Request for the configuration of a transmit SC.
message macsec_get_tx_sc_config_msg_message { app_sess_hdr session  ifid interface  macsec_port port }

/// Configuration of a transmit SC, a flag.
struct macsec_tx_sc_config = 1692 {
    zel_boolean  flag
}

/// Answer to macsec_get_tx_sc_config_msg_message.
message macsec_tx_sc_config_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_tx_sc_config  tx_sc_config
}

/// Request for the status of a transmit SC.
message macsec_get_tx_sc_status_msg_message { app_sess_hdr session  ifid interface  macsec_port port }

/// Status of a transmit SC.
struct macsec_tx_sc_status = 1693 {
    zel_boolean  flag
    uint16       value_1
    uint16       value_2
    uint32       value_3
    uint32       value_4
    uint32       value_5
}

/// Answer to macsec_get_tx_sc_status_msg_message.
message macsec_tx_sc_status_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_sci           sci
    macsec_tx_sc_status  tx_sc_status
}

/// Request for the status of a receive SA.
message macsec_get_rx_sa_status_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sci    sci
    macsec_sa_an  sa_an
}

/// Status of a receive SA.
struct macsec_rx_sa_status = 1694 {
    zel_boolean  flag
    uint32       value_1
    uint32       value_2
    uint32       value_3
    uint32       value_4
    uint32       value_5
}

/// Answer to macsec_get_rx_sa_status_msg_message.
message macsec_rx_sa_status_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_sci           sci
    macsec_sa_an         sa_an
    macsec_rx_sa_status  rx_sa_status
}

/// Request for the configuration of a receive SA.
message macsec_get_rx_sa_config_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sci    sci
    macsec_sa_an  sa_an
}

/// Configuration of a receive SA, its key included.
struct macsec_rx_sa_config = 1695 {
    uint32       value
    /// Secure association key, of which a 128-bit cipher uses 16 of the 32 bytes.
    bytes[32]    sak_key
    zel_boolean  flag
}

/// Answer to macsec_get_rx_sa_config_msg_message.
message macsec_rx_sa_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_rx_sa_config  rx_sa_config
}

/// Request for the status of a transmit SA.
message macsec_get_tx_sa_status_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sa_an  sa_an
}

/// Request for the configuration of a transmit SA.
message macsec_get_tx_sa_config_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sa_an  sa_an
}

/// Configuration of a transmit SA, its key included.
struct macsec_tx_sa_config = 1696 {
    uint32       value
    zel_boolean  flag_1
    /// Secure association key, of which a 128-bit cipher uses 16 of the 32 bytes.
    bytes[32]    sak_key
    zel_boolean  flag_2
}

/// Answer to macsec_get_tx_sa_config_msg_message.
message macsec_tx_sa_config_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_tx_sa_config  tx_sa_config
}

/// Status of a transmit SA.
struct macsec_tx_sa_status = 1697 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
    uint32  value_4
}

/// Answer to macsec_get_tx_sa_status_msg_message.
message macsec_tx_sa_status_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_sa_an         sa_an
    macsec_tx_sa_status  tx_sa_status
}
