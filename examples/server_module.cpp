// server_module.c in C++: two processes and a socket between them. The control plane gives a server module its
// address, and gets the counters of its VLANs. Neither trusts the other's bytes.
//
//     c++ -std=c++20 server_module.cpp $(pkg-config --cflags --libs tlvmsg_inspect)
//
// Messages do not say which they are, nor where they end, so that each travels in a frame: 2 bytes for its kind,
// 2 for its length, both big-endian, and the message.
#include <tlvmsg/ethernet.hpp>
#include <tlvmsg/server.hpp>
#include <tlvmsg/tlvmsg_format.hpp>

#include <cstdlib>
#include <iostream>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

enum class Kind : uint8_t { Address = 1, Counters = 2 };

struct Frame {
    Kind kind;
    std::vector<uint8_t> message;
};

bool send_frame(int link, Kind kind, std::span<const uint8_t> message) {
    std::vector<uint8_t> frame = {0, static_cast<uint8_t>(kind), static_cast<uint8_t>(message.size() >> 8),
                                  static_cast<uint8_t>(message.size())};
    frame.insert(frame.end(), message.begin(), message.end());
    return message.size() <= UINT16_MAX &&
           send(link, frame.data(), frame.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(frame.size());
}

bool receive_all(int link, std::span<uint8_t> bytes) {
    return recv(link, bytes.data(), bytes.size(), MSG_WAITALL) == static_cast<ssize_t>(bytes.size());
}

bool receive_frame(int link, Frame &frame) {
    uint8_t head[4];
    if (!receive_all(link, head) || head[0] != 0) {
        return false;
    }
    frame.kind = Kind{head[1]};
    frame.message.resize(static_cast<size_t>(head[2] << 8 | head[3]));
    return receive_all(link, frame.message);
}

// ---- The module ----

// Reads a union: its selector says which alternative is there.
void take_address(const svrm_ipaddr &address) {
    if (address.ip_type == svrm_ip_type_dhcp) {
        std::cout << "module: address by DHCP\n";
    } else if (address.ip_type == svrm_ip_type_static) {
        std::cout << "module: address " << tlvmsg::show(address.addr_info.address_1) << "\n";
    }
    std::cout.flush();
}

// Fills a dynamic array: its block belongs to the record.
bool send_counters(int link) {
    tlvmsg::owned<zel_tib_vlan_stats_message> answer;
    const auto vlans = tlvmsg::resize(answer->vlan_stat_bundle.vlan_counters, 2);
    if (!vlans) {
        std::cout << "module: " << vlans.fault << "\n";
        return false;
    }
    for (uint16_t i = 0; auto &vlan : *vlans) {
        vlan.vlan_id.id = 100 + i;
        vlan.counter_1 = 1000U * ++i;
    }
    auto message = tlvmsg::encode(answer);
    if (!message) {
        std::cout << "module: " << message.fault << "\n";
        return false;
    }
    const bool sent = send_frame(link, Kind::Counters, *message);
    message->end()[-8] ^= 1; // what a bad line does
    return sent && send_frame(link, Kind::Counters, *message) &&
           send_frame(link, Kind::Counters, std::span(*message).first(message->size() - 20));
}

bool run_module(int link) {
    Frame frame;
    if (!receive_frame(link, frame) || frame.kind != Kind::Address) {
        return false;
    }
    const auto request = tlvmsg::decode<svrm_ip_addr_msg_message>(frame.message);
    if (!request) {
        std::cout << "module: " << request.fault << "\n";
        return false;
    }
    take_address(request->address);
    return send_counters(link);
}

// ---- The control plane ----

bool send_address(int link) {
    svrm_ip_addr_msg_message request{};
    auto &info = tlvmsg::choose<&svrm_ipaddr::addr_info>(request.address);
    tlvmsg::choose<&ip_address_type_union::ipv4>(info.address_1.address) = 0x0A000001;
    const auto message = tlvmsg::encode(request);
    return message && send_frame(link, Kind::Address, *message);
}

bool take_counters(std::span<const uint8_t> message) {
    const auto answer = tlvmsg::decode<zel_tib_vlan_stats_message>(message, tlvmsg::strict);
    if (!answer) {
        std::cout << "control plane: " << answer.fault << "\n";
        return false;
    }
    for (const auto &vlan : tlvmsg::items(answer->vlan_stat_bundle.vlan_counters)) {
        std::cout << "control plane: VLAN " << vlan.vlan_id.id << " has " << vlan.counter_1 << "\n";
    }
    return true;
}

bool run_control_plane(int link) {
    if (!send_address(link)) {
        return false;
    }
    int taken = 0;
    int refused = 0;
    for (Frame frame; receive_frame(link, frame) && frame.kind == Kind::Counters;) {
        ++(take_counters(frame.message) ? taken : refused);
    }
    return taken == 1 && refused == 2;
}

} // namespace

int main() {
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
