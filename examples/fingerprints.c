/*
 * Two processes of different age find out which messages are alike on both sides: a voice module tells the fingerprints
 * of its messages; the control plane then reads the alike ones with exact functions, the others with bounded ones.
 *
 *     cc fingerprints.c $(pkg-config --cflags --libs tlvmsg tlvmsg_inspect)
 *
 * A fingerprint is what the peer claims, and no proof: only a peer that is trusted anyway is worth listening to.
 */
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <tlvmsg/bounded/voice.h>
#include <unistd.h>

enum { LED, CODEC, MESSAGES };

static const struct {
    const char *name;
    uint64_t fingerprint;
} own[MESSAGES] = {
    {"analogbri_led_control_req_message", TLVMSG_FINGERPRINT_analogbri_led_control_req_message},
    {"analog_set_codec_req_message", TLVMSG_FINGERPRINT_analog_set_codec_req_message},
};

/* Of one message or, with an empty name, behind the last. */
struct claim {
    char name[64];
    uint64_t fingerprint;
};

/* Every message of the family, one of which is to be another one in the module's release. */
static void tell(FILE *link) {
    for (size_t i = 0; i < tlvmsg_type_count(); i++) {
        const tlvmsg_type *type = tlvmsg_type_at(i);
        if (type->kind == TLVMSG_MESSAGE && strcmp(type->family, "voice") == 0) {
            const bool other = strcmp(type->name, own[CODEC].name) == 0;
            struct claim claim = {"", tlvmsg_fingerprint(type) + other};
            snprintf(claim.name, sizeof claim.name, "%s", type->name);
            fwrite(&claim, sizeof claim, 1, link);
        }
    }
    fwrite(&(struct claim){"", 0}, sizeof(struct claim), 1, link);
}

static void listen_to(FILE *link, bool *alike) {
    struct claim claim;
    while (fread(&claim, sizeof claim, 1, link) == 1 && claim.name[0] != '\0') {
        for (int i = 0; i < MESSAGES; i++) {
            alike[i] |= strncmp(claim.name, own[i].name, sizeof claim.name) == 0 &&
                        claim.fingerprint == own[i].fingerprint;
        }
    }
}

static void run_module(FILE *link) {
    const analogbri_led_control_req_message request = {.led_control.color = 3};
    uint8_t wire[TLVMSG_SIZE_analogbri_led_control_req_message];
    encode_tlv_analogbri_led_control_req_message(&request, wire);
    tell(link);
    fwrite(wire, sizeof wire, 1, link);
}

static bool run_control_plane(FILE *link) {
    bool alike[MESSAGES] = {false};
    listen_to(link, alike);
    for (int i = 0; i < MESSAGES; i++) {
        printf("%s: %s functions\n", own[i].name, alike[i] ? "exact" : "bounded");
    }
    uint8_t wire[UINT16_MAX];
    const size_t size = fread(wire, 1, sizeof wire, link);
    analogbri_led_control_req_message request;
    const bool taken =
        alike[LED] && size == TLVMSG_SIZE_analogbri_led_control_req_message
            ? decode_tlv_analogbri_led_control_req_message(wire, &request) != NULL
            : tlvmsg_decode_analogbri_led_control_req_message(wire, size, NULL, &request, NULL, NULL);
    printf("colour %u\n", taken ? request.led_control.color : 0);
    return taken;
}

int main(void) {
    int ends[2];
    if (pipe(ends) != 0) {
        return EXIT_FAILURE;
    }
    const pid_t module = fork();
    FILE *link = fdopen(ends[module == 0], module == 0 ? "w" : "r");
    close(ends[module != 0]);
    if (link == NULL) {
        return EXIT_FAILURE;
    }
    if (module == 0) {
        run_module(link);
        return fclose(link);
    }
    int status = 1;
    const bool taken = module > 0 && run_control_plane(link);
    fclose(link);
    return taken && waitpid(module, &status, 0) == module && status == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
