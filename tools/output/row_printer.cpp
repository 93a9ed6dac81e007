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
    std::string path; // "led_control.color"
    const tlvmsg_type *type;
};

// An array is one column, and each alternative of a union has its own, whichever is chosen.
void add_columns(const tlvmsg_type *type, const std::string &path, std::vector<Column> &columns) {
    const std::string above = path.empty() ? "" : path + ".";
    if (type->kind != TLVMSG_STRUCTURE && type->kind != TLVMSG_MESSAGE && type->kind != TLVMSG_UNION) {
        columns.push_back({path, type});
    }
    for (uint32_t i = 0; i < type->member_count; ++i) {
        const tlvmsg_member &member = type->members[i];
        const bool counts_next = (member.flags & TLVMSG_SHARED_WITH_NEXT) != 0 &&
                                 tlvmsg_type_is_dynamic(type->members[i + 1].type);
        if (!counts_next) { // as the array itself does
            add_columns(member.type, above + member.path, columns);
        }
    }
    for (uint32_t i = 0; i < type->alternative_count; ++i) {
        add_columns(type->alternatives[i].type, above + type->alternatives[i].name, columns);
    }
}

// Null where an alternative is not chosen.
Json value_at(const Json &message, const Column &column) {
    const Json *place = &message;
    for (size_t begin = 0; begin < column.path.size() && place->is_object();) {
        const size_t end = std::min(column.path.find('.', begin), column.path.size());
        const auto found = place->find(column.path.substr(begin, end - begin));
        if (found == place->end()) {
            return nullptr;
        }
        place = &*found;
        begin = end + 1;
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

class RowPrinter : public Printer {
public:
    void message(const Input &input, const Reading &reading, const tlvmsg_verdict &verdict,
                 const any_record &record) override {
        const size_t trailing = reading.bytes.size() - verdict.extent.consumed;
        put(row(input, reading.type, verdict.extent.deviations, trailing, Json::parse(to_json(record, 0))));
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

protected:
    Cells row(const Input &input, const tlvmsg_type *type, size_t deviations, size_t trailing,
              const Json &message) {
        std::vector<Column> &columns = columns_[type];
        if (columns.empty()) {
            add_columns(type, "", columns);
        }
        Cells cells = facts_of(input, type);
        cells.emplace_back("deviations", std::to_string(deviations));
        cells.emplace_back("trailing_bytes", std::to_string(trailing));
        for (const Column &column : columns) {
            const std::string path = column.path.empty() ? "" : "." + column.path;
            cells.emplace_back("message" + path, cell(value_at(message, column), column.type));
        }
        return cells;
    }

private:
    virtual void put(const Cells &cells) {
        JsonLine line;
        for (const auto &[name, value] : cells) {
            line.json(name, value);
        }
        print(line.line());
    }

    virtual void put_error(const Input &input, const Reading &reading, const nlohmann::ordered_json &error) {
        Cells cells = facts_of(input, reading.type);
        for (const auto &[name, value] : error.items()) {
            cells.emplace_back("error." + name, base::json_text(value));
        }
        put(cells);
    }

    std::map<const tlvmsg_type *, std::vector<Column>> columns_;
};

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

class CsvPrinter : public RowPrinter {
public:
    explicit CsvPrinter(const tlvmsg_type *type) : type_(type) {
        std::vector<std::string> names;
        for (const auto &[name, value] : row({}, type, 0, 0, nullptr)) {
            names.push_back(name);
        }
        print(fmt::format("{}\n", fmt::join(names, ",")));
    }

    // What is of another type, or no message, has no line: the exit status tells.
    void message(const Input &input, const Reading &reading, const tlvmsg_verdict &verdict,
                 const any_record &record) override {
        if (reading.type == type_) {
            RowPrinter::message(input, reading, verdict, record);
        }
    }

private:
    void put(const Cells &cells) override {
        std::vector<std::string> fields;
        for (const auto &[name, value] : cells) {
            fields.push_back(csv_field(value));
        }
        print(fmt::format("{}\n", fmt::join(fields, ",")));
    }

    void put_error(const Input &, const Reading &, const nlohmann::ordered_json &) override {}

    const tlvmsg_type *type_;
};

} // namespace

std::unique_ptr<Printer> make_row_printer(const PrintOptions &options) {
    if (options.form == PrintForm::csv) {
        return std::make_unique<CsvPrinter>(options.csv_type);
    }
    return std::make_unique<RowPrinter>();
}

} // namespace tlvmsg::tool
