/*
 * Two processes and a socket between them: the control plane gives a server module its address, and gets the
 * counters of its VLANs. Neither trusts the other's bytes.
 *
 *     cc server_module.c $(pkg-config --cflags --libs tlvmsg_inspect)
 *
 * Messages do not say which they are, nor where they end, so that each travels in a frame: 2 bytes for its kind,
 * 2 for its length, both big-endian, and the message.
 */
#include <inttypes.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <tlvmsg/bounded/ethernet.h>
#include <tlvmsg/bounded/server.h>
#include <unistd.h>

enum kind { ADDRESS = 1, COUNTERS = 2 };

struct frame {
    uint8_t head[4];
    uint8_t message[UINT16_MAX];
};

static unsigned kind_of(const struct frame *frame) { return (unsigned)frame->head[0] << 8 | frame->head[1]; }
static size_t size_of(const struct frame *frame) { return (size_t)(frame->head[2] << 8 | frame->head[3]); }

static bool send_frame(int link, enum kind kind, const uint8_t *message, size_t size) {
    const uint8_t head[] = {(uint8_t)(kind >> 8), (uint8_t)kind, (uint8_t)(size >> 8), (uint8_t)size};
    return size <= UINT16_MAX && send(link, head, sizeof head, MSG_NOSIGNAL) == (ssize_t)sizeof head &&
           send(link, message, size, MSG_NOSIGNAL) == (ssize_t)size;
}

static bool receive_frame(int link, struct frame *frame) {
    return recv(link, frame->head, sizeof frame->head, MSG_WAITALL) == (ssize_t)sizeof frame->head &&
           recv(link, frame->message, size_of(frame), MSG_WAITALL) == (ssize_t)size_of(frame);
}

static void complain(const char *who, const tlvmsg_fault *fault) {
    char line[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_text(fault, line, sizeof line);
    printf("%s: %s\n", who, line);
}

/* ---- The module ---------------------------------------------------------------------------------------- */

/* Reads a union: its selector says which alternative is there. */
static void take_address(const svrm_ipaddr *address) {
    if (address->ip_type == svrm_ip_type_dhcp) {
        printf("module: address by DHCP\n");
    } else if (address->ip_type == svrm_ip_type_static) {
        printf("module: address %08" PRIX32 "\n", address->addr_info.address_1.address.ipv4);
    }
}

/* Fills a dynamic array: its block comes from the library, which releases it with the record. */
static bool send_counters(int link) {
    zel_tib_vlan_stats_message answer = {0};
    tlvmsg_fault fault;
    zel_vlan_stat_bundle_vlan_counters_array *const vlans = &answer.vlan_stat_bundle.vlan_counters;
    if (!tlvmsg_resize_zel_vlan_stat_bundle_vlan_counters_array(vlans, 2, &fault)) {
        complain("module", &fault);
        return false;
    }
    for (uint16_t i = 0; i < vlans->count; i++) {
        vlans->items[i].vlan_id.id = (uint16_t)(100 + i);
        vlans->items[i].counter_1 = 1000U * (i + 1U);
    }
    size_t size;
    uint8_t *message = tlvmsg_encode_alloc_zel_tib_vlan_stats_message(&answer, &size, &fault);
    tlvmsg_release_zel_tib_vlan_stats_message(&answer);
    if (message == NULL) {
        complain("module", &fault);
        return false;
    }
    bool sent = send_frame(link, COUNTERS, message, size);
    message[size - 8] ^= 1; /* what a bad line does */
    sent =
        send_frame(link, COUNTERS, message, size) && send_frame(link, COUNTERS, message, size - 20) && sent;
    tlvmsg_free(message);
    return sent;
}

static bool run_module(int link) {
    static struct frame frame;
    svrm_ip_addr_msg_message request;
    tlvmsg_fault fault;
    if (!receive_frame(link, &frame) || kind_of(&frame) != ADDRESS) {
        return false;
    }
    if (!tlvmsg_decode_svrm_ip_addr_msg_message(frame.message, size_of(&frame), NULL, &request, NULL,
                                                &fault)) {
        complain("module", &fault);
        return false;
    }
    take_address(&request.address);
    fflush(stdout);
    return send_counters(link);
}

/* ---- The control plane --------------------------------------------------------------------------------- */

static bool send_address(int link) {
    svrm_ip_addr_msg_message request = {0};
    svrm_addr_info *const info = tlvmsg_choose_svrm_ipaddr_type_union_addr_info(&request.address);
    *tlvmsg_choose_ip_address_type_union_ipv4(&info->address_1.address) = 0x0A000001;
    uint8_t message[TLVMSG_MAX_SIZE_svrm_ip_addr_msg_message];
    size_t size;
    tlvmsg_fault fault;
    if (!tlvmsg_encode_svrm_ip_addr_msg_message(&request, message, sizeof message, &size, &fault)) {
        complain("control plane", &fault);
        return false;
    }
    return send_frame(link, ADDRESS, message, size);
}

static bool take_counters(const struct frame *frame) {
    const tlvmsg_limits strict = {.strict = true};
    zel_tib_vlan_stats_message answer;
    tlvmsg_fault fault;
    if (!tlvmsg_decode_zel_tib_vlan_stats_message(frame->message, size_of(frame), &strict, &answer, NULL,
                                                  &fault)) {
        complain("control plane", &fault);
        return false;
    }
    const zel_vlan_stat_bundle_vlan_counters_array *const vlans = &answer.vlan_stat_bundle.vlan_counters;
    for (unsigned i = 0; i < vlans->count; i++) {
        printf("control plane: VLAN %u has %" PRIu64 "\n", vlans->items[i].vlan_id.id,
               vlans->items[i].counter_1);
    }
    tlvmsg_release_zel_tib_vlan_stats_message(&answer);
    return true;
}

static bool run_control_plane(int link) {
    static struct frame frame;
    int taken = 0, refused = 0;
    if (!send_address(link)) {
        return false;
    }
    while (receive_frame(link, &frame) && kind_of(&frame) == COUNTERS) {
        *(take_counters(&frame) ? &taken : &refused) += 1;
    }
    return taken == 1 && refused == 2;
}

int main(void) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) {
        return EXIT_FAILURE;
    }
    const pid_t module = fork();
    if (module == 0) {
        close(ends[0]);
        return run_module(ends[1]) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    close(ends[1]);
    const bool answered = module > 0 && run_control_plane(ends[0]);
    int status = EXIT_FAILURE;
    return answered && waitpid(module, &status, 0) == module && status == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
