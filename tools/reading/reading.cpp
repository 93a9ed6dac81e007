#include "reading.h"

#include "base/element.h"
#include "cli/failure.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

#include <fmt/format.h>

#include <algorithm>

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
    for (const tlvmsg_part &part : value_of(divide(payload, type_set()))) {
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

// Cuts a file's bytes where messages begin.
class Cutter {
public:
    Cutter(const Input &input, const tlvmsg_type *type) : input_(input), type_(type) {}

    std::vector<Input> parts() {
        for (size_t at = 0; at < input_.bytes.size();) {
            const Bytes rest = Bytes(input_.bytes).subspan(at);
            const size_t end = end_of(rest);
            add(at, end);
            at += end;
            if (at < input_.bytes.size() && other_ != nullptr) {
                add(at, input_.bytes.size() - at);
                parts_.back().problem = Problem{
                    ToolCode::unknown_message,
                    fmt::format("a whole {} stands behind a message of type {}", other_->name, type_->name)};
                break;
            }
        }
        return named();
    }

    void add(size_t at, size_t size) {
        Input part{input_.file, input_.name, {}, input_.type};
        const auto first = input_.bytes.begin() + static_cast<std::ptrdiff_t>(at);
        part.bytes.assign(first, first + static_cast<std::ptrdiff_t>(size));
        part.line = input_.line;
        part.offset = at;
        parts_.push_back(std::move(part));
    }

    std::vector<Input> named() {
        for (Input &each : parts_) {
            each.alone = input_.alone && parts_.size() == 1;
            each.name = parts_.size() == 1 ? input_.name : fmt::format("{}@{}", input_.name, each.offset);
        }
        return std::move(parts_);
    }

private:
    // Of the message that begins there.
    size_t end_of(Bytes rest) {
        tlvmsg_verdict verdict;
        const tlvmsg_fit fit = tlvmsg_judge(type_, rest.data(), rest.size(), nullptr, &verdict);
        const size_t consumed = fit == TLVMSG_FITS_PART ? verdict.extent.consumed : 0;
        if (fit == TLVMSG_FITS || rest.size() - consumed < base::header_size) {
            return rest.size();
        }
        const Bytes header = Bytes(input_.bytes).first(base::header_size);
        const auto from =
            rest.begin() + static_cast<std::ptrdiff_t>(consumed > 0 ? consumed : base::header_size);
        const bool same_tag = consumed > 0 && std::equal(from, from + 2, header.begin());
        const auto next = same_tag ? from : std::search(from, rest.end(), header.begin(), header.end());
        if (next == from && consumed > 0) {
            return consumed;
        }
        if (consumed > 0) {
            const Bytes between(rest.begin() + static_cast<std::ptrdiff_t>(consumed), next);
            const list<tlvmsg_part> others = value_of(divide(between, type_set()));
            other_ = others.size() > 0 ? others[0].types[0] : nullptr;
            if (other_ != nullptr || next != rest.end()) {
                return consumed;
            }
        }
        return static_cast<size_t>(next - rest.begin());
    }

    const Input &input_;
    const tlvmsg_type *type_;
    const tlvmsg_type *other_ = nullptr; // whose message follows
    std::vector<Input> parts_;
};

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

std::vector<Input> back_to_back(Input input, const Typing &typing) {
    std::vector<Input> parts;
    const tlvmsg_type *const type = typing.type != nullptr ? typing.type : named_type(input);
    if (!input.frame && !input.problem && type != nullptr) {
        parts = Cutter(input, type).parts();
    } else if (!input.frame && !input.problem) {
        Cutter cutter(input, nullptr);
        const list<tlvmsg_part> found = value_of(divide(input.bytes, type_set()));
        for (const tlvmsg_part &each : found) {
            cutter.add(each.offset, each.size);
        }
        parts = cutter.named();
    }
    if (parts.size() < 2) {
        parts.clear();
        parts.push_back(std::move(input));
    }
    return parts;
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

any_record decode(const tlvmsg_type &type, Bytes bytes, tlvmsg_verdict &verdict) {
    if (tlvmsg_judge(&type, bytes.data(), bytes.size(), nullptr, &verdict) == TLVMSG_FITS_NOT) {
        return {};
    }
    auto decoded = tlvmsg::decode(type, bytes);
    if (!decoded) {
        throw std::bad_alloc(); // which alone can come between
    }
    return std::move(decoded.value);
}

} // namespace tlvmsg::tool
