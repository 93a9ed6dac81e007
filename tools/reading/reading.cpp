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

const tlvmsg_type *named_type(const Message &message) {
    const tlvmsg_type *const type = message.type_name.empty() ? nullptr : type_by_name(message.type_name);
    if (type == nullptr && !message.type_name.empty()) {
        throw Failure(exit_malformed,
                      fmt::format("{}: no type is called '{}'", message.name, message.type_name));
    }
    return type;
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
        return {
            ToolCode::segment,
            fmt::format(
                "{} bytes of a stream that are no whole message; --framing says how messages are delimited",
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

// Whether a body of so many bytes, of which these have come, is a message that somebody configured or several that are
// known, or may be the beginning of that. What it says no to can be read all the same, where a body is known to be.
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

InputOptions configured(InputOptions options, const Typing &typing) {
    options.type = typing.type != nullptr ? typing.type : typing.of_files;
    options.framing.fits = [&typing](const FrameFacts &facts, Bytes there, size_t size) {
        return may_be_read(facts, there, size, typing);
    };
    return options;
}

// Divides what a source gives into its messages.
class Parts {
public:
    Parts(Message whole, const Typing &typing)
        : bytes_(std::exchange(whole.bytes, {})), whole_(std::move(whole)), type_(type_of(typing)),
          divided_(!whole_.problem && !(whole_.frame && (type_ != nullptr || typing.whole_frames))) {}

    std::vector<Message> all() {
        if (divided_) {
            type_ != nullptr ? cut_at_headers() : divide_all();
        }
        if (parts_.empty()) {
            add(0, bytes_.size(), whole_.problem ? nullptr : type_);
        }
        if (!parts_[0].frame && parts_.size() > 1) {
            for (Message &each : parts_) {
                each.name = fmt::format("{}@{}", each.name, each.offset);
                each.alone = false;
            }
        }
        return std::move(parts_);
    }

private:
    const tlvmsg_type *type_of(const Typing &typing) const {
        const tlvmsg_type *const type = typing.type != nullptr ? typing.type : named_type(whole_);
        return type != nullptr ? type
               : whole_.frame  ? typing.rules.type_for(*whole_.frame, bytes_)
                               : typing.of_files;
    }

    // One that has all of the bytes takes them along.
    Message &add(size_t at, size_t size, const tlvmsg_type *type) {
        const bool is_all = size == bytes_.size();
        is_all ? parts_.push_back(std::move(whole_)) : parts_.push_back(whole_);
        Message &part = parts_.back();
        const Bytes bytes = Bytes(bytes_).subspan(at, size);
        part.bytes = is_all ? std::move(bytes_) : std::vector<uint8_t>(bytes.begin(), bytes.end());
        part.offset = at;
        part.type = type;
        return part;
    }

    // Into messages of any types, which only frames are then taken for.
    void divide_all() {
        for (const tlvmsg_part &each : value_of(divide(bytes_, type_set()))) {
            Message &part = add(each.offset, each.size, nullptr);
            if (part.frame && each.type_count == 1) {
                part.type = each.types[0];
            } else if (part.frame) {
                part.types.assign(each.types, each.types + each.type_count);
                part.problem = Problem{ToolCode::ambiguous,
                                       fmt::format("{} types fit these {} bytes; -t or --type-of says which",
                                                   each.type_count, each.size)};
            }
        }
        if (parts_.empty() && whole_.frame) {
            whole_.problem = nothing_fits(*whole_.frame, bytes_);
        }
    }

    void cut_at_headers() {
        for (size_t at = 0; at < bytes_.size();) {
            const size_t size = size_of_first(Bytes(bytes_).subspan(at));
            add(at, size, type_);
            at += size;
            if (at < bytes_.size() && other_ != nullptr) {
                add(at, bytes_.size() - at, nullptr).problem = Problem{
                    ToolCode::unknown_message,
                    fmt::format("a whole {} stands behind a message of type {}", other_->name, type_->name)};
                break;
            }
        }
    }

    // Of the message that begins there; also finds whether one of another type follows.
    size_t size_of_first(Bytes rest) {
        tlvmsg_verdict verdict;
        const tlvmsg_fit fit = tlvmsg_judge(type_, rest.data(), rest.size(), nullptr, &verdict);
        const size_t consumed = fit == TLVMSG_FITS_PART ? verdict.extent.consumed : 0;
        if (fit == TLVMSG_FITS || rest.size() - consumed < base::header_size) {
            return rest.size();
        }
        const Bytes header = Bytes(bytes_).first(base::header_size);
        const auto from =
            rest.begin() + static_cast<std::ptrdiff_t>(consumed > 0 ? consumed : base::header_size);
        const bool same_tag = consumed > 0 && std::equal(from, from + 2, header.begin());
        const auto next = same_tag ? from : std::search(from, rest.end(), header.begin(), header.end());
        if (next != from && consumed > 0) {
            const auto others = value_of(divide(Bytes(from, next), type_set()));
            other_ = !others.empty() ? others[0].types[0] : nullptr;
        }
        return consumed > 0 && (other_ != nullptr || next != rest.end())
                   ? consumed
                   : static_cast<size_t>(next - rest.begin());
    }

    std::vector<uint8_t> bytes_;
    Message whole_; // without them
    const tlvmsg_type *type_;
    bool divided_;
    const tlvmsg_type *other_ = nullptr; // whose message follows
    std::vector<Message> parts_;
};

} // namespace

Messages::Messages(const std::string &path, const InputOptions &options, const Typing &typing)
    : typing_(typing), source_(path, configured(options, typing)) {}

std::optional<Message> Messages::next() {
    if (given_ == parts_.size()) {
        std::optional<Message> whole = source_.next();
        if (!whole) {
            return std::nullopt;
        }
        parts_ = Parts(std::move(*whole), typing_).all();
        given_ = 0;
    }
    Message part = std::move(parts_[given_++]);
    part.number = part.frame ? 0 : ++number_;
    return part;
}

any_record decode(const tlvmsg_type &type, const Message &message, tlvmsg_verdict &verdict) {
    const Bytes bytes = message.bytes;
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
