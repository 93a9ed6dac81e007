//! Firmware upgrade of a cellular card: what the host sends to the card and what the card sends back.

/// Type of a firmware.
enum zel_cwan_mgmt_fw_type = 1575

bytes zel_cwan_mgmt_fw_info_fw_name_array[80]

/// Firmware information; both directions carry it.
struct zel_cwan_mgmt_fw_info = 1576 {
    zel_cwan_mgmt_fw_type                type
    uint32                               value_1
    uint32                               value_2
    zel_cwan_mgmt_fw_info_fw_name_array  fw_name
}

bytes zel_cwan_mgmt_fw_data_data_array[800]

/// Block of firmware data, up to 800 bytes.
struct zel_cwan_mgmt_fw_data = 1577 {
    uint32                            value_1
    uint32                            value_2
    zel_cwan_mgmt_fw_data_data_array  data
}

/// Kind of a host to card exchange.
enum zel_cwan_fw_upgrade_host_msg_type = 1574

/// Body of a host to card exchange: firmware information, a data block, or one byte where kind 0 has neither;
/// above 3 there is none.
union cwan_fw_upgrade_host_msg_type_union by zel_cwan_fw_upgrade_host_msg_type type {
       0: uint8                  value
    1, 3: zel_cwan_mgmt_fw_info  fw_info
       2: zel_cwan_mgmt_fw_data  fw_data
}

/// Exchange of a firmware upgrade, host to card.
struct cwan_fw_upgrade_host_msg = 1578 {
    zel_cwan_fw_upgrade_host_msg_type    type
    cwan_fw_upgrade_host_msg_type_union  body
}

bytes zel_cwan_fw_upgrade_status_status_string_array[80]

/// Status of an upgrade, as a number and as a text.
struct zel_cwan_fw_upgrade_status = 1587 {
    uint32                                          value
    zel_cwan_fw_upgrade_status_status_string_array  status_string
}

bytes zel_cwan_fw_pkg_info_pkg_buf_array[800]

/// Firmware package information, up to 800 bytes.
struct zel_cwan_fw_pkg_info = 1588 {
    /// No codec counts the bytes by it.
    uint32                              value
    zel_cwan_fw_pkg_info_pkg_buf_array  pkg_buf
}

bytes zel_cwan_fw_status_msg_msg_array[255]

/// Firmware status as a text alone.
struct zel_cwan_fw_status_msg = 1589 {
    zel_cwan_fw_status_msg_msg_array  msg
}

/// Kind of a card to host exchange.
enum zel_cwan_fw_upgrade_card_msg_type = 1586

/// Body of a card to host exchange. One byte stands in for kinds without a record; above 5 there is none.
union cwan_fw_upgrade_card_msg_type_union by zel_cwan_fw_upgrade_card_msg_type type {
    0, 4: uint8                       value
       1: zel_cwan_fw_upgrade_status  status
       2: zel_cwan_fw_pkg_info        pkg_info
       3: zel_cwan_mgmt_fw_info       fw_info
       5: zel_cwan_fw_status_msg      status_msg
}

/// Exchange of a firmware upgrade, card to host.
struct cwan_fw_upgrade_card_msg = 1590 {
    zel_cwan_fw_upgrade_card_msg_type    type
    cwan_fw_upgrade_card_msg_type_union  body
}
