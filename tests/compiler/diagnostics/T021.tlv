enum led_kind = 1362
bytes led_name[16]
array led_array of uint16[4]
dynamic array led_list of led_kind counted by uint8
union led_value by led_kind kind { 1: uint8 octet }
message led_request {
    uint16     slot
    led_name   name
    led_array  array_of_leds
    led_list   list
    led_kind   kind
    led_value  value
}
