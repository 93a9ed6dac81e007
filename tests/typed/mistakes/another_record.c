// Refused: incompatible.pointer.types?|(invalid conversion|cannot convert|no matching function)
#include <tlvmsg/bounded/voice.h>

void release(zel_led_control *led);

void release(zel_led_control *led) {
#ifdef MISTAKE
    tlvmsg_release_zel_set_codec(led);
#else
    tlvmsg_release_zel_led_control(led);
#endif
}
