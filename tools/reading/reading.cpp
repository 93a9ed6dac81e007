#include "reading.h"

#include "base/element.h"
#include "cli/failure.h"
#include "tools/forms.h"
#include "tools/types/lookup.h"

#include <fmt/format.h>

namespace tlvmsg::tool {

using namespace cli;

namespace {

using base::Bytes;

const tlvmsg_type *named_type(const Input &input) {
    if (input.type.empty()) {
        return nullptr;
    }
    const tlvmsg_type *const type = type_by_name(input.type);
    if (type == nullptr) {
        throw Failure(exit_malformed, fmt::format("{}: no type is called '{}'", input.name, input.type));
    }
    return type;
}

Reading tied(Bytes bytes, const tlvmsg_part &part) {
    return {
        bytes,
        nullptr,
        Problem{ToolCode::ambiguous, fmt::format("{} types fit these {} bytes; -t or --type-of says which",
                                                 part.type_count, part.size)},
        {part.types, part.types + part.type_count}};
}

// The messages that fill the payload.
std::vector<Reading> messages_in(Bytes payload) {
    std::vector<Reading> readings;
    for (const tlvmsg_part &part : divide(payload)) {
        const Bytes bytes = payload.subspan(part.offset, part.size);
        readings.push_back(part.type_count == 1 ? Reading{bytes, part.types[0]} : tied(bytes, part));
    }
    return readings;
}

// Whether a message may have begun there: its first element is one of ours, and whole.
bool begins_as_ours(Bytes payload) {
    const std::optional<base::Element> first = base::element_at(payload, 0);
    const tlvmsg_type *const type = first ? tlvmsg_type_set_by_tag(type_set(), first->tag) : nullptr;
    return type != nullptr && tlvmsg_verify(type, payload.data(), payload.size(), nullptr, nullptr, nullptr);
}

Problem nothing_fits(const FrameFacts &facts, Bytes payload) {
    const Loss loss = begins_as_ours(payload) ? Loss::possible : Loss::none;
    if (facts.protocol == "tcp") {
        return {ToolCode::segment,
                fmt::format("{} bytes of a stream that are no whole message; --framing says how messages are "
                            "delimited",
                            payload.size()),
                loss};
    }
    if (payload.empty()) {
        return {ToolCode::unknown_message, "no bytes behind the headers", loss};
    }
    const std::string protocol = facts.protocol.empty() ? "" : " of " + facts.protocol;
    return {ToolCode::unknown_message,
            fmt::format("no message type fits all of these {} bytes{}; 'tlv guess' says which come near",
                        payload.size(), protocol),
            loss};
}

} // namespace

bool may_be_read(const FrameFacts &facts, Bytes there, size_t size, const Typing &typing) {
    const tlvmsg_type *const type =
        typing.type != nullptr ? typing.type : typing.rules.type_for(facts, there);
    tlvmsg_extent extent;
    tlvmsg_fault fault;
    const bool fits =
        type != nullptr && tlvmsg_verify(type, there.data(), there.size(), nullptr, &extent, &fault);
    const bool may_fit = type != nullptr && there.size() < size && (fits || fault.code == TLVMSG_TRUNCATED);
    return may_fit || (fits && extent.consumed == size) ||
           tlvmsg_fits_messages(const_cast<tlvmsg_type_set *>(type_set()), there.data(), there.size(), size);
}

std::vector<Reading> read(const Input &input, const Typing &typing) {
    if (input.problem) {
        return {{input.bytes, nullptr, input.problem}};
    }
    const tlvmsg_type *type = typing.type != nullptr ? typing.type : named_type(input);
    if (type == nullptr && input.frame) {
        type = typing.rules.type_for(*input.frame, input.bytes);
        if (type == nullptr) {
            std::vector<Reading> readings = messages_in(input.bytes);
            if (readings.empty()) {
                readings.push_back({input.bytes, nullptr, nothing_fits(*input.frame, input.bytes)});
            }
            return readings;
        }
    }
    return {{input.bytes, type}};
}

} // namespace tlvmsg::tool
