/* What a program needs of the bounded library alone: the schema as data, typed operations, and its own codecs. */
#include <string.h>
#include <tlvmsg/bounded/all.h>

/* Addresses are constants, and those of the library. */
const tlvmsg_type *expected[] = {&tlvmsg_type_of_zel_led_control, &tlvmsg_type_of_zel_led_color};

static int descriptors_are_the_library_s(void) {
    return expected[0] == tlvmsg_type_find("zel_led_control") &&
           expected[0] == tlvmsg_descriptor_zel_led_control() && expected[1] == expected[0]->members[2].type;
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
