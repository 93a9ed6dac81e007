// As rows of a table, a message each: a JSON object in a line, or CSV of one type.
#include "frame_line.h"
#include "printer.h"

#include "base/json.h"
#include "cli/failure.h"
#include "cli/terminal.h"
#include "tools/faults/faults.h"
#include "tools/forms.h"

#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <map>

namespace tlvmsg::tool {

using namespace cli;

namespace {

using Json = nlohmann::ordered_json;

// A name and what stands there, as JSON.
using Cells = std::vector<std::pair<std::string, std::string>>;

// A value in a message: what is between the dots of its path are objects.
struct Column {
    std::string path; // "message.led_control.color"
    const tlvmsg_type *type;
};

// An array is one column, and each alternative of a union has its own, whichever is chosen.
void add_columns(const tlvmsg_type *type, const std::string &path, std::vector<Column> &columns) {
    if (type->kind != TLVMSG_STRUCTURE && type->kind != TLVMSG_MESSAGE && type->kind != TLVMSG_UNION) {
        columns.push_back({path, type});
    }
    for (uint32_t i = 0; i < type->member_count; ++i) {
        const tlvmsg_member &member = type->members[i];
        const bool counts_next = (member.flags & TLVMSG_SHARED_WITH_NEXT) != 0 &&
                                 tlvmsg_type_is_dynamic(type->members[i + 1].type);
        if (!counts_next) {                             // as the array itself does
            const bool is_whole = *member.path == '\0'; // a union whose alternatives stand in its owner
            add_columns(member.type, is_whole ? path : path + "." + member.path, columns);
        }
    }
    for (uint32_t i = 0; i < type->alternative_count; ++i) {
        add_columns(type->alternatives[i].type, path + "." + type->alternatives[i].name, columns);
    }
}

// Null where an alternative is not chosen.
Json value_at(const Json &message, const Column &column) {
    const Json *place = &message;
    for (size_t dot = column.path.find('.'); dot != column.path.npos;) {
        const size_t end = column.path.find('.', dot + 1);
        const std::string name = column.path.substr(dot + 1, end - dot - 1);
        if (!place->is_object() || !place->contains(name)) {
            return nullptr;
        }
        place = &(*place)[name];
        dot = end;
    }
    return *place;
}

// In a column all have the same kind: what may be a name is text, and so are bytes.
std::string cell(Json value, const tlvmsg_type *type) {
    if (type->enumerator_count > 0 && value.is_number()) {
        value = value.dump();
    } else if (tlvmsg_type_is_bytes(type) && value.is_object()) {
        value = "\\x" + value.value("hex", "");
    }
    return base::json_text(value);
}

// What is known of an input: the same cells for all, whether they are captures or not.
Cells facts_of(const Input &input, const tlvmsg_type *type) {
    const FrameFacts facts = input.frame.value_or(FrameFacts{});
    const auto text = [](std::string_view value) { return value.empty() ? "null" : json_string(value); };
    const auto number = [](bool known, size_t value) { return known ? std::to_string(value) : "null"; };
    const bool is_frame = input.frame.has_value();
    const bool has_ports = facts.ports.has_value();
    const Ports ports = facts.ports.value_or(Ports{});
    return {{"file", text(input.file)},
            {"name", text(input.name)},
            {"frame", number(is_frame, facts.number)},
            {"time", is_frame ? time_text(facts) : "null"},
            {"length", number(is_frame, facts.length)},
            {"captured", number(is_frame, facts.captured)},
            {"source", text(facts.source)},
            {"source_port", number(has_ports, ports.source)},
            {"destination", text(facts.destination)},
            {"destination_port", number(has_ports, ports.destination)},
            {"protocol", text(facts.protocol)},
            {"type", text(type != nullptr ? type->name : "")}};
}

// As a field of CSV: null is empty, texts are themselves, and the rest is JSON.
std::string csv_field(const std::string &json) {
    const std::string text = json == "null"          ? ""
                             : json.starts_with('"') ? Json::parse(json).get<std::string>()
                                                     : json;
    if (text.find_first_of("\",\r\n") == text.npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    }
    return quoted + '"';
}

class RowPrinter : public Printer {
public:
    explicit RowPrinter(const tlvmsg_type *csv_type) : csv_type_(csv_type) {
        if (csv_type != nullptr) {
            Cells names;
            for (auto &[name, value] : row({}, csv_type, {}, nullptr)) {
                names.emplace_back("", json_string(name));
            }
            put(names);
        }
    }

    void message(const Input &input, const Reading &reading, const tlvmsg_verdict &verdict,
                 const any_record &record) override {
        if (csv_type_ == nullptr || csv_type_ == reading.type) {
            const size_t trailing = reading.bytes.size() - verdict.extent.consumed;
            put(row(input, reading.type, {verdict.extent.deviations, trailing},
                    Json::parse(to_json(record, 0))));
        }
    }

    size_t untyped(const Input &input, const Reading &) override {
        throw Failure(exit_usage, fmt::format("{}: a row has the columns of a type: -t TYPE", input.name));
    }

    void refused(const Input &input, const Reading &reading, const tlvmsg_fault &fault) override {
        put_error(input, reading, error_json(fault));
    }
    void problem(const Input &input, const Reading &reading) override {
        put_error(input, reading, error_json(*reading.problem));
    }

private:
    Cells row(const Input &input, const tlvmsg_type *type, std::pair<size_t, size_t> tolerated,
              const Json &message) {
        std::vector<Column> &columns = columns_[type];
        if (columns.empty()) {
            add_columns(type, "message", columns);
        }
        Cells cells = facts_of(input, type);
        cells.emplace_back("deviations", std::to_string(tolerated.first));
        cells.emplace_back("trailing_bytes", std::to_string(tolerated.second));
        for (const Column &column : columns) {
            cells.emplace_back(column.path, cell(value_at(message, column), column.type));
        }
        return cells;
    }

    void put(const Cells &cells) const {
        JsonLine line;
        std::vector<std::string> fields;
        for (const auto &[name, value] : cells) {
            csv_type_ == nullptr ? static_cast<void>(line.json(name, value))
                                 : fields.push_back(csv_field(value));
        }
        print(csv_type_ == nullptr ? line.line() : fmt::format("{}\n", fmt::join(fields, ",")));
    }

    // A table has no line for it: the exit status tells.
    void put_error(const Input &input, const Reading &reading, const Json &error) const {
        Cells cells = facts_of(input, reading.type);
        for (const auto &[name, value] : error.items()) {
            cells.emplace_back("error." + name, base::json_text(value));
        }
        if (csv_type_ == nullptr) {
            put(cells);
        }
    }

    const tlvmsg_type *csv_type_; // null: JSON
    std::map<const tlvmsg_type *, std::vector<Column>> columns_;
};

} // namespace

std::unique_ptr<Printer> make_row_printer(const PrintOptions &options) {
    return std::make_unique<RowPrinter>(options.csv_type);
}

} // namespace tlvmsg::tool
