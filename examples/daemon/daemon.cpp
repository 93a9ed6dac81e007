// daemon.c in C++: a daemon that watches modules. Nothing that one of them sends, or leaves unread, keeps it from serving
// the others. Standard input is the socket where it listens, as inetd hands it over; it ends when nobody can be accepted
// there. Each message has its length before it, in 4 bytes. Both sides first tell the fingerprints of what they mean: two
// messages of the library's families, and one of a family of our own, watch/watch.tlv. An alarm lights an LED.
#include <tlvmsg/ethernet.hpp>
#include <tlvmsg/frames.h>
#include <tlvmsg/tlvmsg_dispatch.hpp>
#include <tlvmsg/tlvmsg_format.hpp>
#include <tlvmsg/voice.hpp>
#include <tlvmsg/watch.hpp>

#include <cerrno>
#include <iostream>
#include <map>
#include <memory>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

enum : uint32_t { vlans = 100, led = 101 }; // the library's messages have no keys: these are ours
constexpr tlvmsg_framing framing{
    .header = 4, .length_at = 0, .most = 65536, .adjust = 0, .width = 4, .little = false, .reserved = {}};
constexpr watch_fingerprints own{.alarm = TLVMSG_FINGERPRINT_watch_alarm_message,
                                 .vlans = TLVMSG_FINGERPRINT_zel_tib_vlan_stats_message,
                                 .led = TLVMSG_FINGERPRINT_analogbri_led_control_req_message};

template <class T, auto release>
using handle = std::unique_ptr<T, decltype([](T *each) { release(each); })>;

struct peer {
    int socket;
    bool greeted = false;
    handle<tlvmsg_frames, tlvmsg_frames_free> in{tlvmsg_frames_new(&framing, nullptr, 0, nullptr)};
    handle<tlvmsg_frame_queue, tlvmsg_frame_queue_free> out{
        tlvmsg_frame_queue_new(&framing, framing.most, nullptr)};
    static constexpr uint32_t hello = tlvmsg::traits<watch_hello_message>::key;

    explicit peer(int from) : socket(from) {
        tlvmsg::owned<watch_hello_message> message;
        message->fingerprints = own;
        tell(hello, std::move(message));
    }
    ~peer() { close(socket); }

    // False of this and all below says that the peer is to go.
    template <class T>
    bool tell(uint32_t key, tlvmsg::owned<T> message) {
        message->session.msg_type = key;
        tlvmsg::fault fault;
        return tlvmsg_frame_queue_add(out.get(), &tlvmsg::traits<T>::type(), &*message, &fault) ||
               refuse(fault);
    }

    static bool refuse(const tlvmsg::fault &fault) {
        std::cout << fault << '\n';
        return false;
    }

    bool receive(const tlvmsg::dispatcher<peer &> &functions) {
        size_t size;
        tlvmsg::fault fault;
        uint8_t *room = tlvmsg_frames_room(in.get(), &size, &fault);
        const ssize_t got = room != nullptr ? recv(socket, room, size, MSG_DONTWAIT) : 0;
        if (!tlvmsg_frames_filled(in.get(), got)) {
            return got < 0 && errno == EAGAIN;
        }
        bool taken = true;
        for (const uint8_t *body; taken && tlvmsg_frames_next(in.get(), &body, &size, &fault);) {
            const std::span message(body, size);
            const auto key = tlvmsg::session_key(message);
            taken = key && (greeted || key == hello) && functions.dispatch(*key, message, *this);
        }
        return taken && (fault.code == TLVMSG_OK || refuse(fault));
    }

    bool answer(int loop, int operation) {
        size_t size;
        const uint8_t *bytes = tlvmsg_frame_queue_pending(out.get(), &size);
        epoll_event event{bytes != nullptr ? EPOLLIN | EPOLLOUT : EPOLLIN, {.fd = socket}};
        const ssize_t sent = bytes != nullptr ? send(socket, bytes, size, MSG_DONTWAIT | MSG_NOSIGNAL) : 0;
        return (tlvmsg_frame_queue_written(out.get(), sent) || errno == EAGAIN) &&
               epoll_ctl(loop, operation, socket, &event) == 0;
    }
};

tlvmsg::dispatcher<peer &> functions() {
    tlvmsg::dispatcher<peer &> all(tlvmsg::strict);
    all.on<watch_hello_message>([](const auto &hello, peer &from) {
        from.greeted = tlvmsg::equal(hello.fingerprints, own);
        std::cout << (from.greeted ? "hello\n" : "other fingerprints\n");
        return from.greeted;
    });
    all.on<watch_alarm_message>([](const auto &message, peer &from) {
        std::cout << "alarm: " << tlvmsg::text(message.alarm.text) << '\n';
        tlvmsg::owned<analogbri_led_control_req_message> red;
        red->led_control.color = 1;
        return from.tell(led, std::move(red));
    });
    all.on<zel_tib_vlan_stats_message>(vlans, [](const auto &stats, peer &) {
        std::cout << tlvmsg::items(stats.vlan_stat_bundle.vlan_counters).size() << " VLANs\n";
    });
    all.refused([](const tlvmsg::fault &fault, const auto &, peer &) { return peer::refuse(fault); });
    return all;
}

} // namespace

int main() {
    const auto all = functions();
    const int loop = epoll_create1(0);
    std::map<int, peer> peers;
    epoll_event event{EPOLLIN, {.fd = STDIN_FILENO}};
    epoll_ctl(loop, EPOLL_CTL_ADD, STDIN_FILENO, &event);
    while (epoll_wait(loop, &event, 1, -1) == 1) {
        const bool is_new = event.data.fd == STDIN_FILENO;
        const int socket = is_new ? accept(STDIN_FILENO, nullptr, nullptr) : event.data.fd;
        if (socket < 0) {
            break;
        }
        peer &ready = peers.try_emplace(socket, socket).first->second;
        if (!ready.receive(all) || !ready.answer(loop, is_new ? EPOLL_CTL_ADD : EPOLL_CTL_MOD)) {
            peers.erase(socket);
        }
    }
    return close(loop);
}
