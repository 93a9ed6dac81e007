// Families beside the library's own.
#include "index.h"
#include "place.h"
#include "text.h"

#include <cstring>
#include <initializer_list>

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

tlvmsg_fault name_taken(const char *name) { return refusal(TLVMSG_NAME_TAKEN, 0, 0, name); }

tlvmsg_fault tag_taken(const tlvmsg_type &type, const tlvmsg_type &other) {
    return refusal(TLVMSG_TAG_TAKEN, type.tag, 0, type.name, other.name);
}

tlvmsg_fault library_tag(const tlvmsg_type &type) {
    return refusal(TLVMSG_LIBRARY_TAG, type.tag, TLVMSG_FIRST_OWN_TAG, type.name);
}

tlvmsg_fault not_sorted(const tlvmsg_type &type, const tlvmsg_type &behind) {
    return refusal(TLVMSG_NOT_SORTED, 0, 0, type.name, behind.name);
}

bool is_tagged(const tlvmsg_type &type) {
    return type.kind == TLVMSG_ENUMERATION || type.kind == TLVMSG_STRUCTURE;
}

// What is wrong with the family's list of names, on which looking types up relies; TLVMSG_OK when nothing is.
tlvmsg_fault check_names(const tlvmsg_family &family) {
    for (uint32_t i = 0; i < family.type_count; ++i) {
        const tlvmsg_type &type = *family.types[i];
        if (is_tagged(type) && type.tag < TLVMSG_FIRST_OWN_TAG) {
            return library_tag(type);
        }
        const int order = i == 0 ? -1 : std::strcmp(family.types[i - 1]->name, type.name);
        if (order >= 0) {
            return order == 0 ? name_taken(type.name) : not_sorted(*family.types[i - 1], type);
        }
    }
    return {};
}

// The same for its list of tags.
tlvmsg_fault check_tags(const tlvmsg_family &family) {
    for (uint32_t i = 0; i < family.tagged_count; ++i) {
        const tlvmsg_type &type = *family.tagged[i];
        if (type.tag < TLVMSG_FIRST_OWN_TAG) { // a type that stands only in this list
            return library_tag(type);
        }
        if (i > 0 && family.tagged[i - 1]->tag >= type.tag) {
            const tlvmsg_type &before = *family.tagged[i - 1];
            return before.tag == type.tag ? tag_taken(before, type) : not_sorted(before, type);
        }
    }
    return {};
}

// Whether the family has a name or a tag that another one has already.
tlvmsg_fault check_against(const tlvmsg_family &there, const tlvmsg_family &family) {
    for (uint32_t i = 0; i < family.type_count; ++i) {
        if (find(there, family.types[i]->name) != nullptr) {
            return name_taken(family.types[i]->name);
        }
    }
    for (uint32_t i = 0; i < family.tagged_count; ++i) {
        if (const tlvmsg_type *const other = find(there, family.tagged[i]->tag); other != nullptr) {
            return tag_taken(*family.tagged[i], *other);
        }
    }
    return {};
}

// Descriptors and operations look the same in all patch levels of a version.
bool is_compatible(uint32_t version) { return version / 1000 == TLVMSG_VERSION / 1000; }

// Appends the family behind the last one. If another thread appends one first, this one goes behind that.
tlvmsg_fault append(tlvmsg_family &family) {
    for (tlvmsg_family *last = &tlvmsg_built_in;;) {
        if (last == &family || next(family) != nullptr) { // it is there, or is a copy of one that is
            return name_taken(family.name);
        }
        if (const tlvmsg_fault fault = check_against(*last, family); fault.code != TLVMSG_OK) {
            return fault;
        }
        tlvmsg_family *behind = nullptr;
        if (__atomic_compare_exchange_n(&last->next, &behind, &family, false, __ATOMIC_ACQ_REL,
                                        __ATOMIC_ACQUIRE)) {
            return {};
        }
        last = behind;
    }
}

tlvmsg_fault add(tlvmsg_family &family) {
    if (!is_compatible(family.version)) {
        return refusal(TLVMSG_OTHER_VERSION, family.version, TLVMSG_VERSION, family.name);
    }
    for (const auto check : {check_names, check_tags}) {
        if (const tlvmsg_fault fault = check(family); fault.code != TLVMSG_OK) {
            return fault;
        }
    }
    return append(family);
}

} // namespace

} // namespace tlvmsg::inspect

bool tlvmsg_register(tlvmsg_family *family, tlvmsg_fault *fault) {
    using namespace tlvmsg::inspect;
    const tlvmsg_fault refused = family == nullptr ? null_argument("family") : add(*family);
    set_result(fault, refused);
    return refused.code == TLVMSG_OK;
}
