// Messages to standard output or to a capture file, as encode and sample put them out.
#pragma once

#include "cli/cli.h"
#include "tools/output/capture_writer.h"

#include <tlvmsg/tlvmsg_forms.hpp>

namespace tlvmsg::tool {

enum class OutputForm { automatic, raw, hex, json }; // automatic: hex on a terminal, raw elsewhere

struct OutputOptions {
    OutputForm form = OutputForm::automatic;
    std::string capture{};    // the file; empty for standard output
    tlvmsg_framing framing{}; // in the capture
    FrameFacts facts{};       // of messages that come with none
    bool for_frames = false;  // whether one of these two was given
};

void add_output_options(cli::Command command, OutputOptions &options);

class EncodedOutput {
public:
    // Throws Failure(exit_io).
    explicit EncodedOutput(const OutputOptions &options);

    // Gives the exit status: exit_malformed, reported, for a record that cannot be encoded.
    int put(const any_record &record, const FrameFacts &facts);

    // What has been left out, which finish() tells on standard error.
    void count(const std::string &what, size_t times = 1);

    // Throws Failure(exit_io).
    void finish();

private:
    void print_bytes(Bytes bytes);

    OutputForm form_;
    std::optional<CaptureWriter> writer_;
    bool begun_ = false;
    std::map<std::string, size_t> counts_;
};

} // namespace tlvmsg::tool
