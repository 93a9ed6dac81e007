// As rows of a table, a message each: a JSON object in a line, or CSV of one type.
#include "frame_line.h"
#include "printer.h"

#include "base/json.h"
#include "tools/faults/faults.h"
#include "tools/results.h"

#include <fmt/ranges.h>

#include <algorithm>
#include <map>

namespace tlvmsg::tool {

using namespace cli;

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view whole = "message"; // what paths begin with

// A name and what stands there, as JSON.
using Cells = std::vector<std::pair<std::string, std::string>>;

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

// In a column all have the same kind: what may be a name is text, and so are bytes. Null where an alternative is not
// chosen.
std::string cell(const Json &message, const Column &column) {
    Json value = message.contains(column.place) ? message[column.place] : Json();
    if (column.type->enumerator_count > 0 && value.is_number()) {
        value = value.dump();
    } else if (tlvmsg_type_is_bytes(column.type) && value.is_object()) {
        value = "\\x" + value.value("hex", "");
    }
    return base::json_text(value);
}

// What is known of an input: the same cells for all, whether they are captures or not.
Cells facts_of(const Input &input, const tlvmsg_type *type) {
    const auto text = [](std::string_view value) { return value.empty() ? "null" : json_string(value); };
    Cells cells{{"file", text(input.file)}, {"name", text(input.name)}};
    for_each_fact(input.frame.value_or(FrameFacts{}), [&](std::string_view name, const std::string &json) {
        cells.emplace_back(name, json.empty() ? "null" : json);
    });
    cells.emplace_back("type", text(type != nullptr ? type->name : ""));
    return cells;
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
                    Json::parse(value_of(to_json(record)))));
        }
    }

    size_t untyped(const Input &input, const Reading &) override {
        throw Failure(exit_usage, fmt::format("{}: a row has the columns of a type: -t TYPE", input.name));
    }

    // A table has no line for it: the exit status tells.
    void refused(const Input &input, const Reading &reading, const tlvmsg_fault &fault) override {
        Cells cells = facts_of(input, reading.type);
        const Json error = error_json(reading.problem, fault);
        for (const auto &[name, value] : error.items()) {
            cells.emplace_back("error." + name, base::json_text(value));
        }
        if (csv_type_ == nullptr) {
            put(cells);
        }
    }

private:
    Cells row(const Input &input, const tlvmsg_type *type, std::pair<size_t, size_t> tolerated,
              const Json &message) {
        std::vector<Column> &columns = columns_[type];
        if (columns.empty()) {
            add_columns(type, std::string(whole), columns);
        }
        Cells cells = facts_of(input, type);
        cells.emplace_back("deviations", std::to_string(tolerated.first));
        cells.emplace_back("trailing_bytes", std::to_string(tolerated.second));
        for (const Column &column : columns) {
            cells.emplace_back(column.path, cell(message, column));
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

    const tlvmsg_type *csv_type_; // null: JSON
    std::map<const tlvmsg_type *, std::vector<Column>> columns_;
};

} // namespace

std::unique_ptr<Printer> make_flat_printer() { return std::make_unique<RowPrinter>(nullptr); }

std::unique_ptr<Printer> make_csv_printer(const tlvmsg_type *type) {
    return std::make_unique<RowPrinter>(type);
}

} // namespace tlvmsg::tool
