#include "decode_capture.h"

#include "tools/cli/failure.h"
#include "tools/cli/faults.h"
#include "tools/cli/message_options.h"
#include "tools/cli/terminal.h"
#include "tools/forms.h"
#include "tools/guess.h"
#include "tools/input/packets.h"
#include "tools/lookup.h"

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
        : type_(options.type.empty() ? nullptr : find_type(options.type)) {}

    // `prefix` is what all objects begin with.
    void print_frame(const Payload &payload, const std::string &prefix) {
        print(fmt::format("{{{}\"frame\":{},\"time\":{}.{:09},{}}}\n", prefix, payload.facts.number,
                          payload.facts.seconds, payload.facts.nanoseconds, fields_of(payload)));
    }

    int status() const { return status_; }

private:
    std::string fields_of(const Payload &payload) {
        if (!payload.problem.empty()) {
            status_ = exit_found;
            return fmt::format(R"("error":{{"code":"{}","text":{}}})", payload.problem, quoted(payload.text));
        }
        return type_ != nullptr ? decoded(type_, payload.bytes) : guessed(payload.bytes);
    }

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
    int status_ = exit_fine;
};

void decode_capture(const std::string &path, const CaptureOptions &options, FramePrinter &printer) {
    Packets packets(path, {options.filter, options.offset, parse_framing(options.framing)});
    Progress progress("frames", packets.size());
    const std::string prefix = options.files.size() > 1 ? fmt::format("\"file\":{},", quoted(path)) : "";
    while (const std::optional<Payload> payload = packets.next()) {
        printer.print_frame(*payload, prefix);
        if (progress.due()) {
            progress.show(payload->facts.number, packets.position());
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
