enum svrm_ip_type = 1225 {
    static = 0
    dhcp   = 0
    static = 2
}
