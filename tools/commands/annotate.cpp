// annotate: every byte of a message explained.
#include "commands.h"

#include "tools/cli/cli.h"
#include "tools/cli/failure.h"
#include "tools/cli/faults.h"
#include "tools/cli/message_options.h"
#include "tools/cli/terminal.h"
#include "tools/forms.h"

#include <memory>

namespace tlvmsg::tool {

namespace {

int annotate_input(const MessageOptions &options, const Input &input) {
    print(heading_for(options, input));
    const tlvmsg_verdict verdict = print_annotated(type_for(options, input), input.bytes);
    if (verdict.fit == TLVMSG_FITS || (verdict.type != nullptr && verdict.fit == TLVMSG_FITS_PART)) {
        return exit_fine;
    }
    // The output is its context.
    report(verdict.type != nullptr ? verdict.fault : incomplete_element(input, verdict.extent.consumed));
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
          "explained by its tags as far as that makes sense. All commands take this output as input again, "
          "its type included.",
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
