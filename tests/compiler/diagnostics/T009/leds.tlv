import "ports.tlv"
struct led_control = 1357 { port_id port }
