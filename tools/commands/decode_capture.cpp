#include "decode_capture.h"

#include "tools/cli/failure.h"
#include "tools/cli/faults.h"
#include "tools/cli/message_options.h"
#include "tools/cli/terminal.h"
#include "tools/guess.h"
#include "tools/input/capture.h"
#include "tools/input/payload.h"
#include "tools/lookup.h"
#include "tools/forms.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace tlvmsg::tool {

namespace {

using Bytes = std::span<const uint8_t>;

std::string quoted(const std::string &text) {
    return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string error_fields(const tlvmsg_type *type, const tlvmsg_fault &fault) {
    return fmt::format(R"("type":"{}","error":{})", type->name, quoted(fault_text(fault)));
}

// How many guesses are no worse than the first.
size_t candidates(const std::vector<Guess> &guesses) {
    return static_cast<size_t>(std::count_if(guesses.begin(), guesses.end(), [&](const Guess &each) {
        return each.accepted && each.consumed == guesses[0].consumed &&
               each.deviations == guesses[0].deviations && each.type->kind == guesses[0].type->kind;
    }));
}

class FramePrinter {
public:
    explicit FramePrinter(const CaptureOptions &options)
        : type_(options.type.empty() ? nullptr : find_type(options.type)), offset_(options.offset) {}

    // `prefix` is what all objects begin with.
    void print_frame(const Frame &frame, int link_type, const std::string &prefix) {
        const Bytes bytes = offset_ ? frame.bytes.subspan(std::min(*offset_, frame.bytes.size()))
                                    : payload_of(link_type, frame.bytes);
        print(fmt::format("{{{}\"frame\":{},\"time\":{}.{:09},{}}}\n", prefix, frame.number, frame.seconds,
                          frame.nanoseconds, type_ != nullptr ? decoded(type_, bytes) : guessed(bytes)));
    }

    int status() const { return status_; }

private:
    std::string decoded(const tlvmsg_type *type, Bytes bytes) {
        Record record(type);
        tlvmsg_extent extent;
        tlvmsg_fault fault;
        if (!decode(record, bytes, extent, fault)) {
            status_ = exit_found;
            return error_fields(type, fault);
        }
        std::string fields =
            fmt::format(R"("type":"{}","message":{})", type->name, to_json(type, record.data(), 0));
        if (extent.deviations > 0) {
            fields += fmt::format(R"(,"deviations":{})", extent.deviations);
        }
        if (extent.consumed < bytes.size()) {
            fields += fmt::format(R"(,"trailing_bytes":{})", bytes.size() - extent.consumed);
        }
        return fields;
    }

    std::string guessed(Bytes bytes) {
        const std::vector<Guess> guesses = guess(bytes.data(), bytes.size(), 1);
        if (guesses.empty()) {
            status_ = exit_found;
            return fmt::format(R"("error":"no type begins like these {} bytes")", bytes.size());
        }
        if (!guesses[0].accepted) {
            status_ = exit_found;
            return error_fields(guesses[0].type, guesses[0].fault);
        }
        return fmt::format(R"({},"candidates":{})", decoded(guesses[0].type, bytes), candidates(guesses));
    }

    const tlvmsg_type *type_;
    std::optional<size_t> offset_;
    int status_ = exit_fine;
};

void decode_capture(const std::string &path, const CaptureOptions &options, FramePrinter &printer) {
    Capture capture(path, options.filter);
    Progress progress("frames", capture.size());
    const std::string prefix = options.files.size() > 1 ? fmt::format("\"file\":{},", quoted(path)) : "";
    while (const std::optional<Frame> frame = capture.next()) {
        printer.print_frame(*frame, capture.link_type(), prefix);
        if (progress.due()) {
            progress.show(frame->number, capture.position());
        }
    }
}

} // namespace

int decode_captures(const CaptureOptions &options) {
    FramePrinter printer(options);
    const int status = for_each_file(
        options.files, [&](const std::string &path) { decode_capture(path, options, printer); });
    return std::max(status, printer.status());
}

} // namespace tlvmsg::tool
