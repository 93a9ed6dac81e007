// msgpack: structures as arrays of their fields, packed straight into the caller's buffer, and unpacked into
// objects.
#include "peer.h"

#include <msgpack.hpp>

namespace tlvmsg_bench {

namespace {

// Throws when full, as msgpack's own buffers do.
class Output {
public:
    explicit Output(uint8_t *out) : start_(out), at_(out) {}

    void write(const char *bytes, size_t size) {
        if (size > max_encoded - this->size()) {
            throw std::length_error("msgpack: the output is full");
        }
        std::memcpy(at_, bytes, size);
        at_ += size;
    }

    size_t size() const { return static_cast<size_t>(at_ - start_); }

private:
    uint8_t *start_;
    uint8_t *at_;
};

using Packer = msgpack::packer<Output>;

// The items of an array that must have so many.
const msgpack::object *items_of(const msgpack::object &object, uint32_t count) {
    if (object.type != msgpack::type::ARRAY || object.via.array.size != count) {
        throw msgpack::type_error();
    }
    return object.via.array.ptr;
}

#define ONE(FIELD, Accessor) +1
#define PACK(FIELD, Accessor) packer.pack(from.FIELD);
#define UNPACK(FIELD, Accessor) (item++)->convert(to.FIELD);

#define CONVERSIONS(RECORD, FIELDS)                                                                          \
    void pack(Packer &packer, const RECORD &from) {                                                          \
        packer.pack_array(0 FIELDS(ONE));                                                                    \
        FIELDS(PACK)                                                                                         \
    }                                                                                                        \
    void unpack(const msgpack::object &from, RECORD &to) {                                                   \
        const msgpack::object *item = items_of(from, 0 FIELDS(ONE));                                         \
        FIELDS(UNPACK)                                                                                       \
    }

CONVERSIONS(app_sess_hdr, SESSION_FIELDS)
CONVERSIONS(ifid, INTERFACE_FIELDS)
CONVERSIONS(zel_led_control, LED_CONTROL_FIELDS)
CONVERSIONS(zel_ether_dot3_stats_bundle, DOT3_FIELDS)
CONVERSIONS(zel_vlan_id, VLAN_ID_FIELDS)

void pack(Packer &packer, const zel_vlan_counters &from) {
    packer.pack_array(1 VLAN_COUNTERS_FIELDS(ONE));
    pack(packer, from.vlan_id);
    VLAN_COUNTERS_FIELDS(PACK)
}

void unpack(const msgpack::object &from, zel_vlan_counters &to) {
    const msgpack::object *item = items_of(from, 1 VLAN_COUNTERS_FIELDS(ONE));
    unpack(*item++, to.vlan_id);
    VLAN_COUNTERS_FIELDS(UNPACK)
}

void pack(Packer &packer, const zel_vlan_stat_bundle &from) {
    packer.pack_array(from.vlan_counters.count);
    for (size_t i = 0; i < from.vlan_counters.count; ++i) {
        pack(packer, from.vlan_counters.items[i]);
    }
}

template <class Record, class Body>
void pack_message(Packer &packer, const Record &from, const Body &body) {
    packer.pack_array(3);
    pack(packer, from.session);
    pack(packer, from.interface);
    pack(packer, body);
}

void pack(Packer &packer, const LedRecord &from) { pack_message(packer, from, from.led_control); }

void pack(Packer &packer, const Dot3Record &from) { pack_message(packer, from, from.dot3_stats_bundle); }

void pack(Packer &packer, const VlanRecord &from) { pack_message(packer, from, from.vlan_stat_bundle); }

void pack(Packer &packer, const ReportRecord &from) {
    const auto &buffer = from.generic_report.buffer;
    packer.pack_array(2);
    packer.pack(from.generic_report.value);
    packer.pack_bin(buffer.count);
    packer.pack_bin_body(reinterpret_cast<const char *>(buffer.bytes), buffer.count);
}

bool unpack(const msgpack::object &from, LedRecord &to) {
    const msgpack::object *items = items_of(from, 3);
    unpack(items[0], to.session);
    unpack(items[1], to.interface);
    unpack(items[2], to.led_control);
    return true;
}

bool unpack(const msgpack::object &from, Dot3Record &to) {
    const msgpack::object *items = items_of(from, 3);
    unpack(items[0], to.session);
    unpack(items[1], to.interface);
    unpack(items[2], to.dot3_stats_bundle);
    return true;
}

bool unpack(const msgpack::object &from, VlanRecord &to) {
    const msgpack::object *items = items_of(from, 3);
    unpack(items[0], to.session);
    unpack(items[1], to.interface);
    const msgpack::object &vlans = items[2];
    zel_vlan_counters *counters = nullptr;
    if (vlans.type == msgpack::type::ARRAY) {
        counters = allocate_vlans(to, vlans.via.array.size);
    }
    if (counters == nullptr) {
        return false;
    }
    for (size_t i = 0; i < vlans.via.array.size; ++i) {
        unpack(vlans.via.array.ptr[i], counters[i]);
    }
    return true;
}

bool unpack(const msgpack::object &from, ReportRecord &to) {
    const msgpack::object *items = items_of(from, 2);
    items[0].convert(to.generic_report.value);
    return items[1].type == msgpack::type::BIN && store_text(to, items[1].via.bin.ptr, items[1].via.bin.size);
}

struct Msgpack {
    static constexpr const char *name = "msgpack";

    template <class Record>
    size_t encode(const Record &record, uint8_t *out) {
        Output output(out);
        Packer packer(output);
        pack(packer, record);
        return output.size();
    }

    template <class Record>
    bool decode(const uint8_t *in, size_t size, Record &record) {
        const auto handle = msgpack::unpack(reinterpret_cast<const char *>(in), size);
        return unpack(handle.get(), record);
    }
};

} // namespace

void register_msgpack() { register_peer<Msgpack>(); }

} // namespace tlvmsg_bench
