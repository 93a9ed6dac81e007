/*
 * A daemon that watches modules: nothing that one of them sends, or leaves unread, keeps it from serving the others. Its
 * standard input is the socket where it listens, as inetd hands it over; it ends when nobody can be accepted there. Each
 * message has its length before it, in 4 bytes. Both sides first tell the fingerprints of the messages that they mean:
 * two of the library's families, and one of a family of our own, watch/watch.tlv. An alarm lights an LED.
 */
#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <tlvmsg/bounded/ethernet.h>
#include <tlvmsg/bounded/voice.h>
#include <tlvmsg/bounded/watch.h>
#include <tlvmsg/dispatch.h>
#include <tlvmsg/frames.h>
#include <unistd.h>

enum { VLANS = 100, LED = 101 }; /* the library's messages have no keys: these are ours */
static const tlvmsg_framing framing = {.header = 4, .width = 4, .most = 65536};
static const watch_hello_message own_hello = {
    .session.msg_type = TLVMSG_KEY_watch_hello_message,
    .fingerprints = {.alarm = TLVMSG_FINGERPRINT_watch_alarm_message,
                     .vlans = TLVMSG_FINGERPRINT_zel_tib_vlan_stats_message,
                     .led = TLVMSG_FINGERPRINT_analogbri_led_control_req_message}};

struct peer {
    int socket;
    bool greeted;
    tlvmsg_frames *in;
    tlvmsg_frame_queue *out;
};

static bool refuse(void *context, const tlvmsg_arrival *arrival, const tlvmsg_fault *fault) {
    char line[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_text(fault, line, sizeof line);
    return (void)context, (void)arrival, puts(line), false;
}

/* False of this and all below says that the peer is to go. */
static bool take_hello(struct peer *peer, const watch_hello_message *hello) {
    peer->greeted = tlvmsg_equal_watch_fingerprints(&hello->fingerprints, &own_hello.fingerprints);
    return puts(peer->greeted ? "hello" : "other fingerprints"), peer->greeted;
}

static bool take_alarm(struct peer *peer, const watch_alarm_message *message) {
    const analogbri_led_control_req_message red = {.session.msg_type = LED, .led_control.color = 1};
    const tlvmsg_type *type = tlvmsg_descriptor_analogbri_led_control_req_message();
    tlvmsg_fault fault;
    printf("alarm: %.*s\n", message->alarm.text.count, message->alarm.text.bytes);
    return tlvmsg_frame_queue_add(peer->out, type, &red, &fault) || refuse(peer, NULL, &fault);
}

static bool take_vlans(struct peer *peer, const zel_tib_vlan_stats_message *stats) {
    return (void)peer, printf("%u VLANs\n", stats->vlan_stat_bundle.vlan_counters.count) > 0;
}

#define ROUTES(ROUTE)                                                                                        \
    ROUTE(TLVMSG_KEY_watch_hello_message, watch_hello_message, take_hello)                                   \
    ROUTE(TLVMSG_KEY_watch_alarm_message, watch_alarm_message, take_alarm)                                   \
    ROUTE(VLANS, zel_tib_vlan_stats_message, take_vlans)
TLVMSG_ROUTES(routes, ROUTES)

static bool take(struct peer *peer, const uint8_t *body, size_t size) {
    const tlvmsg_limits strict = {.strict = true};
    union routes_room room;
    const tlvmsg_dispatch_options options = {&room, sizeof room, &strict, .refused = refuse};
    uint32_t key;
    return tlvmsg_session_key(body, size, &key) && (peer->greeted || key == TLVMSG_KEY_watch_hello_message) &&
           tlvmsg_dispatch(routes, routes_count, key, body, size, &options, peer);
}

static bool receive(struct peer *peer) {
    size_t size;
    tlvmsg_fault fault;
    uint8_t *room = tlvmsg_frames_room(peer->in, &size, &fault);
    const ssize_t got = room ? recv(peer->socket, room, size, MSG_DONTWAIT) : 0;
    if (!tlvmsg_frames_filled(peer->in, got)) {
        return got < 0 && errno == EAGAIN;
    }
    bool taken = true;
    for (const uint8_t *body; taken && tlvmsg_frames_next(peer->in, &body, &size, &fault);) {
        taken = take(peer, body, size);
    }
    return taken && (fault.code == TLVMSG_OK || refuse(peer, NULL, &fault));
}

static bool answer(struct peer *peer, int loop, int operation) {
    size_t size;
    const uint8_t *bytes = tlvmsg_frame_queue_pending(peer->out, &size);
    struct epoll_event event = {.events = bytes ? EPOLLIN | EPOLLOUT : EPOLLIN, .data.ptr = peer};
    const ssize_t sent = bytes ? send(peer->socket, bytes, size, MSG_DONTWAIT | MSG_NOSIGNAL) : 0;
    return (tlvmsg_frame_queue_written(peer->out, sent) || errno == EAGAIN) &&
           epoll_ctl(loop, operation, peer->socket, &event) == 0;
}

static struct peer *welcome(int socket) {
    struct peer *peer = socket >= 0 ? calloc(1, sizeof *peer) : NULL;
    if (peer) {
        *peer = (struct peer){.socket = socket,
                              .in = tlvmsg_frames_new(&framing, NULL, 0, NULL),
                              .out = tlvmsg_frame_queue_new(&framing, framing.most, NULL)};
        tlvmsg_frame_queue_add(peer->out, tlvmsg_descriptor_watch_hello_message(), &own_hello, NULL);
    }
    return peer;
}

static void leave(struct peer *peer) {
    tlvmsg_frames_free(peer->in);
    tlvmsg_frame_queue_free(peer->out);
    close(peer->socket);
    free(peer);
}

int main(void) {
    const int loop = epoll_create1(0);
    struct epoll_event event = {.events = EPOLLIN}; /* of no peer */
    bool listens = epoll_ctl(loop, EPOLL_CTL_ADD, STDIN_FILENO, &event) == 0;
    while (listens && epoll_wait(loop, &event, 1, -1) == 1) {
        const int operation = event.data.ptr ? EPOLL_CTL_MOD : EPOLL_CTL_ADD;
        struct peer *peer = event.data.ptr ? event.data.ptr : welcome(accept(STDIN_FILENO, NULL, NULL));
        listens = peer != NULL;
        if (listens && (!receive(peer) || !answer(peer, loop, operation))) {
            leave(peer);
        }
    }
    return close(loop);
}
