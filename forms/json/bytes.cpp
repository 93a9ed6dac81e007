// Bytes to JSON and JSON to bytes, by way of a record that nobody sees.
#include "forms/border/input.h"
#include "forms/json/reader.h"
#include "forms/json/writer.h"
#include "forms/record/record.h"

#include <tlvmsg/forms/bytes.h>

#include <new>

namespace tlvmsg::forms {

namespace {

// Why a call failed, in the terms of those that take bytes.
tlvmsg_fault fault_of_bytes(const tlvmsg_text_fault &failed, const tlvmsg_json_options *options) {
    const tlvmsg_code code = failed.code == TLVMSG_TEXT_NULL_ARGUMENT   ? TLVMSG_NULL_ARGUMENT
                             : failed.code == TLVMSG_TEXT_RESERVED_WORD ? TLVMSG_RESERVED_WORD
                                                                        : TLVMSG_OUT_OF_MEMORY;
    tlvmsg_fault fault{code, 0, code == TLVMSG_RESERVED_WORD ? reserved_bits(options) : 0, 0, {}, {}};
    static_assert(sizeof fault.path == sizeof failed.path);
    std::memcpy(fault.path, failed.path, sizeof fault.path);
    return fault;
}

// A record that was read and yet cannot be sent. Its place in the text is no longer known.
TextFault not_encodable(const tlvmsg_type *type, const tlvmsg_fault &fault) {
    const std::string_view path = fault.path;
    const std::string_view name = type->name;
    char message[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_message(&fault, message, sizeof message);
    return {TLVMSG_TEXT_NOT_ENCODABLE, 0, "$" + std::string(path.substr(std::min(name.size(), path.size()))),
            "cannot be encoded: " + std::string(message)};
}

uint8_t *encoded(const Record &record, size_t *size) {
    tlvmsg_fault fault;
    uint8_t *const bytes = tlvmsg_encode_alloc(record.type(), record.data(), size, &fault);
    if (bytes == nullptr && fault.code == TLVMSG_OUT_OF_MEMORY) {
        throw std::bad_alloc();
    }
    if (bytes == nullptr) {
        throw not_encodable(record.type(), fault);
    }
    return bytes;
}

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_bytes_to_json(const tlvmsg_type *type, const uint8_t *in, size_t in_len,
                          const tlvmsg_limits *limits, const tlvmsg_json_options *options, char **text,
                          size_t *length, size_t *consumed, tlvmsg_fault *fault) {
    using namespace tlvmsg::forms;
    tlvmsg_text_fault failed;
    tlvmsg_fault refused{};
    size_t end = 0;
    Call call(&failed);
    call.needs("type", type).reads("in", in, in_len);
    const bool done = hand_out_json(call, options, text, length, [&](JsonWriter &writer) {
        Record record(type);
        if (!tlvmsg_decode(type, in, in_len, limits, record.data(), &end, &refused)) {
            throw Stopped();
        }
        writer.value(type, record.data());
    });
    if (consumed != nullptr) {
        *consumed = done ? end : 0;
    }
    if (fault != nullptr) {
        *fault = failed.code != TLVMSG_TEXT_OK ? fault_of_bytes(failed, options) : refused;
    }
    return done;
}

bool tlvmsg_bytes_from_json(const tlvmsg_type *type, const char *text, size_t length,
                            const tlvmsg_limits *limits, uint8_t **bytes, size_t *size,
                            tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    const std::string_view whole = text_at(text, length);
    Call call(fault);
    call.needs("type", type).reads("text", text, length).hands_out("bytes", bytes).hands_out("size", size);
    return call.takes("limits", limits)
        .run(
            [&] {
                Record record(type);
                read_json(type, record.data(), whole, limits);
                *bytes = encoded(record, size);
            },
            whole);
}
