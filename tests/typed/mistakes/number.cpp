// Refused: constraints not satisfied|no matching function
#include <tlvmsg/voice.hpp>

bool is_led(tlvmsg::byte_view packet) {
#ifdef MISTAKE
    return bool(tlvmsg::decode<zel_led_color>(packet));
#else
    return bool(tlvmsg::decode<zel_led_control>(packet));
#endif
}
