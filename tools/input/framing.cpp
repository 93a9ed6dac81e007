#include "framing.h"

#include "cli/failure.h"
#include "tools/faults/faults.h"

#include <fmt/format.h>

#include <algorithm>
#include <new>
#include <utility>

namespace tlvmsg::tool {

using namespace cli;

namespace {

std::string message_of(const tlvmsg_fault &fault) {
    return fault.code == TLVMSG_TRUNCATED
               ? fmt::format("{} of a message's {} bytes", fault.found, fault.allowed)
               : fault_message(fault);
}

} // namespace

tlvmsg_framing parse_framing(const std::string &text) {
    tlvmsg_framing framing;
    tlvmsg_fault fault;
    if (!tlvmsg_framing_from_text(text.c_str(), &framing, &fault)) {
        throw Failure(exit_usage, fmt::format("framing '{:.80}': {}", text, message_of(fault)));
    }
    return framing;
}

Framer::Framer(const Framing &framing, bool begins) : framing_(framing) {
    if (framing.by_length()) {
        frames_.reset(tlvmsg_frames_new(&framing.header, nullptr, 0, nullptr));
        if (frames_ == nullptr) {
            throw std::bad_alloc();
        }
        if (!begins) {
            search();
        }
    }
}

void Framer::add(const FrameFacts &facts, Bytes bytes, const std::string &cut, Payloads &out) {
    facts_ = facts;
    if (frames_ == nullptr) {
        add_piece(bytes, cut, out);
        return;
    }
    while (!bytes.empty()) {
        size_t size = 0;
        uint8_t *const room = tlvmsg_frames_room(frames_.get(), &size, nullptr);
        if (room == nullptr) {
            throw std::bad_alloc();
        }
        const Bytes part = bytes.first(std::min(size, bytes.size()));
        std::copy(part.begin(), part.end(), room);
        tlvmsg_frames_filled(frames_.get(), static_cast<ptrdiff_t>(part.size()));
        held_ += part.size();
        bytes = bytes.subspan(part.size());
        take(out);
    }
    tell_empty(out);
    if (!cut.empty()) {
        tell_passed(out);
        tell(ToolCode::cut, cut, out);
        restart();
    }
}

// Without a length.
void Framer::add_piece(Bytes bytes, const std::string &cut, Payloads &out) {
    const size_t header = framing_.header.header;
    const bool is_whole = cut.empty() && bytes.size() >= header;
    const Bytes rest = bytes.subspan(is_whole ? header : 0);
    std::optional<Problem> problem;
    if (!is_whole) {
        problem = cut.empty() ? Problem{ToolCode::segment,
                                        fmt::format("{} of {} bytes before a message", bytes.size(), header)}
                              : Problem{ToolCode::cut, cut};
    }
    out.push_back({facts_, {rest.begin(), rest.end()}, problem});
}

void Framer::take(Payloads &out) {
    const uint8_t *body = nullptr;
    size_t size = 0;
    tlvmsg_fault fault;
    do {
        while (tlvmsg_frames_next(frames_.get(), &body, &size, &fault)) {
            held_ -= framing_.header.header + size;
            tell_passed(out);
            incomplete_ = false;
            if (size == 0) {
                ++empty_;
                continue;
            }
            tell_empty(out);
            out.push_back({facts_, {body, body + size}, {}});
        }
        if (fault.code != TLVMSG_OK) {
            tell_passed(out);
            tell(ToolCode::segment, message_of(fault), out);
            incomplete_ = fault.code == TLVMSG_TRUNCATED;
            search();
        }
    } while (fault.code != TLVMSG_OK);
    count_passed();
}

// It asks while this is where it is.
void Framer::search() {
    const auto fits = [](void *context, const uint8_t *body, size_t there, size_t size) {
        const auto &framer = *static_cast<const Framer *>(context);
        return !framer.framing_.fits || framer.framing_.fits(framer.facts_, {body, there}, size);
    };
    tlvmsg_frames_resync(frames_.get(), fits, this);
}

void Framer::finish(Payloads &out) {
    if (frames_ != nullptr) {
        tlvmsg_frames_end(frames_.get());
        take(out);
        passed_ = incomplete_ ? 0 : passed_;
        tell_passed(out);
        restart();
    }
}

// What is left has been told.
void Framer::restart() {
    tlvmsg_frames_reset(frames_.get());
    search();
    count_passed();
    passed_ = 0;
}

void Framer::count_passed() {
    const uint64_t passed = tlvmsg_frames_passed(frames_.get());
    held_ -= static_cast<size_t>(passed);
    passed_ += passed;
}

void Framer::tell_passed(Payloads &out) {
    count_passed();
    if (passed_ != 0) {
        tell(ToolCode::segment,
             fmt::format("bytes passed over without a whole message of a known type: {}", passed_), out);
    }
    passed_ = 0;
}

// However many a piece of zeros makes.
void Framer::tell_empty(Payloads &out) {
    if (empty_ != 0) {
        const Problem many{ToolCode::segment, fmt::format("messages without a byte: {}", empty_)};
        out.push_back({facts_, {}, empty_ > 1 ? std::optional(many) : std::nullopt});
    }
    empty_ = 0;
}

void Framer::tell(ToolCode code, std::string text, Payloads &out) {
    tell_empty(out);
    out.push_back({facts_, {}, Problem{code, std::move(text)}});
}

} // namespace tlvmsg::tool
