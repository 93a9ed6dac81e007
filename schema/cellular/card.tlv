//! Management of a cellular card: modem information, LEDs, the IPC envelope and hardware counters.

import "../common/session.tlv"
import "commands.tlv"
import "firmware.tlv"
import "nmea_dm.tlv"

/// Modem management information, in four numbers.
struct mgmt_modem_info = 1591 {
    uint32  value_1
    uint32  value_2
    uint32  value_3
    uint32  value_4
}

/// Power of a cellular LED.
enum zel_cwan_led_power = 1592

/// Colour of a cellular LED.
enum zel_cwan_led_color = 1593

/// State of a cellular LED.
enum zel_cwan_led_state = 1594

/// Name of a cellular LED.
enum zel_cwan_led_name = 1595

/// Status of a cellular LED, which is named last.
struct zel_cwan_led_status = 1596 {
    zel_cwan_led_power  power
    zel_cwan_led_color  color
    zel_cwan_led_state  state
    zel_cwan_led_name   name
}

/// Kind of a card management exchange.
enum zel_cwan_ipc_type = 1584

/// Body of a card management exchange. Pairs of kinds share the ping, shell command and LED records, one byte
/// stands in for the twenty kinds that have no record, and above 30 nothing is carried.
union cwan_ipc_type_union by zel_cwan_ipc_type type {
    0, 1, 2, 3, 5, 7, 8, 9, 10, 11, 12, 13, 15, 17, 19, 20, 21, 24, 26, 28: uint8  value
         4: cwan_fw_upgrade_host_msg  fw_upgrade_host_msg
     6, 23: cwan_ping_msg             ping_msg
    14, 25: zel_cwan_exec_shell_cmd   exec_shell_cmd
    16, 27: zel_cwan_led_status       led_status
        18: mgmt_modem_info           modem_info
        22: cwan_fw_upgrade_card_msg  fw_upgrade_card_msg
        29: zel_cwan_dm_local_config  dm_local_config
        30: zel_cwan_dm_stop          dm_stop
}

/// One exchange of card management.
struct cwan_ipc = 1585 {
    zel_cwan_ipc_type    type
    cwan_ipc_type_union  body
}

/// Hardware counters of a cellular interface.
struct cwan_hw_cnt = 1608 {
    uint32  counter_1
    uint32  counter_2
    uint32  counter_3
    uint32  counter_4
    uint32  counter_5
    uint32  counter_6
    uint32  counter_7
}

/// Message of card management.
message card_mgmt_message { app_sess_hdr session  ifid interface  cwan_ipc ipc }

/// Update of a cellular interface's hardware counters.
message cwanif_hw_cnt_upd_message { app_sess_hdr session  ifid interface  cwan_hw_cnt hw_cnt }
