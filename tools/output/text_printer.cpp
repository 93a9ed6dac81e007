// As lines: "led_control.slot = 2", below a heading where there are several messages.
#include "frame_line.h"
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

    void message(const Input &input, const Reading &reading, const tlvmsg_verdict &verdict,
                 const any_record &record) override {
        print(heading(input, options_.several, reading.type));
        print_told([&](auto sink) { return to_text(record, sink); });
        if (input.frame && verdict.extent.deviations > 0) {
            const tlvmsg_fault &first = verdict.extent.first_deviation;
            print(fmt::format("# tolerated[{}]: {}\n", tlvmsg_code_name(first.code), fault_message(first)));
        }
        bytes(input, reading);
    }

    size_t untyped(const Input &input, const Reading &reading) override {
        print(heading(input, options_.several));
        return print_told([&](auto sink) { return untyped_to_text(reading.bytes, sink, {}, type_set()); });
    }

    void refused(const Input &input, const Reading &reading, const tlvmsg_fault &fault) override {
        if (input.frame) {
            print(heading(input, options_.several, reading.type));
            print(reading.problem ? problem_lines(reading) : fmt::format("# {}\n", fault_text(fault)));
        }
        bytes(input, reading);
    }

private:
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
