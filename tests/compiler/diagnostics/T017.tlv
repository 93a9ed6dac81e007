enum class = 1362
struct led_control = 1357 {
    uint16  register
    uint16  new
}
union value by class switch { 1: uint8 and }
