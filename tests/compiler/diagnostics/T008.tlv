import "T008/session.tlv"
import "elsewhere/T007.tlv"
import "nowhere.tlv"
enum led_color = 1362
