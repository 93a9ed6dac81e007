enum led_kind = 1362
bytes led_name[16]
message led_request {
    uint16     slot
    led_name   name
    led_kind   kind
}
