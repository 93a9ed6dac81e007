/*
 * One message from end to end: the control plane asks a voice module to switch the LED of a port.
 *
 *     cc led_control.c $(pkg-config --cflags --libs tlvmsg)
 */
#include <inttypes.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <tlvmsg/voice.h>

/* Tags that this message is made of. Scalars have 1 to 9, everything above 1000 is the schema's. */
static const struct {
    uint16_t tag;
    const char *name;
} names[] = {
    {2, "uint8"},
    {4, "uint16"},
    {6, "uint32"},
    {8, "uint64"},
    {1001, "app_sess_hdr"},
    {1002, "app_sess_msg_type"},
    {1039, "ifid"},
    {1357, "zel_led_control"},
    {1362, "zel_led_color"},
};

static const char *name_of(uint16_t tag) {
    for (size_t i = 0; i < sizeof names / sizeof names[0]; i++) {
        if (names[i].tag == tag) {
            return names[i].name;
        }
    }
    return "?";
}

static void print_bytes(size_t offset, const uint8_t *from, const uint8_t *to) {
    printf("  %4zu  ", offset);
    for (const uint8_t *byte = from; byte < to; byte++) {
        printf("%02X ", *byte);
    }
    printf("%*s", 3 * (int)(8 - (to - from)), "");
}

/* Explains every byte of the elements in [at, end), the nested ones indented below their header. */
static void explain(const uint8_t *start, const uint8_t *at, const uint8_t *end, int depth) {
    while (at != NULL && at < end) {
        uint16_t tag, length;
        const uint8_t *value;
        const uint8_t *next = tlv_decode_buffer(at, &tag, &length, &value);

        print_bytes((size_t)(at - start), at, value);
        printf("%*s%s (tag %u), %u bytes\n", 2 * depth, "", name_of(tag), tag, length);
        if (tag > 1000) {
            explain(start, value, next, depth + 1);
        } else {
            uint64_t number = 0;
            for (const uint8_t *byte = value; byte < next; byte++) {
                number = number << 8 | *byte;
            }
            print_bytes((size_t)(value - start), value, next);
            printf("%*s%" PRIu64 "\n", 2 * depth + 2, "", number);
        }
        at = next;
    }
}

static void print_record(const analogbri_led_control_req_message *message) {
    printf("  message type %" PRIu32 ", slot %u, port %u, color %" PRIu32 "\n", message->session.msg_type,
           message->led_control.slot, message->led_control.port, message->led_control.color);
}

int main(void) {
    /* The sender fills a record. What is not set is zero, as it would be after decoding. */
    analogbri_led_control_req_message request = {0};
    request.session.msg_type = 17;
    request.interface.value_1 = 0x0A000001;
    request.led_control.slot = 2;
    request.led_control.port = 5;
    request.led_control.color = 3;
    printf("The record:\n");
    print_record(&request);

    /* It asks for the size, provides a buffer of that size, and encodes. */
    const uint16_t size = get_tlv_analogbri_led_control_req_message_size(&request);
    uint8_t *wire = malloc(size);
    if (wire == NULL) {
        return EXIT_FAILURE;
    }
    const uint8_t *end = encode_tlv_analogbri_led_control_req_message(&request, wire);
    if (end == NULL) {
        fprintf(stderr, "led_control: the record cannot be encoded\n");
        free(wire);
        return EXIT_FAILURE;
    }
    printf("\nEncoded, %u bytes:\n", size);
    explain(wire, wire, end, 0);

    /* The receiver knows which message it expects, and decodes. These bytes are our own; bytes from a
       stranger would first have to be verified. */
    analogbri_led_control_req_message received;
    const uint8_t *decoded_to = decode_tlv_analogbri_led_control_req_message(wire, &received);
    const bool same = decoded_to == end && memcmp(&received, &request, sizeof request) == 0;
    printf("\nDecoded again:\n");
    print_record(&received);
    printf("  %s\n", same ? "the same record" : "NOT the same record");

    free(wire);
    return same ? EXIT_SUCCESS : EXIT_FAILURE;
}
