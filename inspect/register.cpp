// Families beside the library's own.
#include "index.h"
#include "place.h"

namespace tlvmsg::inspect {

namespace {

tlvmsg_fault refusal(const char *name, tlvmsg_code code, uint64_t found, uint64_t allowed) {
    return fault_at({nullptr, nullptr, name, 0, nullptr, nullptr}, code, 0, found, allowed);
}

// Whether types of the one are in the way of the other's: TLVMSG_OK when they are not.
tlvmsg_fault conflict(const tlvmsg_family &family, const tlvmsg_family &there) {
    for (uint32_t i = 0; i < family.type_count; ++i) {
        if (find(there, family.types[i]->name) != nullptr) {
            return refusal(family.types[i]->name, TLVMSG_NAME_TAKEN, 0, 0);
        }
    }
    for (uint32_t i = 0; i < family.tagged_count; ++i) {
        const tlvmsg_type &type = *family.tagged[i];
        if (find(there, type.tag) != nullptr) {
            return refusal(type.name, TLVMSG_TAG_TAKEN, type.tag, TLVMSG_FIRST_OWN_TAG);
        }
    }
    return {};
}

// Descriptors and operations look the same in all patch levels of a version.
bool fits(uint32_t version) { return version / 1000 == TLVMSG_VERSION / 1000; }

tlvmsg_fault add(tlvmsg_family &family) {
    if (!fits(family.version)) {
        return refusal(family.name, TLVMSG_OTHER_VERSION, family.version, TLVMSG_VERSION);
    }
    for (tlvmsg_family *last = &tlvmsg_built_in;;) {
        if (const tlvmsg_fault fault = conflict(family, *last); fault.code != TLVMSG_OK) {
            return fault;
        }
        tlvmsg_family *behind = nullptr; // or what somebody else put there
        if (__atomic_compare_exchange_n(&last->next, &behind, &family, false, __ATOMIC_ACQ_REL,
                                        __ATOMIC_ACQUIRE)) {
            return {};
        }
        last = behind;
    }
}

} // namespace

} // namespace tlvmsg::inspect

bool tlvmsg_register(tlvmsg_family *family, tlvmsg_fault *fault) {
    using namespace tlvmsg::inspect;
    const tlvmsg_fault refused = family == nullptr ? null_argument("family") : add(*family);
    give(fault, refused);
    return refused.code == TLVMSG_OK;
}
