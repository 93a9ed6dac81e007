#include "documents.h"

#include "file.h"

#include "base/number.h"
#include "cli/failure.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace tlvmsg::tool {

using namespace cli;

namespace {

constexpr std::string_view blanks = " \t\r\n";

// Finds where a value ends that is in brackets or quotes, character by character.
class Closing {
public:
    bool is_at(char c) {
        if (in_string_) {
            in_string_ = escaped_ || c != '"';
            escaped_ = !escaped_ && c == '\\';
            return !in_string_ && depth_ == 0;
        }
        in_string_ = c == '"';
        const bool closes = c == '}' || c == ']';
        depth_ += (c == '{' || c == '[') - closes;
        return closes && depth_ <= 0;
    }

private:
    int depth_ = 0;
    bool in_string_ = false;
    bool escaped_ = false;
};

bool is_enclosed(std::string_view text) {
    return text.starts_with('{') || text.starts_with('[') || text.starts_with('"');
}

// The value that comes next in JSON, behind blanks and separators; empty when the object or array ends there.
std::string_view take_value(std::string_view &text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n,:"), text.size()));
    size_t size = std::min(text.find_first_of(" \t\r\n,:]}"), text.size());
    if (is_enclosed(text)) {
        Closing closing;
        for (size = 0; !closing.is_at(text[size++]);) {
        }
    }
    const std::string_view value = text.substr(0, size);
    text.remove_prefix(size);
    return value;
}

[[noreturn]] void refuse(std::string_view name, std::string_view value, const char *expected) {
    throw Failure(exit_malformed, fmt::format("{}: found {:.40}, expected {}", name, value, expected));
}

uint64_t number_of(std::string_view name, std::string_view value, uint64_t most) {
    const std::optional<uint64_t> number = base::typed_number(value, most);
    return number ? *number : (refuse(name, value, "a number"), 0);
}

std::string text_of(std::string_view name, std::string_view value) {
    return value.starts_with('"') ? nlohmann::json::parse(value).get<std::string>()
                                  : (refuse(name, value, "a text"), "");
}

// Seconds with up to nine decimals; whatever else a number of JSON looks like has the precision of a double.
void take_time(std::string_view value, FrameFacts &facts) {
    const size_t point = std::min(value.find('.'), value.size());
    std::string decimals(value.substr(std::min(point + 1, value.size())));
    const auto seconds = base::typed_number(value.substr(0, point), INT64_MAX);
    decimals.resize(9, '0');
    const auto nanoseconds = base::typed_number(decimals);
    const double number = std::atof(std::string(value).c_str());
    if (seconds && nanoseconds) {
        facts.seconds = static_cast<int64_t>(*seconds);
        facts.nanoseconds = static_cast<uint32_t>(*nanoseconds);
    } else if (number >= 0 && number < 1e18) {
        facts.seconds = static_cast<int64_t>(number);
        facts.nanoseconds = static_cast<uint32_t>((number - std::floor(number)) * 1e9);
    } else {
        refuse("time", value, "seconds since 1970");
    }
}

void take_fact(std::string_view name, std::string_view value, FrameFacts &facts) {
    if (name == "frame") {
        facts.number = number_of(name, value, UINT64_MAX);
    } else if (name == "time") {
        take_time(value, facts);
    } else if (name == "source" || name == "destination" || name == "protocol") {
        (name == "source"        ? facts.source
         : name == "destination" ? facts.destination
                                 : facts.protocol) = text_of(name, value);
    } else if (name == "source_port" || name == "destination_port") {
        facts.ports = facts.ports.value_or(Ports{0, 0});
        (name == "source_port" ? facts.ports->source : facts.ports->destination) =
            static_cast<uint16_t>(number_of(name, value, UINT16_MAX));
    }
}

} // namespace

Documents::Documents(const std::string &argument)
    : text_(argument), name_("JSON"),
      file_(is_enclosed(argument)
                ? std::shared_ptr<std::FILE>(fmemopen(text_.data(), text_.size(), "rb"), std::fclose)
                : std::shared_ptr<std::FILE>(open_file(argument))) {
    if (!is_enclosed(argument)) {
        name_ = file_name(argument);
    }
}

std::optional<std::string> Documents::next() {
    constexpr size_t largest = size_t{16} << 20;
    std::string text;
    Closing closing;
    for (int c; (c = getc_unlocked(file_.get())) != EOF;) {
        const auto character = static_cast<char>(c);
        const bool blank = blanks.find(character) != blanks.npos;
        line_ += character == '\n' ? 1 : 0;
        if (text.empty() && blank) {
            continue;
        }
        first_line_ = text.empty() ? line_ : first_line_;
        if (blank && !is_enclosed(text)) {
            return text;
        }
        text += character;
        if (is_enclosed(text) && closing.is_at(character)) {
            return text;
        }
        if (text.size() > largest) {
            throw Failure(exit_malformed, fmt::format("{}: a text of more than {} bytes", place(), largest));
        }
    }
    if (std::ferror(file_.get()) != 0) {
        throw Failure(exit_io, fmt::format("{}: cannot be read", name_));
    }
    return text.empty() ? std::nullopt : std::optional(text);
}

std::string Documents::place() const { return fmt::format("{}:{}", name_, first_line_); }

std::vector<std::string_view> items_of(std::string_view array) {
    std::vector<std::string_view> items;
    array.remove_prefix(1);
    for (std::string_view item; !(item = take_value(array)).empty();) {
        items.push_back(item);
    }
    return items;
}

std::vector<std::pair<std::string_view, std::string_view>> members_of(std::string_view object) {
    std::vector<std::pair<std::string_view, std::string_view>> members;
    object.remove_prefix(1);
    for (std::string_view name; !(name = take_value(object)).empty();) {
        members.emplace_back(name.substr(1, name.size() - 2), take_value(object));
    }
    return members;
}

FrameFacts facts_of(std::string_view object, FrameFacts facts) {
    if (!object.starts_with('{') || !nlohmann::json::accept(object)) {
        refuse("facts of a frame", object, "a JSON object such as {\"destination_port\": 9000}");
    }
    for (const auto &[name, value] : members_of(object)) {
        take_fact(name, value, facts);
    }
    return facts;
}

std::optional<Decoded> decoded_of(std::string_view object, const FrameFacts &facts) {
    if (!object.starts_with('{') || !nlohmann::json::accept(object)) {
        return std::nullopt;
    }
    Decoded decoded;
    bool is_decoded = false; // rather than a message that has such members itself
    bool has_error = false;
    for (const auto &[name, value] : members_of(object)) {
        is_decoded = is_decoded || name == "frame" || name == "name" || name == "type";
        if (name == "type" && value.starts_with('"')) {
            decoded.type = text_of(name, value);
        } else if (name == "message" && value.starts_with('{')) {
            decoded.message = value;
        } else if (name == "error") {
            has_error = true;
        } else if (name == "deviations" || name == "trailing_bytes") {
            (name == "deviations" ? decoded.deviations : decoded.trailing_bytes) =
                base::typed_number(value).value_or(0);
        }
    }
    if (!is_decoded || (!decoded.message && !has_error)) {
        return std::nullopt;
    }
    decoded.facts = facts_of(object, facts);
    return decoded;
}

} // namespace tlvmsg::tool
