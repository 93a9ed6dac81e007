//! Firmware upgrade of a cellular card: what the host sends to the card and what the card sends back.

/// Type of a firmware.
enum zel_cwan_mgmt_fw_type = 1575

/// Firmware information; both directions carry it.
struct zel_cwan_mgmt_fw_info = 1576 {
    zel_cwan_mgmt_fw_type  type
    uint32                 value_1
    uint32                 value_2
    bytes[80]              fw_name
}

/// Block of firmware data, up to 800 bytes.
struct zel_cwan_mgmt_fw_data = 1577 {
    uint32      value_1
    uint32      value_2
    bytes[800]  data
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

/// Status of an upgrade, as a number and as a text.
struct zel_cwan_fw_upgrade_status = 1587 {
    uint32     value
    bytes[80]  status_string
}

/// Firmware package information, up to 800 bytes.
struct zel_cwan_fw_pkg_info = 1588 {
    /// No codec counts the bytes by it.
    uint32      value
    bytes[800]  pkg_buf
}

/// Firmware status as a text alone.
struct zel_cwan_fw_status_msg = 1589 {
    bytes[255]  msg
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
