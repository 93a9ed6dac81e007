// As rows of a table, a message each: a JSON object in a line, or CSV of one type.
#include "message_line.h"
#include "printer.h"

#include "base/json.h"
#include "tools/results.h"

#include <tlvmsg/record.h>

#include <fmt/ranges.h>

#include <algorithm>
#include <map>

namespace tlvmsg::tool {

using namespace cli;

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view whole = "message"; // what paths begin with

// A value in a message: what is between the dots of its path are objects.
struct Column {
    std::string path; // "message.led_control.color"
    const tlvmsg_type *type;
    Json::json_pointer place; // in the message
};

// An array is one column, and each alternative of a union has its own, whichever is chosen.
void add_columns(const tlvmsg_type *type, const std::string &path, std::vector<Column> &columns) {
    if (type->kind != TLVMSG_STRUCTURE && type->kind != TLVMSG_MESSAGE && type->kind != TLVMSG_UNION) {
        std::string place = path.substr(whole.size());
        std::replace(place.begin(), place.end(), '.', '/');
        columns.push_back({path, type, Json::json_pointer(place)});
    }
    for (tlvmsg_field field{}; tlvmsg_next_field(type, nullptr, &field);) {
        if (field.alternative != nullptr || type->kind != TLVMSG_UNION ||
            path != whole) { // which lacks its selector
            add_columns(field.type, fmt::format("{}.{}", path, field.name), columns);
        }
    }
}

// In a column all have the same kind: what may be a name is text, and so are bytes. Empty where an alternative is
// not chosen.
std::string cell(const Json &message, const Column &column) {
    Json value = message.contains(column.place) ? message[column.place] : Json();
    if (column.type->enumerator_count > 0 && value.is_number()) {
        value = value.dump();
    } else if (tlvmsg_type_is_bytes(column.type) && value.is_object()) {
        value = "\\x" + value.value("hex", "");
    }
    return value.is_null() ? "" : base::json_text(value);
}

// What is known of a message: the same for all, whether they are of captures or not.
JsonLine facts_of(const Message &message) {
    JsonLine line;
    line.text("file", message.file).text("name", message.name);
    return line.facts(message.frame.value_or(FrameFacts{}))
        .json("type", message.type != nullptr ? json_string(message.type->name) : "");
}

// As a field of CSV: texts are themselves, and the rest is JSON.
std::string csv_field(const std::string &json) {
    std::string text = json.starts_with('"') ? Json::parse(json).get<std::string>() : json;
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
            const JsonLine columns = row({.type = csv_type}, {}, {});
            JsonLine names;
            for (const auto &[name, value] : columns.members()) {
                names.text("", name);
            }
            put(names);
        }
    }

    void message(const Message &message, const tlvmsg_verdict &verdict, const any_record &record) override {
        if (csv_type_ == nullptr || csv_type_ == message.type) {
            put(row(message, verdict.extent, Json::parse(value_of(to_json(record)))));
        }
    }

    size_t untyped(const Message &message) override {
        throw Failure(exit_usage, fmt::format("{}: a row has the columns of a type: -t TYPE", message.name));
    }

    // A table has no line for it: the exit status tells.
    void refused(const Message &message, const tlvmsg_fault &fault) override {
        JsonLine line = facts_of(message);
        const JsonLine error = error_line(message.problem, fault);
        for (const auto &[name, value] : error.members()) {
            line.json("error." + name, value);
        }
        if (csv_type_ == nullptr) {
            put(line);
        }
    }

private:
    JsonLine row(const Message &message, const tlvmsg_extent &extent, const Json &values) {
        std::vector<Column> &columns = columns_[message.type];
        if (columns.empty()) {
            add_columns(message.type, std::string(whole), columns);
        }
        JsonLine line = facts_of(message);
        line.number("deviations", extent.deviations);
        line.number("trailing_bytes", message.bytes.size() - extent.consumed);
        for (const Column &column : columns) {
            line.json(column.path, cell(values, column));
        }
        return line;
    }

    void put(const JsonLine &line) const {
        if (csv_type_ == nullptr) {
            return print(line.object("null") + "\n");
        }
        std::vector<std::string> fields;
        for (const auto &[name, value] : line.members()) {
            fields.push_back(csv_field(value));
        }
        print(fmt::format("{}\n", fmt::join(fields, ",")));
    }

    const tlvmsg_type *csv_type_; // null: JSON
    std::map<const tlvmsg_type *, std::vector<Column>> columns_;
};

} // namespace

std::unique_ptr<Printer> make_flat_printer() { return std::make_unique<RowPrinter>(nullptr); }

std::unique_ptr<Printer> make_csv_printer(const tlvmsg_type *type) {
    return std::make_unique<RowPrinter>(type);
}

} // namespace tlvmsg::tool
