// Visiting records.
#include "field.h"
#include "place.h"

namespace tlvmsg::inspect {

namespace {

class Walk {
public:
    Walk(const tlvmsg_visitor &visitor, void *context) : visitor_(visitor), context_(context) {}

    void visit(const Place &place, const void *record) const {
        const tlvmsg_type &type = *place.type;
        switch (type.kind) {
        case TLVMSG_SCALAR:
        case TLVMSG_ENUMERATION:
            return number(place, record);
        case TLVMSG_STRUCTURE:
        case TLVMSG_MESSAGE:
            return members(place, record);
        case TLVMSG_UNION:
            return alternative(place, record);
        case TLVMSG_BYTE_ARRAY:
        case TLVMSG_DYNAMIC_BYTES:
            return bytes(place, items_of(type, record));
        case TLVMSG_ELEMENT_ARRAY:
        case TLVMSG_PACKED_ARRAY:
        case TLVMSG_DYNAMIC_ELEMENTS:
            return items(place, items_of(type, record));
        }
    }

private:
    void number(const Place &place, const void *field) const {
        if (visitor_.number != nullptr) {
            visitor_.number(context_, &place, tlvmsg_load(place.type, field));
        }
    }

    void members(const Place &place, const void *record) const {
        const tlvmsg_type &type = *place.type;
        if (!enter(place, type.member_count)) {
            return;
        }
        for (uint32_t i = 0; i < type.member_count; ++i) {
            visit(inside(place, type.members[i]), at_offset(record, type.members[i].offset));
        }
        leave(place);
    }

    void alternative(const Place &place, const void *record) const {
        const tlvmsg_alternative *const chosen = chosen_in(*place.type, record);
        if (!enter(place, chosen != nullptr ? 1 : 0)) {
            return;
        }
        if (chosen != nullptr) {
            visit(inside(place, *chosen), at_offset(record, chosen->offset));
        }
        leave(place);
    }

    void items(const Place &place, const Items &there) const {
        if (!enter(place, static_cast<size_t>(there.readable))) {
            return;
        }
        for (size_t i = 0; i < there.readable; ++i) {
            visit(item_of(place, i), there.item(*place.type, i));
        }
        leave(place);
    }

    void bytes(const Place &place, const Items &there) const {
        if (visitor_.bytes != nullptr) {
            visitor_.bytes(context_, &place, there.readable > 0 ? there.first : nullptr,
                           static_cast<size_t>(there.readable));
        }
    }

    bool enter(const Place &place, size_t count) const {
        return visitor_.enter == nullptr || visitor_.enter(context_, &place, count);
    }

    void leave(const Place &place) const {
        if (visitor_.leave != nullptr) {
            visitor_.leave(context_, &place);
        }
    }

    const tlvmsg_visitor &visitor_;
    void *context_;
};

} // namespace

} // namespace tlvmsg::inspect

void tlvmsg_walk(const tlvmsg_type *type, const void *record, const tlvmsg_visitor *visitor, void *context) {
    using namespace tlvmsg::inspect;
    if (type != nullptr && record != nullptr && visitor != nullptr && reserved_bits(visitor) == 0) {
        Walk(*visitor, context).visit(whole(*type), record);
    }
}
