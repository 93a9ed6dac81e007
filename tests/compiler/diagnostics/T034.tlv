struct led_control = 1357 {
    uint16 slot @zero_cuont
    uint16 port @packed
}
