// Refused: deleted|no matching function|no viable overloaded|discards qualifiers
#include <tlvmsg/ethernet.hpp>
#include <tlvmsg/tlvmsg_format.hpp>

using Report = zel_tib_vlan_stats_message;

zel_mac_addr address();
const zel_mac_addr constant_address();

size_t read(tlvmsg::byte_view packet, tlvmsg::owned<Report> &one, const tlvmsg::owned<Report> &other);

size_t read(tlvmsg::byte_view packet, tlvmsg::owned<Report> &one, const tlvmsg::owned<Report> &other) {
    const auto kept = tlvmsg::decode<Report>(packet);
    size_t sum = tlvmsg::items(kept->vlan_stat_bundle.vlan_counters).size();
    sum += tlvmsg::decode<Report>(packet)->session.msg_type;
    const zel_mac_addr copied = **tlvmsg::decode<zel_mac_addr>(packet);
    for (const uint8_t byte : *tlvmsg::encode(copied)) {
        sum += byte;
    }
    static_assert(!std::is_reference_v<decltype(*tlvmsg::encode(copied))>);
    one->session = other->session;
#if MISTAKE == 1
    sum += tlvmsg::items(tlvmsg::decode<Report>(packet)->vlan_stat_bundle.vlan_counters).size();
#elif MISTAKE == 2
    sum += tlvmsg::bytes((*tlvmsg::decode<zel_mac_addr>(packet))->mac).size();
#elif MISTAKE == 3
    sum += tlvmsg::bytes((**tlvmsg::decode<zel_mac_addr>(packet)).mac).size();
#elif MISTAKE == 4
    sum += tlvmsg::text(address().mac).size();
#elif MISTAKE == 5
    sum += tlvmsg::bytes(constant_address().mac).size();
#elif MISTAKE == 6
    sum += tlvmsg::to_string(tlvmsg::show(address())).size();
#elif MISTAKE == 7
    *one = *other;
#elif MISTAKE == 8
    sum += (**tlvmsg::decode<Report>(packet)).session.msg_type;
#elif MISTAKE == 9
    const auto &result = *std::move(kept);
    sum += result->session.msg_type;
#endif
    return sum;
}
