struct led_control = 1357 {
    uint16 slot;
    uint16 port µ
}
# the colour
