enum svrm_ip_type = 1225 { static = 0  dhcp = 1 }

union svrm_conf_union by svrm_ip_type ip_type {
    statik: uint8   octet
    5, x:   uint16  word
}
