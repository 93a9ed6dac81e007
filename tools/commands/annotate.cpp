// annotate: every byte of a message explained.
#include "commands.h"

#include "tools/commands/message_options.h"
#include "tools/faults/faults.h"
#include "tools/output/message_line.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

#include <unistd.h>

namespace tlvmsg::tool {

namespace {

// A message's fault is in the text, where it is; standard error has it once more, for whoever looks there alone.
int annotate_message(const MessageOptions &options, const Message &message) {
    print(heading(message, options.several()) + (message.problem ? problem_lines(message) : ""));
    tlvmsg_text_options text{};
    text.color = Paint(STDOUT_FILENO).is_on();
    const tlvmsg_verdict verdict =
        print_told([&](auto sink) { return annotate(message.type, message.bytes, sink, text, type_set()); });
    if (message.problem) {
        return status_of(*message.problem);
    }
    if (verdict.fit == TLVMSG_FITS || (message.type != nullptr && verdict.fit == TLVMSG_FITS_PART)) {
        return exit_fine;
    }
    report(message.type != nullptr ? verdict.fault : incomplete_element(message, verdict.extent.consumed));
    return exit_found;
}

int run(const MessageOptions &options) {
    return for_each_message(options, typing_of(options),
                            [&](const Message &message) { return annotate_message(options, message); });
}

} // namespace

void add_annotate(Cli &cli) {
    auto [command, options] = cli.add(
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
        run);
    add_message_options(command, options, "without it, elements by their tags");
}

} // namespace tlvmsg::tool
