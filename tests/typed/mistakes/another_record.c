// Refused: incompatible.pointer.types?|(invalid conversion|cannot convert|no matching function)
#include <tlvmsg/bounded/voice.h>
#include <tlvmsg/dispatch.h>

void release(zel_led_control *led);

void release(zel_led_control *led) {
#if MISTAKE == 1
    tlvmsg_release_zel_set_codec(led);
#else
    tlvmsg_release_zel_led_control(led);
#endif
}

static bool take(void *led, const zel_led_control *record) { return led == record; }

#if MISTAKE == 2
#define ROUTES(ROUTE) ROUTE(1, zel_set_codec, take)
#else
#define ROUTES(ROUTE) ROUTE(1, zel_led_control, take)
#endif
TLVMSG_ROUTES(routes, ROUTES)

const tlvmsg_route *all(union routes_room *room);
const tlvmsg_route *all(union routes_room *room) { return &routes[sizeof *room % routes_count]; }
