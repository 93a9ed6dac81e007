enum led_kind = 1362
union led_value by led_kind kind {
    4294967295: uint8  octet
    4294967296: uint16 half
}
message led_report key 4294967296 { led_kind kind }
