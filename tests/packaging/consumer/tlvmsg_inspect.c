/* What a program needs of the bounded library alone: the schema as data, typed operations, and its own codecs. */
#include <string.h>
#include <tlvmsg/bounded/all.h>

/* Functions are constants; the addresses that they give are those of the library. */
static const struct {
    int message;
    const tlvmsg_type *(*type)(void);
} expected[] = {{17, tlvmsg_descriptor_zel_led_control}, {18, tlvmsg_descriptor_zel_led_color}};

static int descriptors_are_the_library_s(void) {
    static const tlvmsg_type *(*const at_once)(void) = tlvmsg_descriptor_ifid;
    return expected[0].type() == tlvmsg_type_find("zel_led_control") &&
           expected[1].type() == expected[0].type()->members[2].type && at_once() == tlvmsg_type_find("ifid");
}

static int led_comes_back(void) {
    zel_led_control led, back;
    size_t written, consumed;
    memset(&led, 0, sizeof led);
    led.color = 3;
    uint8_t *wire = tlvmsg_encode_alloc_zel_led_control(&led, &written, NULL);
    const int same = wire != NULL && written == 28 &&
                     tlvmsg_decode_zel_led_control(wire, written, NULL, &back, &consumed, NULL) &&
                     consumed == written && tlvmsg_equal_zel_led_control(&led, &back) &&
                     !tlvmsg_verify_zel_led_control(wire, written - 1, NULL, NULL, NULL);
    tlvmsg_free(wire);
    return same;
}

int main(void) { return descriptors_are_the_library_s() && led_comes_back() ? 0 : 1; }
