import "../common/session.tlv
enum led_color = 1362
