// As C has them.
#include "led.h"
import <led.tlv>
import common/led.tlv
strcut led_control = 1357 {
    uint16 slot
}
struct led_state = {
    uint16 slot
}
struct led_mode = 1358 {
    uint16
    uint16 = 4
}
union led_value by led_kind kind {
    uint8 octet
}
dynamic text led_name counted by uint8
array leds of led_state[2
]
message led_request = 2010 { led_header header }
struct led_header = 1359 {
    led_mode   modes[8]
    uint8      name[16] @zero_count
    led_mode   others[]
}
typedef struct led_port = 1360 {
    uint16_t  slot, port;
    bytes  serial[4];
    string name[8];
};
enum led_kind { off, dim = 2 }
dynamic array led_names of led_name
union led_choice { uint8 octet }
