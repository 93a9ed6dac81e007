// As lines: "led_control.slot = 2", below a heading where there are several messages.
#include "message_line.h"
#include "printer.h"

#include "base/hex.h"
#include "tools/faults/faults.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

#include <fmt/format.h>

namespace tlvmsg::tool {

using namespace cli;

namespace {

class TextPrinter : public Printer {
public:
    explicit TextPrinter(const PrintOptions &options) : options_(options) {}

    void message(const Message &message, const tlvmsg_verdict &verdict, const any_record &record) override {
        print(heading(message, options_.several, message.type));
        print_told([&](auto sink) { return to_text(record, sink); });
        if (message.frame && verdict.extent.deviations > 0) {
            const tlvmsg_fault &first = verdict.extent.first_deviation;
            print(fmt::format("# tolerated[{}]: {}\n", tlvmsg_code_name(first.code), fault_message(first)));
        }
        bytes(message);
    }

    size_t untyped(const Message &message) override {
        print(heading(message, options_.several));
        return print_told([&](auto sink) { return untyped_to_text(message.bytes, sink, {}, type_set()); });
    }

    void refused(const Message &message, const tlvmsg_fault &fault) override {
        if (message.frame) {
            print(heading(message, options_.several, message.type));
            print(message.problem ? problem_lines(message) : fmt::format("# {}\n", fault_text(fault)));
        }
        bytes(message);
    }

private:
    void bytes(const Message &message) const {
        if (message.frame && options_.bytes) {
            print(fmt::format("# bytes {}\n", base::hex_digits(message.bytes)));
        }
    }

    PrintOptions options_;
};

} // namespace

std::unique_ptr<Printer> make_text_printer(const PrintOptions &options) {
    return std::make_unique<TextPrinter>(options);
}

} // namespace tlvmsg::tool
