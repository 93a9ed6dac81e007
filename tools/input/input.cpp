#include "input.h"

#include "file.h"
#include "frame_text.h"

#include "base/element.h"
#include "base/hex.h"
#include "cli/failure.h"
#include "cli/terminal.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace tlvmsg::tool {

using namespace cli;

namespace {

std::string read_rest(std::FILE *file, const std::string &path) {
    // No message comes near; a limit keeps an endless or lying input from filling the memory.
    constexpr size_t largest_input = size_t{16} << 20;
    std::string text;
    std::array<char, 65536> buffer;
    while (const size_t size = std::fread(buffer.data(), 1, buffer.size(), file)) {
        text.append(buffer.data(), size);
        if (text.size() > largest_input) {
            throw Failure(exit_malformed,
                          fmt::format("{}: more than {} bytes", file_name(path), largest_input));
        }
    }
    if (std::ferror(file) != 0) {
        throw Failure(exit_io, fmt::format("{}: {}", file_name(path), std::strerror(errno)));
    }
    return text;
}

// Whether a capture begins here, pcap in either byte order and precision or pcapng; nothing is taken from the file,
// which need not be one that can be read twice.
bool is_capture(std::FILE *file) {
    std::array<unsigned char, 4> magic{};
    const size_t size = std::fread(magic.data(), 1, magic.size(), file);
    for (size_t i = size; i > 0; --i) {
        std::ungetc(magic[i - 1], file);
    }
    constexpr std::array<uint32_t, 7> known{0xA1B2C3D4, 0xD4C3B2A1, 0xA1B23C4D, 0x4D3CB2A1,
                                            0xA1B2CD34, 0x34CDB2A1, 0x0A0D0D0A};
    return size == magic.size() && std::find(known.begin(), known.end(), number32(magic, 0)) != known.end();
}

// Raw bytes that end in a line feed, as `echo` and editors leave it, when it is not part of the last element.
void drop_newline(std::vector<uint8_t> &bytes) {
    const size_t end = base::for_each_element(bytes, [](const base::Element &) {});
    const std::string_view rest(reinterpret_cast<const char *>(bytes.data()) + end, bytes.size() - end);
    if (rest == "\n" || rest == "\r\n") {
        bytes.resize(end);
    }
}

void drop_front(Message &message, size_t size) {
    if (size > message.bytes.size()) {
        throw Failure(exit_malformed, fmt::format("{}: --offset {}, but it has {} bytes", message.name, size,
                                                  message.bytes.size()));
    }
    message.bytes.erase(message.bytes.begin(), message.bytes.begin() + static_cast<std::ptrdiff_t>(size));
}

} // namespace

Source::Source(const std::string &path, const InputOptions &options) : file_(file_name(path)) {
    File file = open_file(path);
    if (options.form == InputForm::capture || (options.form == InputForm::detect && is_capture(file.get()))) {
        packets_ = std::make_unique<Packets>(std::move(file), file_, options);
        progress_.emplace(packets_->capture().size());
        return;
    }
    const std::string text = read_rest(file.get(), path);
    if (const std::string foreign = options.form == InputForm::detect ? foreign_format(text) : "";
        !foreign.empty()) {
        throw Failure(exit_malformed, fmt::format("{}: {}; --in raw takes it as it is", file_, foreign));
    }
    if (options.form == InputForm::raw ||
        (options.form == InputForm::detect && !tlvmsg_is_text(text.data(), text.size()))) {
        messages_.push_back({file_, file_, {text.begin(), text.end()}});
        drop_newline(messages_.back().bytes);
    } else {
        read_text(text, options);
    }
    if (!packets_ && (!options.filter.empty() || options.framing.header.header != 0)) {
        throw Failure(exit_malformed, fmt::format("{}: no capture, and --{} is for those", file_,
                                                  options.filter.empty() ? "framing" : "filter"));
    }
    for (Message &message : messages_) {
        drop_front(message, options.offset.value_or(0));
    }
}

void Source::read_text(const std::string &text, const InputOptions &options) {
    const auto found = find_hex(text, {type_set(), options.type, options.holes, {}});
    if (!found) {
        fail(found.fault, fmt::format("{}: line {}", file_, found.fault.line),
             "; --in raw takes it as it is");
    }
    if (options.form == InputForm::detect && read_frames({found->begin(), found->end()}, options)) {
        return;
    }
    const tlvmsg_hex_message *choice = nullptr; // the one before, where several may be the message
    for (const tlvmsg_hex_message &each : *found) {
        const std::string place = fmt::format("{}:{}", file_, each.line);
        if (each.kind == TLVMSG_HEX_NONE) {
            if (options.skipped) {
                complain(fmt::format("tlv: {}: no message", place));
            }
            continue;
        }
        const bool another = choice != nullptr && choice->line == each.line;
        choice = each.kind == TLVMSG_HEX_CANDIDATE ? &each : nullptr;
        if (!another) {
            messages_.push_back(
                {.file = file_, .name = place, .type_name = each.type, .alone = false, .line = each.line});
        }
        if (choice == nullptr) {
            messages_.back().bytes.assign(each.bytes, each.bytes + each.size);
            if (each.kind == TLVMSG_HEX_BROKEN && options.type == nullptr) {
                messages_.back().problem.emplace(
                    Problem{ToolCode::unknown_message, "no message type fits all of these bytes"});
            }
            continue;
        }
        std::optional<Problem> &problem = messages_.back().problem;
        const std::string before = problem ? problem->text + ", or" : "the message may be";
        const std::string bytes = base::hex_pairs({each.bytes, std::min<size_t>(each.size, 8)});
        problem.emplace(
            Problem{ToolCode::ambiguous, fmt::format("{} {} bytes {}", before, each.size, bytes)});
    }
    if (messages_.size() == 1) {
        messages_.front().alone = true;
        messages_.front().name = messages_.front().problem ? messages_.front().name : file_;
    }
}

// Whether all that the text holds are frames, which are then read as a capture's are.
bool Source::read_frames(std::span<const tlvmsg_hex_message> found, const InputOptions &options) {
    std::vector<Bytes> dumped;
    for (const tlvmsg_hex_message &each : found) {
        if (each.type[0] != '\0') {
            return false;
        }
        if (each.kind != TLVMSG_HEX_NONE) {
            dumped.emplace_back(each.bytes, each.size);
        }
    }
    const std::optional<DumpedFrames> frames = frames_of(dumped);
    if (frames) {
        packets_ = std::make_unique<Packets>(capture_of(*frames), file_, options);
        progress_.emplace(std::nullopt);
        timed_ = false;
    }
    return frames.has_value();
}

std::optional<Message> Source::next() {
    if (packets_ == nullptr) {
        return given_ < messages_.size() ? std::optional(std::move(messages_[given_++])) : std::nullopt;
    }
    std::optional<Payload> payload = packets_->next();
    if (!payload) {
        return std::nullopt;
    }
    payload->facts.timed = timed_;
    const uint64_t number = payload->facts.number;
    if (progress_->due()) {
        progress_->show(number, packets_->capture().position());
    }
    return Message{.file = file_,
                   .name = fmt::format("{}{}{}", file_, timed_ ? ':' : '#', number),
                   .bytes = std::move(payload->bytes),
                   .frame = std::move(payload->facts),
                   .problem = std::move(payload->problem),
                   .alone = false};
}

} // namespace tlvmsg::tool
