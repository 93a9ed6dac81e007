enum led_kind = 1362
union led_value by led_kind kind {
    1, 2: uint8  octet
    3, 2: uint16 half
}
