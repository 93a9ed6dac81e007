// Copying records.
#include "field.h"
#include "place.h"

using namespace tlvmsg::inspect;

namespace {

// Turns the bitwise copy of a record into one that shares no block with it. Once an allocation has failed, what
// follows is left without blocks, so that the copy can be released.
class Separation {
public:
    void separate(const tlvmsg_type &type, void *copy) {
        if (is_flat(type)) {
            return;
        }
        if (is_dynamic(type)) {
            store_pointer(type, copy, block(type, items_of(type, copy)));
        }
        for_each_holder(type, copy, 0, [&](const auto &part, void *field) { separate(part, field); });
    }

    size_t missing() const { return missing_; } // bytes that there was no memory for

private:
    // A copy of the items. One byte more is zero: readers of bytes may count on it.
    void *block(const tlvmsg_type &type, const Items &there) {
        if (there.first == nullptr || missing_ > 0) {
            return nullptr;
        }
        const size_t size = Items::size(type, there.readable);
        void *const copy = tlvmsg_allocate(size + 1);
        if (copy == nullptr) {
            missing_ = size + 1;
        } else {
            std::memcpy(copy, there.first, size);
        }
        return copy;
    }

    size_t missing_ = 0;
};

} // namespace

bool tlvmsg_copy(const tlvmsg_type *type, void *to, const void *from, tlvmsg_fault *fault) {
    if (type == nullptr || to == nullptr || from == nullptr) {
        if (type != nullptr && to != nullptr) {
            std::memset(to, 0, type->size);
        }
        set_result(fault, null_argument(type == nullptr ? "type" : to == nullptr ? "to" : "from"));
        return false;
    }
    std::memcpy(to, from, type->size);
    Separation separation;
    separation.separate(*type, to);
    if (separation.missing() > 0) {
        tlvmsg_release(type, to);
        std::memset(to, 0, type->size);
        set_result(fault, fault_at(whole(*type), TLVMSG_OUT_OF_MEMORY, 0, separation.missing(), 0));
        return false;
    }
    set_result(fault, tlvmsg_fault{});
    return true;
}
