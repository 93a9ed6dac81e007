// Text on its way to a caller's sink.
#pragma once

#include "forms/border/call.h"

#include <tlvmsg/forms/text.h>

#include <string>
#include <string_view>

namespace tlvmsg::forms {

// Collects text, and tells it in pieces that are worth a call.
class Output {
public:
    Output(tlvmsg_sink sink, void *context) : sink_(sink), context_(context) {}

    void write(std::string_view text) {
        constexpr size_t enough = 16384;
        text_ += text;
        if (text_.size() >= enough) {
            finish();
        }
    }

    void finish() {
        if (!text_.empty() && !sink_(context_, text_.data(), text_.size())) {
            throw Stopped();
        }
        text_.clear();
    }

private:
    tlvmsg_sink sink_;
    void *context_;
    std::string text_;
};

inline std::string_view whole_of(const tlvmsg_text_options *options) {
    return options != nullptr && options->whole != nullptr ? options->whole : "";
}

// Tells the sink what the work writes.
template <class Work>
bool tell(Call &call, tlvmsg_sink sink, void *context, Work work) {
    return call.needs("sink", sink).run([&] {
        Output output(sink, context);
        work(output);
        output.finish();
    });
}

} // namespace tlvmsg::forms
