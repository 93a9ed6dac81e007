#include "vector_file.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace tlvmsg_test {

namespace {

constexpr std::string_view blanks = " \t\r";
constexpr std::string_view times = "×";

std::string_view trimmed(std::string_view text) {
    const size_t first = text.find_first_not_of(blanks);
    if (first == text.npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

// The text behind `word` when the text begins with it, as a word of its own.
std::optional<std::string_view> behind(std::string_view word, std::string_view text) {
    if (!text.starts_with(word)) {
        return std::nullopt;
    }
    text.remove_prefix(word.size());
    if (!text.empty() && blanks.find(text[0]) == blanks.npos) {
        return std::nullopt;
    }
    return trimmed(text);
}

// Splits at the separators that stand outside of quotes and parentheses.
std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    bool in_quotes = false;
    int depth = 0;
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        in_quotes ^= text[i] == '"';
        depth += in_quotes ? 0 : (text[i] == '(') - (text[i] == ')');
        if (text[i] == separator && !in_quotes && depth == 0) {
            parts.push_back(trimmed(text.substr(start, i - start)));
            start = i + 1;
        }
    }
    parts.push_back(trimmed(text.substr(start)));
    return parts;
}

class Parser {
public:
    explicit Parser(const std::string &name) : name_(name) {}

