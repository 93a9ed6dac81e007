// As lines: "led_control.slot = 2", below a heading where there are several messages.
#include "frame_line.h"
#include "printer.h"

#include "base/hex.h"
#include "cli/terminal.h"
#include "tools/faults/faults.h"
#include "tools/forms.h"

#include <fmt/format.h>

namespace tlvmsg::tool {

using namespace cli;

namespace {

class TextPrinter : public Printer {
public:
    explicit TextPrinter(const PrintOptions &options) : options_(options) {}

    void message(const Input &input, const Reading &reading, const tlvmsg_verdict &verdict,
                 const any_record &record) override {
        heading(input, reading.type->name);
        print_text(record);
        if (input.frame && verdict.extent.deviations > 0) {
            print(fmt::format("# {}\n", tolerated_text(verdict.extent.first_deviation)));
        }
        bytes(input, reading);
    }

    size_t untyped(const Input &input, const Reading &reading) override {
        heading(input, "");
        return print_untyped_text(reading.bytes);
    }

    void refused(const Input &input, const Reading &reading, const tlvmsg_fault &fault) override {
        if (input.frame) {
            heading(input, reading.type->name);
            print(fmt::format("# {}\n", fault_text(fault)));
        }
        bytes(input, reading);
    }

    void problem(const Input &input, const Reading &reading) override {
        heading(input, "");
        print(fmt::format("# error[{}]: {}\n", code_name(reading.problem->code), reading.problem->text));
        for (const tlvmsg_type *type : reading.types) {
            print(fmt::format("#   {}\n", type->name));
        }
        bytes(input, reading);
    }

private:
    void heading(const Input &input, std::string_view type) const {
        if (input.frame) {
            print(fmt::format("# {}{}{}\n", frame_heading(input), type.empty() ? "" : ": ", type));
        } else if (options_.several || !input.alone) {
            print(fmt::format("# {}\n", input.name));
        }
    }

    void bytes(const Input &input, const Reading &reading) const {
        if (input.frame && options_.bytes) {
            print(fmt::format("# bytes {}\n", base::hex_digits(reading.bytes)));
        }
    }

    PrintOptions options_;
};

} // namespace

std::unique_ptr<Printer> make_text_printer(const PrintOptions &options) {
    return std::make_unique<TextPrinter>(options);
}

} // namespace tlvmsg::tool
