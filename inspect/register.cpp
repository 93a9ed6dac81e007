// Families beside the library's own.
#include "index.h"
#include "place.h"
#include "text.h"

namespace tlvmsg::inspect {

namespace {

tlvmsg_fault refusal(tlvmsg_code code, uint64_t found, uint64_t allowed, const char *name,
                     const char *other = nullptr) {
    tlvmsg_fault fault{code, 0, found, allowed, {}, {}};
    Text path(fault.path, sizeof fault.path);
    path.add(name);
    if (other != nullptr) {
        path.add(" and ").add(other);
    }
    return fault;
}

// Whether types of the one are in the way of the other's: TLVMSG_OK when they are not.
tlvmsg_fault conflict(const tlvmsg_family &family, const tlvmsg_family &there) {
    for (uint32_t i = 0; i < family.type_count; ++i) {
        if (find(there, family.types[i]->name) != nullptr) {
            return refusal(TLVMSG_NAME_TAKEN, 0, 0, family.types[i]->name);
        }
    }
    for (uint32_t i = 0; i < family.tagged_count; ++i) {
        const tlvmsg_type &type = *family.tagged[i];
        if (const tlvmsg_type *const other = find(there, type.tag); other != nullptr) {
            return refusal(TLVMSG_TAG_TAKEN, type.tag, 0, type.name, other->name);
        }
    }
    return {};
}

// Descriptors and operations look the same in all patch levels of a version.
bool fits(uint32_t version) { return version / 1000 == TLVMSG_VERSION / 1000; }

tlvmsg_fault add(tlvmsg_family &family) {
    if (!fits(family.version)) {
        return refusal(TLVMSG_OTHER_VERSION, family.version, TLVMSG_VERSION, family.name);
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
