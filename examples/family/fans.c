/*
 * A family of one's own: a report on the fans of a module becomes bytes, which whoever receives them knows by the key in
 * their session header, and a record again; and a type is found by its tag. With a file name the bytes are written there, for 'tlv --schema acme/fan.tlv' to show.
 */
#include <tlvmsg/bounded/acme.h>
#include <tlvmsg/dispatch.h>

#include <stdio.h>
#include <string.h>

static int fail(const tlvmsg_fault *fault) {
    char line[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_text(fault, line, sizeof line);
    fprintf(stderr, "%s\n", line);
    return 1;
}

/* Two fans: one turns, the other does not and says why. */
static bool fill(acme_fan_report_message *report, tlvmsg_fault *fault) {
    static const char reason[] = "bearing seized";
    report->session.msg_type = TLVMSG_KEY_acme_fan_report_message;
    if (!tlvmsg_resize_acme_fans(&report->list.fans, 2, fault)) {
        return false;
    }
    acme_fan *turning = &report->list.fans.items[0];
    turning->tray = 1;
    acme_fan_speed *speed = tlvmsg_choose_acme_fan_detail_speed(&turning->detail);
    speed->rpm = 4180;
    speed->rpm_wanted = 4200;

    acme_fan *failed = &report->list.fans.items[1];
    failed->tray = 2;
    acme_fan_failure *failure = tlvmsg_choose_acme_fan_detail_failure(&failed->detail);
    if (!tlvmsg_resize_acme_fan_reason(&failure->reason, strlen(reason), fault)) {
        return false;
    }
    memcpy(failure->reason.bytes, reason, strlen(reason));
    return true;
}

static void show(const acme_fan_report_message *report) {
    for (size_t i = 0; i < report->list.fans.count; i++) {
        const acme_fan *fan = &report->list.fans.items[i];
        if (fan->detail.state == acme_fan_state_running) {
            printf("tray %u: %u rpm\n", fan->tray, fan->detail.speed.rpm);
        } else if (fan->detail.state == acme_fan_state_failed) {
            printf("tray %u: %.*s\n", fan->tray, (int)fan->detail.failure.reason.count,
                   (const char *)fan->detail.failure.reason.bytes);
        }
    }
}

/* Receives what is to be one of the family's messages. */
static bool take(const uint8_t *wire, size_t size, tlvmsg_fault *fault) {
    uint32_t key;
    const tlvmsg_type *type = tlvmsg_session_key(wire, size, &key) ? tlvmsg_type_by_key("acme", key) : NULL;
    printf("key %u: %s\n", (unsigned)key, type ? type->name : "none of ours");
    if (type != tlvmsg_descriptor_acme_fan_report_message()) {
        return true;
    }
    acme_fan_report_message report;
    if (!tlvmsg_decode_acme_fan_report_message(wire, size, NULL, &report, NULL, fault)) {
        return false;
    }
    show(&report);
    tlvmsg_release_acme_fan_report_message(&report);
    return true;
}

int main(int argc, char **argv) {
    tlvmsg_fault fault;
    if (!tlvmsg_register(&tlvmsg_family_acme, &fault)) {
        return fail(&fault);
    }
    acme_fan_report_message sent = {0};
    size_t size;
    uint8_t *wire =
        fill(&sent, &fault) ? tlvmsg_encode_alloc_acme_fan_report_message(&sent, &size, &fault) : NULL;
    tlvmsg_release_acme_fan_report_message(&sent);
    if (!wire || !take(wire, size, &fault)) {
        tlvmsg_free(wire);
        return fail(&fault);
    }

    FILE *file = argc > 1 ? fopen(argv[1], "wb") : NULL;
    if (argc > 1 && (!file || fwrite(wire, 1, size, file) != size || fclose(file) != 0)) {
        perror(argv[1]);
        tlvmsg_free(wire);
        return 1;
    }
    tlvmsg_free(wire);
    printf("%zu bytes; tag %u is %s\n", size, TLVMSG_TAG_acme_fan,
           tlvmsg_type_by_tag(TLVMSG_TAG_acme_fan)->name);
    return 0;
}
