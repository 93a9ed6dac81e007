//! What a cellular modem says about itself: identity and versions, system status, and its current status with
//! the ports it offers.

import "status.tlv"

bytes zel_cwan_api_imsi_imsi_array[21]

/// IMSI, and a number.
struct zel_cwan_api_imsi = 1516 {
    zel_cwan_api_imsi_imsi_array  imsi
    uint16                        value
}

bytes zel_modem_sys_status_country_code_array[4]

array zel_modem_sys_status_system_capabilities_array of zel_cw_system_mode[7]

bytes zel_modem_sys_status_network_code_array[9]

/// System status within the modem information. zel_cwan_gsm_api_sys_status_notify has the same members.
struct zel_modem_sys_status = 1517 {
    uint32                                          value_1
    uint32                                          value_2
    uint32                                          value_3
    uint32                                          value_4
    uint32                                          value_5
    uint32                                          value_6
    uint8                                           value_7
    uint8                                           value_8
    uint8                                           value_9
    uint8                                           value_10
    zel_modem_sys_status_country_code_array         country_code
    uint32                                          value_11
    uint32                                          value_12
    uint32                                          value_13
    uint32                                          value_14
    uint32                                          value_15
    uint32                                          value_16
    uint32                                          value_17
    uint32                                          value_18
    uint32                                          value_19
    uint32                                          value_20
    uint32                                          value_21
    uint32                                          value_22
    uint32                                          value_23
    uint32                                          value_24
    uint32                                          value_25
    uint32                                          value_26
    uint32                                          value_27
    zel_modem_sys_status_system_capabilities_array  system_capabilities
    uint8                                           value_28
    zel_modem_sys_status_network_code_array         network_code
}

bytes zel_cwan_gsm_api_modem_info_msg_firmware_version_array[25]
bytes zel_cwan_gsm_api_modem_info_msg_firmware_date_array[21]
bytes zel_cwan_gsm_api_modem_info_msg_hardware_version_array[21]
bytes zel_cwan_gsm_api_modem_info_msg_fsn_array[21]
bytes zel_cwan_gsm_api_modem_info_msg_cw_gsm_bands_list_array[38]
bytes zel_cwan_gsm_api_modem_info_msg_imei_array[21]
bytes zel_cwan_gsm_api_modem_info_msg_cw_lte_tech_list_array[14]
bytes zel_cwan_gsm_api_modem_info_msg_iccid_array[21]
bytes zel_cwan_gsm_api_modem_info_msg_sdk_version_array[21]

array zel_cwan_gsm_api_modem_info_msg_cell_info_array of zel_cw_nearby_cell_info[6]

bytes zel_cwan_gsm_api_modem_info_msg_pri_id_array[21]
bytes zel_cwan_gsm_api_modem_info_msg_pri_version_array[21]

/// Versions, identities, capabilities and nearby cells of the modem.
struct zel_cwan_gsm_api_modem_info_msg = 1518 {
    zel_cwan_gsm_api_modem_info_msg_firmware_version_array   firmware_version
    zel_cwan_gsm_api_modem_info_msg_firmware_date_array      firmware_date
    zel_cwan_gsm_api_modem_info_msg_hardware_version_array   hardware_version
    zel_cwan_api_imsi                                        imsi
    zel_cwan_gsm_api_modem_info_msg_fsn_array                fsn
    uint32                                                   value_1
    uint32                                                   value_2
    uint32                                                   value_3
    uint32                                                   value_4
    zel_modem_sys_status                                     sys_status
    uint32                                                   value_5
    zel_cwan_gsm_api_modem_info_msg_cw_gsm_bands_list_array  gsm_bands_list
    uint32                                                   value_6
    zel_cwan_gsm_api_modem_info_msg_imei_array               imei
    uint16                                                   value_7
    uint16                                                   value_8
    uint8                                                    value_9
    zel_cwan_gsm_api_modem_info_msg_cw_lte_tech_list_array   lte_tech_list
    uint32                                                   value_10
    zel_cwan_gsm_api_modem_info_msg_iccid_array              iccid
    zel_cwan_gsm_api_modem_info_msg_sdk_version_array        sdk_version
    zel_cwan_gsm_api_modem_info_msg_cell_info_array          cell_info
    zel_cwan_gsm_api_modem_info_msg_pri_id_array             pri_id
    zel_cwan_gsm_api_modem_info_msg_pri_version_array        pri_version
}

/// Callback statistics, a part of the current status.
struct zel_cwan_callback_stats = 1603 {
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
    uint32  counter_12
    uint32  counter_13
    uint32  counter_14
    uint32  counter_15
    uint32  counter_16
    uint32  counter_17
    uint32  counter_18
    uint32  counter_19
    uint32  counter_20
    uint32  counter_21
    uint32  counter_22
    uint32  counter_23
    uint32  counter_24
    uint32  counter_25
    uint32  counter_26
    uint32  counter_27
    uint32  counter_28
    uint32  counter_29
    uint32  counter_30
    uint32  counter_31
    uint32  counter_32
    uint32  counter_33
    uint32  counter_34
    uint32  counter_35
    uint32  counter_36
    uint32  counter_37
    uint32  counter_38
    uint32  counter_39
}

bytes zel_cwan_gsm_api_modem_current_status_msg_ATCmdPort_array[40]
bytes zel_cwan_gsm_api_modem_current_status_msg_NmeaPort_array[40]

array zel_cwan_gsm_api_modem_current_status_msg_systemCapabilities_array of zel_cw_system_mode[7]

bytes zel_cwan_gsm_api_modem_current_status_msg_usb_serial_version_array[33]
bytes zel_cwan_gsm_api_modem_current_status_msg_usb_net_version_array[33]
bytes zel_cwan_gsm_api_modem_current_status_msg_DmPort_array[40]

/// Current status of the modem: ports, capabilities, USB versions and callback statistics.
struct zel_cwan_gsm_api_modem_current_status_msg = 1534 {
    uint8                                                               value_1
    uint8                                                               value_2
    uint8                                                               value_3
    uint8                                                               value_4
    uint8                                                               value_5
    uint8                                                               value_6
    uint8                                                               value_7
    uint8                                                               value_8
    uint16                                                              value_9
    uint16                                                              value_10
    zel_cwan_gsm_api_modem_current_status_msg_ATCmdPort_array           at_cmd_port
    zel_cwan_gsm_api_modem_current_status_msg_NmeaPort_array            nmea_port
    uint16                                                              value_11
    uint8                                                               value_12
    zel_cwan_gsm_api_modem_current_status_msg_systemCapabilities_array  system_capabilities
    uint8                                                               value_13
    zel_cwan_gsm_api_modem_current_status_msg_usb_serial_version_array  usb_serial_version
    zel_cwan_callback_stats                                             callback_stats
    zel_cwan_gsm_api_modem_current_status_msg_usb_net_version_array     usb_net_version
    zel_cwan_gsm_api_modem_current_status_msg_DmPort_array              dm_port
}