    std::vector<Vector> parse(std::string_view text) {
        while (!text.empty()) {
            const size_t end = std::min(text.find('\n'), text.size());
            ++line_;
            parse_line(text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        finish_vector();
        return std::move(vectors_);
    }

private:
    [[noreturn]] void fail(const std::string &message) const { throw VectorFault(place(), message); }

    std::string place() const { return name_ + ":" + std::to_string(line_); }

    void parse_line(std::string_view line) {
        line = trimmed(line);
        if (line.empty() || line[0] == '#') {
            return;
        }
        if (const auto name = behind("type", line)) {
            return begin_vector(*name);
        }
        if (vectors_.empty()) {
            fail("a vector begins with 'type'");
        }
        if (line[0] >= '0' && line[0] <= '9') {
            return add_bytes(line);
        }
        parse_directive(line);
    }

    // NAME or NAME, SIZE bytes
    void begin_vector(std::string_view text) {
        finish_vector();
        const std::string_view name = trimmed(text.substr(0, text.find(',')));
        const tlvmsg_type *type = tlvmsg_type_find(std::string(name).c_str());
        if (type == nullptr) {
            fail("no type is called " + quoted(name));
        }
        vectors_.push_back({.type = type, .place = place()});
        if (name != text) {
            const std::string_view size = trimmed(text.substr(text.find(',') + 1));
            if (!size.ends_with(" bytes")) {
                fail("not a size: " + quoted(size));
            }
            vectors_.back().size = count(trimmed(size.substr(0, size.size() - 6)));
        }
    }

    // Nothing that would be tested may be left out by oversight.
    void finish_vector() const {
        if (vectors_.empty()) {
            return;
        }
        const Vector &vector = vectors_.back();
        if (vector.direction == Direction::Both && !vector.size) {
            throw VectorFault(vector.place, "the vector states no size");
        }
        if (vector.direction == Direction::DecodeOnly && !vector.end && !vector.null) {
            throw VectorFault(vector.place, "the vector expects neither an end nor null");
        }
        const bool expects = vector.end || !vector.expectations.empty() ||
                             (vector.direction == Direction::Both && vector.null);
        if (vector.direction != Direction::DecodeOnly && expects) {
            throw VectorFault(vector.place, "only a vector for decoding expects something");
        }
        if (vector.size && *vector.size != vector.bytes.size() && !vector.null) {
            throw VectorFault(vector.place, "the vector has " + std::to_string(vector.bytes.size()) +
                                                " bytes, but says " + std::to_string(*vector.size));
        }
    }

    void parse_directive(std::string_view line) {
        Vector &vector = vectors_.back();
        if (line == "encode") {
            vector.direction = Direction::EncodeOnly;
        } else if (line == "encode null") {
            vector.direction = Direction::EncodeOnly;
            vector.null = true;
        } else if (line == "decode") {
            vector.direction = Direction::DecodeOnly;
        } else if (const auto assignments = behind("set", line)) {
            add_assignments(*assignments, vector.assignments);
        } else if (const auto expectation = behind("expect", line)) {
            parse_expectation(*expectation);
        } else {
            fail("unknown directive " + quoted(line));
        }
    }

    void parse_expectation(std::string_view text) {
        Vector &vector = vectors_.back();
        if (text == "null") {
            vector.null = true;
        } else if (const auto end = behind("end", text)) {
            vector.end = count(*end);
        } else {
            add_assignments(text, vector.expectations);
        }
    }

    void add_assignments(std::string_view text, std::vector<Assignment> &to) const {
        for (const std::string_view each : split(text, ',')) {
            to.push_back(parse_assignment(each));
        }
    }

    Assignment parse_assignment(std::string_view text) const {
        const size_t equals = text.find('=');
        if (equals == text.npos) {
            fail("'=' is missing");
        }
        return {std::string(trimmed(text.substr(0, equals))), value(trimmed(text.substr(equals + 1))),
                place()};
    }

    Value value(std::string_view text) const {
        if (text.starts_with('"') || text.ends_with(')')) {
            return bytes_value(text);
        }
        const bool negative = text.starts_with('-');
        const uint64_t magnitude = count(text.substr(negative ? 1 : 0));
        return Number{negative ? 0 - magnitude : magnitude, negative};
    }

    // "text", hex(00 01) or repeat(one of these, 1900).
    Bytes bytes_value(std::string_view text) const {
        if (text.size() >= 2 && text.starts_with('"') && text.ends_with('"')) {
            return Bytes(text.begin() + 1, text.end() - 1);
        }
        if (text.starts_with("hex(") && text.ends_with(')')) {
            return hex_bytes(text.substr(4, text.size() - 5));
        }
        if (text.starts_with("repeat(") && text.ends_with(')')) {
            const auto parts = split(text.substr(7, text.size() - 8), ',');
            if (parts.size() == 2) {
                return repeated(static_cast<size_t>(count(parts[1])), bytes_value(parts[0]));
            }
        }
        fail("not a value: " + quoted(text));
    }

    // OFFSET  BYTES  | EXPLANATION
    void add_bytes(std::string_view line) {
        const size_t bar = line.find('|');
        if (bar == line.npos) {
            fail("'|' is missing behind the bytes");
        }
        const size_t gap = line.find_first_of(blanks);
        const auto offset = static_cast<size_t>(count(line.substr(0, gap)));
        Vector &vector = vectors_.back();
        if (offset != vector.bytes.size()) {
            fail("byte " + std::to_string(vector.bytes.size()) + " comes next, not " +
                 std::to_string(offset));
        }
        vector.lines.push_back({offset, place(), std::string(trimmed(line.substr(bar + 1)))});
        vector.bytes = std::move(vector.bytes) + repeatable_bytes(trimmed(line.substr(gap, bar - gap)));
    }

    // Bytes, and groups of bytes in parentheses, each repeated when '× COUNT' follows.
    Bytes repeatable_bytes(std::string_view text) const {
        Bytes bytes;
        while (!text.empty()) {
            const bool group = text[0] == '(';
            const size_t end = std::min(text.find_first_of(group ? ")" : blanks), text.size());
            if (group && end == text.size()) {
                fail("')' is missing");
            }
            Bytes unit = hex_bytes(text.substr(group ? 1 : 0, end - (group ? 1 : 0)));
            text = trimmed(text.substr(std::min(end + 1, text.size())));
            if (text.starts_with(times)) {
                text = trimmed(text.substr(times.size()));
                const std::string_view word = text.substr(0, text.find_first_of(blanks));
                unit = repeated(static_cast<size_t>(count(word)), unit);
                text = trimmed(text.substr(word.size()));
            }
            bytes = std::move(bytes) + unit;
        }
        if (bytes.empty()) {
            fail("no bytes");
        }
        return bytes;
    }

    Bytes hex_bytes(std::string_view text) const {
        try {
            return hex(text);
        } catch (const std::invalid_argument &fault) {
            fail(fault.what());
        }
    }

    // Decimal, or hexadecimal behind 0x.
    uint64_t count(std::string_view text) const {
        const bool is_hex = text.starts_with("0x");
        const std::string_view digits = text.substr(is_hex ? 2 : 0);
        uint64_t number = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), number, is_hex ? 16 : 10);
        if (error != std::errc() || end != digits.data() + digits.size()) {
            fail("not a number: " + quoted(text));
        }
        return number;
    }

    std::string name_;
    size_t line_ = 0;
    std::vector<Vector> vectors_;
};

} // namespace

std::vector<Vector> parse_vectors(const std::string &name, std::string_view text) {
    return Parser(name).parse(text);
}

} // namespace tlvmsg_test
