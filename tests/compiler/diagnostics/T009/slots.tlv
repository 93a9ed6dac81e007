// The way back.
import "leds.tlv"
struct slot_id = 1359 { led_control control }
