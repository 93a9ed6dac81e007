// annotate: every byte of a message explained.
#include "commands.h"

#include "tools/annotate.h"
#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/faults.h"
#include "tools/cli/message_options.h"
#include "tools/cli/terminal.h"

#include <memory>
#include <unistd.h>

namespace tlvmsg::tool {

namespace {

int annotate_input(const MessageOptions &options, const Input &input) {
    const Paint paint(STDOUT_FILENO);
    print(heading_for(options, input));
    tlvmsg_fault fault;
    const tlvmsg_type *const type = type_for(options, input);
    if (type == nullptr) {
        const size_t end = annotate_raw(input.bytes, paint);
        if (end == input.bytes.size()) {
            return exit_fine;
        }
        fault = incomplete_element(input, end);
    } else if (annotate(type, input.bytes, paint, fault)) {
        return exit_fine;
    }
    report(fault); // the output is its context
    return exit_found;
}

} // namespace

void add_annotate(Cli &cli) {
    const auto options = std::make_shared<MessageOptions>();
    CLI::App *const command = cli.add(
        "annotate",
        {"Explain every byte of a message",
         {"Prints offset, bytes and what they are, a line each. Deviations that decoders tolerate are marked "
          "with '! tolerated', and the fault of a broken message with '! error'; what is behind it is "
          "printed as not understood. All commands take this output as input again, its type included.",
          "Without a type the elements are named by their tags, since a tag names its enumeration or "
          "structure."},
         {{"tlv annotate -t zel_led_control led.bin", "by type"},
          {"tlv annotate dump.txt", "by tags"},
          {"tlv sample zel_led_control | tlv annotate -t 1357 > led.txt", "a message to edit in its bytes"}}},
        [options] {
            return for_each_input(*options,
                                  [&](const Input &input) { return annotate_input(*options, input); });
        });
    add_type_option(command, options->type, "without it, elements by their tags");
    add_form_option(command, options->form);
    add_files(command, options->files);
}

} // namespace tlvmsg::tool
