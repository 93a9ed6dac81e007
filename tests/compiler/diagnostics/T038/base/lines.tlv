import "../acme/leds.tlv"
struct line = 1357 { led led }
