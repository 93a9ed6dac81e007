/* What a program needs of the library: records, codecs, and blocks that come from the platform. */
#include <string.h>
#include <tlvmsg/all.h>

static int led_request_comes_back(void) {
    analogbri_led_control_req_message sent, received;
    uint8_t wire[256];
    memset(&sent, 0, sizeof sent);
    sent.led_control.color = 2;
    const uint8_t *end = encode_tlv_analogbri_led_control_req_message(&sent, wire);
    return end == wire + 120 && get_tlv_analogbri_led_control_req_message_size(&sent) == 120 &&
           decode_tlv_analogbri_led_control_req_message(wire, &received) == end &&
           received.led_control.color == 2;
}

static int name_is_allocated(void) {
    static const uint8_t wire[] = {0, 10, 0, 9, 0, 4, 0, 2, 0, 2, 'e', '0', 0};
    if_name_name_array name;
    const int decoded = decode_tlv_if_name_name_array(wire, &name) == wire + sizeof wire;
    const int same = decoded && name.count == 2 && strcmp((const char *)name.bytes, "e0") == 0;
    tlv_free(name.bytes);
    return same;
}

int main(void) { return led_request_comes_back() && name_is_allocated() ? 0 : 1; }
