#include "forms.h"

#include "tools/cli/failure.h"

#include <fmt/format.h>

#include <new>

namespace tlvmsg::tool {

namespace {

[[noreturn]] void fail(const tlvmsg_text_fault &fault, const std::string &place) {
    if (fault.code == TLVMSG_TEXT_OUT_OF_MEMORY) {
        throw std::bad_alloc();
    }
    throw Failure(exit_malformed, fmt::format("{}: {}", place, fault.message));
}

} // namespace

// What new gives is aligned for every standard type, and records are made of those.
Record::Record(const tlvmsg_type *type) : type_(type), bytes_(std::make_unique<uint8_t[]>(type->size)) {}

Record::~Record() {
    tlvmsg_release(type_, bytes_.get()); // null once moved from
}

bool decode(Record &record, std::span<const uint8_t> bytes, tlvmsg_extent &extent, tlvmsg_fault &fault) {
    const bool decoded =
        tlvmsg_verify(record.type(), bytes.data(), bytes.size(), nullptr, &extent, &fault) &&
        tlvmsg_decode(record.type(), bytes.data(), bytes.size(), nullptr, record.data(), nullptr, &fault);
    if (!decoded && fault.code == TLVMSG_OUT_OF_MEMORY) {
        throw std::bad_alloc();
    }
    return decoded;
}

std::string to_json(const tlvmsg_type *type, const void *record, unsigned indent, unsigned level) {
    const tlvmsg_json_options options{indent, level};
    char *text = nullptr;
    size_t length = 0;
    if (!tlvmsg_to_json(type, record, &options, &text, &length, nullptr)) {
        throw std::bad_alloc();
    }
    const std::unique_ptr<char, void (*)(void *)> block(text, tlvmsg_free);
    return {text, length};
}

Record from_json(const tlvmsg_type *type, std::string_view text) {
    Record record(type);
    tlvmsg_text_fault fault;
    if (!tlvmsg_from_json(type, text.data(), text.size(), nullptr, record.data(), &fault)) {
        fail(fault, fault.path);
    }
    return record;
}

List<tlvmsg_hex_message> read_hex(std::string_view text) {
    tlvmsg_hex_message *messages = nullptr;
    size_t count = 0;
    tlvmsg_text_fault fault;
    if (!tlvmsg_read_hex(text.data(), text.size(), &messages, &count, &fault)) {
        fail(fault, fmt::format("line {}", fault.line));
    }
    return {messages, count};
}

} // namespace tlvmsg::tool
