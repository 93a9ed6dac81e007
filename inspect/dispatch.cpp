// Messages to the functions that take them.
#include "place.h"
#include "text.h"

#include <tlvmsg/dispatch.h>

#include <algorithm>

namespace tlvmsg::inspect {

namespace {

// The first route whose key is not below this one; the last plus one when there is none.
const tlvmsg_route *bisect(const tlvmsg_route *routes, size_t count, uint64_t key) {
    return std::lower_bound(routes, routes + count, key,
                            [](const tlvmsg_route &route, uint64_t wanted) { return route.key < wanted; });
}

// Whether there is such a route where routes that are not sorted may have it.
bool has_key(const tlvmsg_route *routes, size_t count, uint64_t key) {
    return std::any_of(routes, routes + count, [=](const tlvmsg_route &route) { return route.key == key; });
}

// Whether nothing is wrong with the route of that type, wherever it stands; else the fault says what.
bool is_sound(const tlvmsg_route &route, const tlvmsg_type *type, const char *path, tlvmsg_fault &fault) {
    const uintptr_t bits = reserved_bits(&route);
    const bool is_callable = type != nullptr && route.handle != nullptr;
    if (bits == 0 && is_callable && (route.record_size == 0 || route.record_size == type->size)) {
        return true;
    }
    fault = bits != 0      ? reserved_word(path, bits)
            : !is_callable ? null_argument(path)
                           : fault_in(path, TLVMSG_RECORD_SIZE, 0, route.record_size, type->size);
    return false;
}

const tlvmsg_type *type_of(const tlvmsg_route &route) {
    return route.type != nullptr ? route.type() : nullptr;
}

// A call of tlvmsg_dispatch, and how it can end.
struct Dispatch {
    const tlvmsg_dispatch_options &options;
    void *context;
    tlvmsg_arrival arrival;

    bool unknown() const { return options.unknown != nullptr && options.unknown(context, &arrival); }

    bool refuse(const tlvmsg_fault &fault) const {
        return options.refused != nullptr && options.refused(context, &arrival, &fault);
    }

    bool hand_to(const tlvmsg_route &route) const {
        const tlvmsg_type &type = *arrival.type;
        const size_t lost = (0 - reinterpret_cast<uintptr_t>(options.room)) & (size_t{type.alignment} - 1);
        const size_t room =
            options.room != nullptr && options.room_size > lost ? options.room_size - lost : 0;
        if (room < type.size) {
            return refuse(fault_in("room", TLVMSG_ROOM_TOO_SMALL, 0, room, type.size));
        }
        void *const record = static_cast<uint8_t *>(options.room) + lost;
        tlvmsg_fault fault;
        if (!tlvmsg_decode(&type, arrival.bytes, arrival.size, options.limits, record, nullptr, &fault)) {
            return refuse(fault);
        }
        const bool done = route.handle(context, record, &arrival);
        tlvmsg_release(&type, record);
        return done;
    }
};

bool is_sorted(const tlvmsg_route *routes, size_t last, tlvmsg_fault &fault) {
    const uint64_t before = last > 0 ? routes[last - 1].key : 0;
    if (last == 0 || before < routes[last].key) {
        return true;
    }
    char path[64];
    Text(path, sizeof path).add("routes[").add(last - 1).add("] and routes[").add(last).add("]");
    fault = fault_in(path, before == routes[last].key ? TLVMSG_KEY_TAKEN : TLVMSG_NOT_SORTED, 0, before, 0);
    return false;
}

// Whether tlvmsg_dispatch finds the route behind those before it, and can call it; makes `largest` no less than its record.
bool check(const tlvmsg_route *routes, size_t index, size_t &largest, tlvmsg_fault &fault) {
    char path[32];
    Text(path, sizeof path).add("routes[").add(index).add("]");
    const tlvmsg_type *const type = type_of(routes[index]);
    if (!is_sound(routes[index], type, path, fault) || !is_sorted(routes, index, fault)) {
        return false;
    }
    largest = type->size > largest ? type->size : largest;
    return true;
}

} // namespace

} // namespace tlvmsg::inspect

using namespace tlvmsg::inspect;

bool tlvmsg_dispatch(const tlvmsg_route *routes, size_t count, uint64_t key, const uint8_t *bytes,
                     size_t size, const tlvmsg_dispatch_options *options, void *context) {
    if (options == nullptr || (routes == nullptr && count > 0)) {
        return false;
    }
    Dispatch dispatch{*options, context, {key, bytes, size, nullptr}};
    if (const uintptr_t bits = reserved_bits(options); bits != 0) {
        return dispatch.refuse(reserved_word("options", bits));
    }
    const tlvmsg_route *const route = bisect(routes, count, key);
    if (route == routes + count || route->key != key) {
        tlvmsg_fault fault;
        const bool lost = has_key(routes, count, key) && !tlvmsg_check_routes(routes, count, nullptr, &fault);
        return lost ? dispatch.refuse(fault) : dispatch.unknown();
    }
    dispatch.arrival.type = type_of(*route);
    tlvmsg_fault fault;
    return is_sound(*route, dispatch.arrival.type, "route", fault) ? dispatch.hand_to(*route)
                                                                   : dispatch.refuse(fault);
}

bool tlvmsg_check_routes(const tlvmsg_route *routes, size_t count, size_t *room, tlvmsg_fault *fault) {
    tlvmsg_fault wrong{};
    size_t largest = 0;
    bool right = routes != nullptr || count == 0;
    if (!right) {
        wrong = null_argument("routes");
    }
    for (size_t i = 0; right && i < count; ++i) {
        right = check(routes, i, largest, wrong);
    }
    set_result(room, right ? largest : size_t{0});
    set_result(fault, wrong);
    return right;
}
