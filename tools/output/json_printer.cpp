// As JSON: alone, or as the member of a frame's object.
#include "message_line.h"
#include "printer.h"

#include "base/hex.h"
#include "tools/results.h"
#include "tools/types/lookup.h"

namespace tlvmsg::tool {

using namespace cli;

namespace {

class JsonPrinter : public Printer {
public:
    explicit JsonPrinter(const PrintOptions &options) : options_(options) {}

    void message(const Message &message, const tlvmsg_verdict &verdict, const any_record &record) override {
        const std::string text = value_of(to_json(record, layout(message)));
        if (is_alone(message)) {
            return print(text + "\n");
        }
        JsonLine line = line_of(message);
        line.json("message", text);
        if (verdict.extent.deviations > 0) {
            line.number("deviations", verdict.extent.deviations);
            line.json("tolerated", error_line({}, verdict.extent.first_deviation).object());
        }
        if (verdict.extent.consumed < message.bytes.size()) {
            line.number("trailing_bytes", message.bytes.size() - verdict.extent.consumed);
        }
        print(line.line());
    }

    size_t untyped(const Message &message) override {
        const bool alone = is_alone(message);
        const std::string line = alone ? "" : line_of(message).object();
        print(alone ? "" : line.substr(0, line.size() - 1) + ",\"message\":");
        const size_t end = print_told(
            [&](auto sink) { return untyped_to_json(message.bytes, sink, layout(message), type_set()); });
        print(alone ? "\n" : "}\n");
        return end;
    }

    void refused(const Message &message, const tlvmsg_fault &fault) override {
        const bool partial = options_.partial && message.type != nullptr;
        const std::string text =
            partial ? value_of(partial_to_json(*message.type, message.bytes, layout(message).indent)) : "";
        if (is_alone(message)) {
            return print(text.empty() ? "" : text + "\n");
        }
        JsonLine line = line_of(message);
        if (!message.types.empty()) {
            line.json("types", nlohmann::json(names_of(message.types)).dump());
        }
        if (!text.empty()) {
            line.json("partial", text);
        }
        print(line.json("error", error_line(message.problem, fault).object()).line());
    }

private:
    // Its message is all that is printed, so that it needs no name.
    bool is_alone(const Message &message) const {
        return !message.frame && message.alone && !options_.several;
    }

    tlvmsg_json_options layout(const Message &message) const {
        return {options_.compact || !is_alone(message) ? 0U : 2U, 0, {}};
    }

    JsonLine line_of(const Message &message) const {
        JsonLine line = message_line(message, options_.several);
        if (message.type != nullptr) {
            line.text("type", message.type->name);
        }
        if (options_.bytes) {
            line.text("bytes", base::hex_digits(message.bytes));
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
