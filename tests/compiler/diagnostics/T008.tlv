import "T008/session.tlv"
enum led_color = 1362
