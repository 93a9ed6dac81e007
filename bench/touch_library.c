/*
 * Loads libtlvmsg by being linked with it, says where it lies, and calls one of its functions when given an
 * argument. `pages` counts what that touches.
 */
#define _GNU_SOURCE
#include <tlvmsg/voice.h>

#include <link.h>
#include <stdio.h>
#include <string.h>

/* Asking the dynamic linker for a symbol's library would look into the very pages that are counted. */
static int print_library(struct dl_phdr_info *library, size_t size, void *unused) {
    (void)size;
    (void)unused;
    if (strstr(library->dlpi_name, "libtlvmsg.so") != NULL) {
        printf("%lx %s\n", (unsigned long)library->dlpi_addr, library->dlpi_name);
        return 1;
    }
    return 0;
}

int main(int argc, char **argv) {
    static const analogbri_led_control_req_message request = {
        .led_control = {.slot = 2, .port = 5, .color = 3}};
    static uint8_t wire[256];
    (void)argv;

    if (dl_iterate_phdr(print_library, NULL) == 0) {
        return 1;
    }
    if (argc > 1) {
        return encode_tlv_analogbri_led_control_req_message(&request, wire) == NULL;
    }
    return 0;
}
