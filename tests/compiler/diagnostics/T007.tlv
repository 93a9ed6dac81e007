enum led_color = 1362
import "T007.tlv"
