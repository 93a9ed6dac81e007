//! Queries for the status and the configuration of channels and associations, with their replies.

import "../common/session.tlv"
import "identifiers.tlv"

/// Asks for a receive channel of a port.
message macsec_get_rx_sci_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sci    sci
}

/// Answers `macsec_get_rx_sci_msg_message` with the identifier of the channel.
message macsec_rx_sci_msg_message { app_sess_hdr session  ifid interface  macsec_port port  macsec_sci sci }

/// Asks for the status of a receive channel.
message macsec_get_rx_sc_status_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sci    sci
}

/// Asks for the configuration of a receive channel.
message macsec_get_rx_sc_config_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sci    sci
}

/// Configuration of a receive channel.
struct macsec_rx_sc_config = 1690 {
    zel_boolean  flag
}

/// Answers with the configuration of a receive channel.
message macsec_rx_sc_config_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_rx_sc_config  rx_sc_config
}

/// Status of a receive channel.
struct macsec_rx_sc_status = 1691 {
    zel_boolean  flag
    uint32       value_1
    uint32       value_2
    uint32       value_3
}

/// Answers with the status of a receive channel.
message macsec_rx_sc_status_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_sci           sci
    macsec_rx_sc_status  rx_sc_status
}

/// Asks for the configuration of the transmit channel.
message macsec_get_tx_sc_config_msg_message { app_sess_hdr session  ifid interface  macsec_port port }

/// Configuration of the transmit channel.
struct macsec_tx_sc_config = 1692 {
    zel_boolean  flag
}

/// Answers with the configuration of the transmit channel.
message macsec_tx_sc_config_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_tx_sc_config  tx_sc_config
}

/// Asks for the status of the transmit channel.
message macsec_get_tx_sc_status_msg_message { app_sess_hdr session  ifid interface  macsec_port port }

/// Status of the transmit channel.
struct macsec_tx_sc_status = 1693 {
    zel_boolean  flag
    uint16       value_1
    uint16       value_2
    uint32       value_3
    uint32       value_4
    uint32       value_5
}

/// Answers with the identifier and the status of the transmit channel.
message macsec_tx_sc_status_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_sci           sci
    macsec_tx_sc_status  tx_sc_status
}

/// Asks for the status of a receive association.
message macsec_get_rx_sa_status_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sci    sci
    macsec_sa_an  sa_an
}

/// Status of a receive association.
struct macsec_rx_sa_status = 1694 {
    zel_boolean  flag
    uint32       value_1
    uint32       value_2
    uint32       value_3
    uint32       value_4
    uint32       value_5
}

/// Answers with the status of a receive association.
message macsec_rx_sa_status_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_sci           sci
    macsec_sa_an         sa_an
    macsec_rx_sa_status  rx_sa_status
}

/// Asks for the configuration of a receive association.
message macsec_get_rx_sa_config_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sci    sci
    macsec_sa_an  sa_an
}

bytes macsec_rx_sa_config_sak_key_array[32]

/// Configuration of a receive association, its key included.
struct macsec_rx_sa_config = 1695 {
    uint32                             value
    /// The secure association key: up to 32 bytes.
    macsec_rx_sa_config_sak_key_array  sak_key
    zel_boolean                        flag
}

/// Answers with the configuration of a receive association.
message macsec_rx_sa_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_rx_sa_config  rx_sa_config
}

/// Asks for the status of a transmit association.
message macsec_get_tx_sa_status_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sa_an  sa_an
}

/// Asks for the configuration of a transmit association.
message macsec_get_tx_sa_config_msg_message {
    app_sess_hdr  session
    ifid          interface
    macsec_port   port
    macsec_sa_an  sa_an
}

bytes macsec_tx_sa_config_sak_key_array[32]

/// Configuration of a transmit association, its key included.
struct macsec_tx_sa_config = 1696 {
    uint32                             value
    zel_boolean                        flag_1
    /// The secure association key: up to 32 bytes.
    macsec_tx_sa_config_sak_key_array  sak_key
    zel_boolean                        flag_2
}

/// Answers with the configuration of a transmit association.
message macsec_tx_sa_config_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_tx_sa_config  tx_sa_config
}

/// Status of a transmit association.
struct macsec_tx_sa_status = 1697 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
    uint32  value_4
}

/// Answers with the status of a transmit association.
message macsec_tx_sa_status_msg_message {
    app_sess_hdr         session
    ifid                 interface
    macsec_port          port
    macsec_sa_an         sa_an
    macsec_tx_sa_status  tx_sa_status
}
