//! Addresses, management VLAN, access ports and DNS servers of a server module.

import "../common/address.tlv"
import "../common/session.tlv"

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

/// How a server module gets its address.
enum svrm_ip_type = 1225 {
    /// The addresses and the gateway are given.
    static = 0
    dhcp   = 1
}

/// Addressing of the kind before it; any kind but static and DHCP carries nothing, which is no fault. The
/// operations take a whole svrm_ipaddr, whose selector is its second member.
union svrm_ipaddr_type_union by svrm_ip_type ip_type in svrm_ipaddr {
    static: svrm_addr_info  addr_info
      dhcp: svrm_dhcp_info  dhcp_info
}

/// Type of a server module's IP address.
enum svrm_ip_addr_type = 1224

/// IP address of a server module.
struct svrm_ipaddr = 1211 {
    svrm_ip_addr_type       addr_type
    svrm_ip_type            ip_type
    svrm_ipaddr_type_union  address
}

/// Exchange of a server module's IP address.
message svrm_ip_addr_msg_message { app_sess_hdr session  ifid interface  svrm_ipaddr address }

/// Remote address.
struct svrm_rem_ipaddr = 1212 {
    ip_address  address
}

/// Exchange of a remote address.
message svrm_remote_addr_msg_message { app_sess_hdr session  ifid interface  svrm_rem_ipaddr remote_address }

/// VLAN of the management controller: two numbers and a flag.
struct svrm_bmc_vlan_info = 1213 {
    uint32       value_1
    zel_boolean  flag
    uint8        value_2
}

/// Exchange of the VLAN of the management controller.
message svrm_bmc_vlan_msg_message { app_sess_hdr session  ifid interface  svrm_bmc_vlan_info bmc_vlan_info }

/// Kind of an interface of an access port.
enum svrm_access_interface_type = 1226

/// Access ports, as the kinds of their interfaces.
struct svrm_access_port = 1214 {
    svrm_access_interface_type[3]  interfaces as svrm_access_port_access_int_array
}

/// Exchange of the access ports.
message svrm_access_port_msg_message { app_sess_hdr session  ifid interface  svrm_access_port access_port }

/// DNS servers, behind a number.
struct svrm_dns = 1215 {
    /// Separate from the array's count.
    uint8          value
    ip_address[3]  entries as svrm_dns_entry_array
}

/// Exchange of the list of DNS servers.
message svrm_dns_msg_message { app_sess_hdr session  ifid interface  svrm_dns dns }
