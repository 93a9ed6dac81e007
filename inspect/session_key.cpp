// The number in the session header of a message. In an object of its own, since it names a type of the schema.
#include "runtime/operations.h"

#include <tlvmsg/common.h>
#include <tlvmsg/dispatch.h>

#include <cstddef>

// The library's own object, even if the program has one of that name.
extern __attribute__((visibility("protected"))) const tlvmsg_type tlvmsg_type_of_app_sess_hdr;

namespace {

struct Number {
    bool found = false;
    uint32_t value = 0;
};

bool is_message_type(const tlvmsg_place &place) {
    return place.member != nullptr && place.member->offset == offsetof(app_sess_hdr, msg_type);
}

void look(void *context, const tlvmsg_piece *piece) {
    if (piece->kind == TLVMSG_PIECE_VALUE && is_message_type(*piece->place)) {
        *static_cast<Number *>(context) = {true, static_cast<uint32_t>(piece->value)};
    }
}

// What encoders write is read by the strict operations; whether a header that differs has the number, a trace tells.
Number number_in(const uint8_t *bytes, size_t size) {
    const tlvmsg_type &type = tlvmsg_type_of_app_sess_hdr;
    if (bytes != nullptr && type.operations != nullptr) {
        app_sess_hdr session;
        tlvmsg::Input input{bytes + size, 0};
        if (type.operations->decode(bytes, &input, &session) != nullptr) {
            return {true, session.msg_type};
        }
    }
    Number number;
    return tlvmsg_trace(&type, bytes, size, nullptr, look, &number, nullptr, nullptr) ? number : Number{};
}

} // namespace

bool tlvmsg_session_key(const uint8_t *bytes, size_t size, uint32_t *key) {
    const Number number = number_in(bytes, size);
    if (key != nullptr) {
        *key = number.value;
    }
    return number.found;
}
