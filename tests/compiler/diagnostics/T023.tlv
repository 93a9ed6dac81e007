enum led_kind = 1362
bytes led_name[16]
dynamic bytes led_text counted by uint8
union led_value by led_kind kind { 1: uint8 octet }
union led_setting by led_kind kind {
    1: led_name   name
    2: led_text   text
    3: led_value  value
}
