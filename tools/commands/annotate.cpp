// annotate: every byte of a message explained.
#include "commands.h"

#include "tools/commands/message_options.h"
#include "tools/faults/faults.h"
#include "tools/output/frame_line.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

#include <unistd.h>

namespace tlvmsg::tool {

namespace {

// A message's fault is in the text, where it is; standard error has it once more, for whoever looks there alone.
int annotate_reading(const MessageOptions &options, const Input &input, const Reading &reading) {
    print(heading(input, options.files.size() > 1) + (reading.problem ? problem_lines(reading) : ""));
    tlvmsg_text_options text{};
    text.color = Paint(STDOUT_FILENO).is_on();
    const tlvmsg_verdict verdict =
        print_told([&](auto sink) { return annotate(reading.type, reading.bytes, sink, text, type_set()); });
    if (reading.problem) {
        return status_of(*reading.problem);
    }
    if (verdict.fit == TLVMSG_FITS || (reading.type != nullptr && verdict.fit == TLVMSG_FITS_PART)) {
        return exit_fine;
    }
    report(reading.type != nullptr ? verdict.fault : incomplete_element(input, verdict.extent.consumed));
    return exit_found;
}

} // namespace

void add_annotate(Cli &cli) {
    const auto options = std::make_shared<MessageOptions>();
    const Command command = cli.add(
        "annotate",
        {"Explain every byte of a message",
         {"Prints offset, bytes and what they are, a line each. Deviations that decoders tolerate are marked "
          "with '! tolerated', and the fault of a broken message with '! error'; what is behind it is "
          "explained by its tags as far as that can be. All commands take this output as input again, its "
          "type included.",
          "Without a type the elements are named by their tags, since a tag names its enumeration or "
          "structure. Of captures every message is explained, and what is no message by its tags."},
         {{"tlv annotate -t zel_led_control led.bin", "by type"},
          {"tlv annotate dump.txt", "by tags"},
          {"tlv annotate trace.pcapng", "every message of a capture"},
          {"tlv sample zel_led_control | tlv annotate -t 1357 > led.txt", "a message to edit in its bytes"}}},
        [options] {
            return for_each_reading(*options, [&](const Input &input, const Reading &reading) {
                return annotate_reading(*options, input, reading);
            });
        });
    add_message_options(command, *options, "without it, elements by their tags");
}

} // namespace tlvmsg::tool
