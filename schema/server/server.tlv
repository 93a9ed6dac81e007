//! Server module messages: what the control plane and a plug-in module that hosts a server exchange. They
//! cover the module's addresses, VLAN, access ports and name servers, commands and password reset, state and
//! reports.

import "../common/address.tlv"
import "../common/session.tlv"

enum svrm_ip_addr_type = 1224

/// Selects how a module gets its address: 0 static, 1 by DHCP.
enum svrm_ip_type = 1225

/// Static addressing: three addresses, the gateway among them, and a flag.
struct svrm_addr_info = 1209 {
    ip_address   address_1
    ip_address   address_2
    zel_boolean  flag
    ip_address   address_3
}

/// Addressing by DHCP.
struct svrm_dhcp_info = 1210 {
    zel_boolean  dhcp
}

/// Addressing by the kind before it; any kind but static and DHCP carries nothing. The operations take a
/// whole svrm_ipaddr, whose selector is its second member.
union svrm_ipaddr_type_union by svrm_ip_type ip_type in svrm_ipaddr {
    0: svrm_addr_info  addr_info
    1: svrm_dhcp_info  dhcp_info
}

/// IP address of a server module.
struct svrm_ipaddr = 1211 {
    svrm_ip_addr_type       addr_type
    svrm_ip_type            ip_type
    svrm_ipaddr_type_union  address
}

/// IP address of a server module.
message svrm_ip_addr_msg_message { app_sess_hdr session  ifid interface  svrm_ipaddr address }

/// Remote address.
struct svrm_rem_ipaddr = 1212 {
    ip_address  address
}

/// Remote address.
message svrm_remote_addr_msg_message { app_sess_hdr session  ifid interface  svrm_rem_ipaddr remote_address }

/// VLAN of the management controller.
struct svrm_bmc_vlan_info = 1213 {
    uint32       value_1
    zel_boolean  flag
    uint8        value_2
}

/// Sets the VLAN of the management controller.
message svrm_bmc_vlan_msg_message { app_sess_hdr session  ifid interface  svrm_bmc_vlan_info bmc_vlan_info }

/// Kind of an interface of an access port.
enum svrm_access_interface_type = 1226

/// Up to 3 interface kinds.
array svrm_access_port_access_int_array of svrm_access_interface_type[3]

/// Access ports, by the kinds of their interfaces.
struct svrm_access_port = 1214 {
    svrm_access_port_access_int_array  interfaces
}

/// Sets the access ports.
message svrm_access_port_msg_message { app_sess_hdr session  ifid interface  svrm_access_port access_port }

/// Up to 3 addresses.
array svrm_dns_entry_array of ip_address[3]

/// Name servers.
struct svrm_dns = 1215 {
    uint8                 value
    svrm_dns_entry_array  entries
}

/// Sets the name servers.
message svrm_dns_msg_message { app_sess_hdr session  ifid interface  svrm_dns dns }

/// Names a UART of the module.
enum svrm_module_uart_type = 1227

/// UART selection.
struct svrm_uart_data = 1216 {
    svrm_module_uart_type  uart_type
}

/// Selects the UART of a session.
message svrm_session_msg_message { app_sess_hdr session  ifid interface  svrm_uart_data uart }

/// Command to the server.
enum svrm_exec_svr_cmd = 1228

/// Carries a command to the server.
struct svrm_exec_action = 1217 {
    svrm_exec_svr_cmd  command
}

/// Server command.
message svrm_exec_msg_message { app_sess_hdr session  ifid interface  svrm_exec_action action }

/// Which password is meant.
enum svrm_reset_password_type = 1230

/// Password reset.
struct svrm_pwreset_data = 1218 {
    svrm_reset_password_type  password_type
}

/// Resets a password.
message svrm_pwreset_msg_message { app_sess_hdr session  ifid interface  svrm_pwreset_data password_reset }

/// Status text, up to 1024 bytes.
bytes svrm_server_status_string_array[1024]

/// Server status, as a number and as a text.
struct svrm_server_status = 1219 {
    uint32                           value
    svrm_server_status_string_array  text
}

/// Status of the server.
message svrm_server_status_msg_message { app_sess_hdr session  ifid interface  svrm_server_status status }

/// Which statistic is meant.
enum svrm_stats_type = 1231

/// A statistic and its 64-bit value.
struct svrm_svr_stats = 1220 {
    svrm_stats_type  stats_type
    uint64           counter
}

/// One statistic of the server.
message svrm_stats_message { app_sess_hdr session  ifid interface  svrm_svr_stats stats }

/// Blocking configuration: one flag.
struct svrm_blk_cfg = 1221 {
    zel_boolean  blocking
}

/// Configures blocking.
message svrm_blk_msg_message { app_sess_hdr session  ifid interface  svrm_blk_cfg blk_cfg }

/// Kind of a command's result.
enum svrm_result_type = 1232

/// Result text, up to 1024 bytes.
bytes svrm_result_cfg_msg_array[1024]

/// Result of a command, as numbers and as a text.
struct svrm_result_cfg = 1222 {
    uint8                      value_1
    svrm_result_type           type
    uint8                      value_2
    svrm_result_cfg_msg_array  text
}

/// Result of a command.
message svrm_result_msg_message { app_sess_hdr session  ifid interface  svrm_result_cfg result }

/// Connection state. On the wire it cannot be told from a link state message.
message svrm_cstate_msg_message { app_sess_hdr session  ifid interface  if_state state }

/// Boot URL, up to 1024 bytes.
bytes svrm_svr_boot_url_url_str_array[1024]

/// Boot URL of the server.
struct svrm_svr_boot_url = 1223 {
    uint32                           value
    svrm_svr_boot_url_url_str_array  url
}

/// Sets the boot URL.
message svrm_svr_boot_msg_message { app_sess_hdr session  ifid interface  svrm_svr_boot_url boot_url }

/// Link state. On the wire it cannot be told from a connection state message.
message svrm_link_state_message { app_sess_hdr session  ifid interface  if_state state }

/// Router's PID, up to 32 bytes.
bytes svrm_rtr_info_pid_str_array[32]

/// Router's chassis, up to 32 bytes.
bytes svrm_rtr_info_chas_str_array[32]

/// Router information: three numbers, PID and chassis.
struct svrm_rtr_info = 1233 {
    uint8                         value_1
    uint8                         value_2
    uint8                         value_3
    svrm_rtr_info_pid_str_array   pid
    svrm_rtr_info_chas_str_array  chassis
}

/// Router information.
message svrm_rtr_info_msg_message { app_sess_hdr session  ifid interface  svrm_rtr_info router_info }

/// Report, up to 1900 bytes.
bytes kavu_svrm_generic_report_buffer_array[1900]

/// Generic report of a server module.
struct kavu_svrm_generic_report = 1283 {
    uint8                                  value
    kavu_svrm_generic_report_buffer_array  buffer
}

/// Carries a generic report. The body alone, without session header.
message zel_kavu_svrm_generic_report_message { kavu_svrm_generic_report generic_report }
