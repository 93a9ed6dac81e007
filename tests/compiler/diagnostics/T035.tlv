enum led_kind = 1362
dynamic bytes led_name counted by uint8
struct led_control = 1357 {
    uint8     count @zero_count
    led_name  name @zero_count @zero_count
    led_kind  kind @end_by_length
}
union led_value by led_kind kind {
    1: led_kind  mode @end_by_length
    2: uint8     octet @end_by_length
    3: uint16    half @zero_count
}
