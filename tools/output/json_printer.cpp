// As JSON: alone, or as the member of a frame's object.
#include "frame_line.h"
#include "printer.h"

#include "base/hex.h"
#include "tools/faults/faults.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

namespace tlvmsg::tool {

using namespace cli;

namespace {

class JsonPrinter : public Printer {
public:
    explicit JsonPrinter(const PrintOptions &options) : options_(options) {}

    void message(const Input &input, const Reading &reading, const tlvmsg_verdict &verdict,
                 const any_record &record) override {
        const std::string text = value_of(to_json(record, layout(input)));
        if (is_alone(input)) {
            return print(text + "\n");
        }
        JsonLine line = line_of(input, reading);
        line.json("message", text);
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
        const bool alone = is_alone(input);
        const std::string line = alone ? "" : line_of(input, reading).object();
        print(alone ? "" : line.substr(0, line.size() - 1) + ",\"message\":");
        const size_t end = print_told(
            [&](auto sink) { return untyped_to_json(reading.bytes, sink, layout(input), type_set()); });
        print(alone ? "\n" : "}\n");
        return end;
    }

    void refused(const Input &input, const Reading &reading, const tlvmsg_fault &fault) override {
        const bool partial = options_.partial && reading.type != nullptr;
        const std::string text =
            partial ? value_of(partial_to_json(*reading.type, reading.bytes, layout(input).indent)) : "";
        if (is_alone(input)) {
            return print(text.empty() ? "" : text + "\n");
        }
        JsonLine line = line_of(input, reading);
        if (!reading.types.empty()) {
            nlohmann::json names;
            for (const tlvmsg_type *type : reading.types) {
                names.push_back(type->name);
            }
            line.json("types", names.dump());
        }
        if (!text.empty()) {
            line.json("partial", text);
        }
        print(line.json("error", error_json(reading.problem, fault).dump()).line());
    }

private:
    // Its message is all that is printed, so that it needs no name.
    bool is_alone(const Input &input) const { return !input.frame && input.alone && !options_.several; }

    tlvmsg_json_options layout(const Input &input) const {
        return {options_.compact || !is_alone(input) ? 0U : 2U, 0, {}};
    }

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
