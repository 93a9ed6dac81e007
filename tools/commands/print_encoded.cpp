#include "print_encoded.h"

#include "base/hex.h"
#include "cli/failure.h"
#include "cli/terminal.h"
#include "tools/faults/faults.h"
#include "tools/input/documents.h"
#include "tools/results.h"

#include <fmt/format.h>

#include <algorithm>
#include <unistd.h>

namespace tlvmsg::tool {

using namespace cli;

void add_output_options(Command command, OutputOptions &options) {
    const Option form =
        add_choice(command, "--out", options.form,
                   {{"auto", OutputForm::automatic},
                    {"raw", OutputForm::raw},
                    {"hex", OutputForm::hex},
                    {"json", OutputForm::json}},
                   "Raw bytes, hex, or all of it as JSON; hex on a terminal and raw elsewhere unless given");
    command
        .add_option("--pcap FILE", options.capture,
                    "Write frames to this file, as pcapng; - is standard output")
        .excludes(form);
    command.add_argument("--framing segment|skip:N|length:BYTES@OFFSET",
                         "What is before each message in these frames, as tlv decode takes it", "",
                         [&options](const std::string &text) {
                             options.framing = parse_framing(text);
                             options.for_frames = true;
                             return true;
                         });
    command.add_argument("--frame JSON",
                         "What else is in these frames where the JSON does not say it: source, source_port, "
                         "destination, destination_port, protocol, time, as tlv decode prints them",
                         "", [&options](const std::string &text) {
                             options.facts = facts_in(text);
                             options.for_frames = true;
                             return true;
                         });
}

EncodedOutput::EncodedOutput(const OutputOptions &options) : form_(options.form) {
    if (!options.capture.empty()) {
        writer_.emplace(options.capture, options.framing);
    } else if (options.for_frames) {
        throw Failure(exit_usage, "--framing and --frame say what --pcap writes");
    } else if (form_ == OutputForm::automatic) {
        form_ = isatty(STDOUT_FILENO) == 0 ? OutputForm::raw : OutputForm::hex;
    }
}

int EncodedOutput::put(const any_record &record, const FrameFacts &facts) {
    if (form_ == OutputForm::json) {
        print(value_of(to_json(record, {2, 0, {}})) + "\n");
        return exit_fine;
    }
    const auto bytes = encode(record);
    if (!bytes) {
        report(bytes.fault);
        return exit_malformed;
    }
    if (!writer_) {
        print_bytes({bytes->data(), bytes->size()});
    } else if (const char *const why = writer_->add(facts, {bytes->data(), bytes->size()})) {
        count(fmt::format("messages {}, not written", why));
    }
    return exit_fine;
}

// Raw ones stand back to back, hex has an empty line between them.
void EncodedOutput::print_bytes(Bytes bytes) {
    if (form_ == OutputForm::raw) {
        return print({reinterpret_cast<const char *>(bytes.data()), bytes.size()});
    }
    print(begun_ ? "\n" : "");
    begun_ = true;
    constexpr size_t bytes_a_line = 16;
    for (size_t at = 0; at < bytes.size(); at += bytes_a_line) {
        print(base::hex_pairs(bytes.subspan(at, std::min(bytes_a_line, bytes.size() - at))) + "\n");
    }
}

void EncodedOutput::count(const std::string &what, size_t times) {
    if (times != 0) {
        counts_[what] += times;
    }
}

void EncodedOutput::finish() {
    for (const auto &[what, times] : counts_) {
        complain(fmt::format("tlv: {}: {}", what, times));
    }
    if (writer_) {
        writer_->finish();
    }
}

} // namespace tlvmsg::tool
