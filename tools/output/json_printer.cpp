// As JSON: alone, or as the member of a frame's object.
#include "frame_line.h"
#include "printer.h"

#include "base/hex.h"
#include "cli/terminal.h"
#include "tools/faults/faults.h"
#include "tools/forms.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace tlvmsg::tool {

using namespace cli;

namespace {

class JsonPrinter : public Printer {
public:
    explicit JsonPrinter(const PrintOptions &options) : options_(options) {}

    void message(const Input &input, const Reading &reading, const tlvmsg_verdict &verdict,
                 const any_record &record) override {
        if (is_alone(input)) {
            return print(to_json(record, indent()) + "\n");
        }
        JsonLine line = line_of(input, reading);
        line.json("message", to_json(record, 0));
        if (verdict.extent.deviations > 0) {
            line.number("deviations", verdict.extent.deviations);
            line.json("tolerated", error_json(verdict.extent.first_deviation).dump());
        }
        if (verdict.extent.consumed < reading.bytes.size()) {
            line.number("trailing_bytes", reading.bytes.size() - verdict.extent.consumed);
        }
        print(line.line());
    }

    size_t untyped(const Input &input, const Reading &reading) override {
        if (is_alone(input)) {
            return print_untyped_json(reading.bytes, indent());
        }
        const std::string line = line_of(input, reading).object();
        print(line.substr(0, line.size() - 1) + ",\"message\":");
        const size_t end = print_untyped_json(reading.bytes, 0, "");
        print("}\n");
        return end;
    }

    void refused(const Input &input, const Reading &reading, const tlvmsg_fault &fault) override {
        if (!is_alone(input)) {
            JsonLine line = line_of(input, reading);
            if (options_.partial) {
                line.json("partial", partial_json(reading.type, reading.bytes, 0));
            }
            print(line.json("error", error_json(fault).dump()).line());
        } else if (options_.partial) {
            print(partial_json(reading.type, reading.bytes, indent()) + "\n");
        }
    }

    void problem(const Input &input, const Reading &reading) override {
        JsonLine line = line_of(input, reading);
        if (!reading.types.empty()) {
            std::string names;
            for (const tlvmsg_type *type : reading.types) {
                names += fmt::format("{}\"{}\"", names.empty() ? "" : ",", type->name);
            }
            line.json("types", "[" + names + "]");
        }
        print(line.json("error", error_json(*reading.problem).dump()).line());
    }

private:
    // Its message is all that is printed, so that it needs no name.
    bool is_alone(const Input &input) const { return !input.frame && input.alone && !options_.several; }

    unsigned indent() const { return options_.compact ? 0 : 2; }

    JsonLine line_of(const Input &input, const Reading &reading) const {
        JsonLine line = input_line(input, options_.several);
        if (reading.type != nullptr) {
            line.text("type", reading.type->name);
        }
        if (options_.bytes) {
            line.text("bytes", base::hex_digits(reading.bytes));
        }
        return line;
    }

    PrintOptions options_;
};

} // namespace

std::unique_ptr<Printer> make_json_printer(const PrintOptions &options) {
    return std::make_unique<JsonPrinter>(options);
}

} // namespace tlvmsg::tool
