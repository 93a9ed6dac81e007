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

using Json = nlohmann::ordered_json;

bool is_enclosed(std::string_view text) {
    return text.starts_with('{') || text.starts_with('[') || text.starts_with('"');
}

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

// Seconds with nine decimals, which a double would not hold, so that the text is asked for them.
void take_time(const Json &time, std::string_view text, FrameFacts &facts) {
    const auto number = time.get<double>();
    if (!(number >= 0 && number < 1e10)) {
        throw Failure(exit_malformed,
                      fmt::format("time: found {}, expected seconds since 1970", time.dump()));
    }
    facts.seconds = static_cast<int64_t>(number);
    facts.nanoseconds = static_cast<uint32_t>((number - std::floor(number)) * 1e9);
    for (size_t at = 0; (at = text.find("\"time\"", at)) != text.npos; ++at) {
        std::string digits(text.substr(std::min(text.find_first_of("0123456789", at), text.size())));
        digits.resize(std::min(digits.find_first_not_of("0123456789."), digits.size()));
        if (std::atof(digits.c_str()) == number) { // another is a member of the message
            const size_t point = std::min(digits.find('.'), digits.size());
            facts.seconds = static_cast<int64_t>(base::number_of(digits.substr(0, point), 10).value_or(0));
            std::string decimals = digits.substr(std::min(point + 1, digits.size()));
            decimals.resize(9, '0');
            facts.nanoseconds = static_cast<uint32_t>(base::number_of(decimals, 10).value_or(0));
        }
    }
}

uint16_t port_of(const Json &json) {
    const auto port = json.get<int64_t>();
    if (!json.is_number_integer() || port < 0 || port > UINT16_MAX) {
        throw Failure(exit_malformed,
                      fmt::format("port: found {}, expected 0 to {}", json.dump(), UINT16_MAX));
    }
    return static_cast<uint16_t>(port);
}

FrameFacts facts_of(const Json &json, std::string_view text, FrameFacts facts) try {
    facts.source = json.value("source", facts.source);
    facts.destination = json.value("destination", facts.destination);
    facts.protocol = json.value("protocol", facts.protocol);
    for (const char *const name : {"source_port", "destination_port"}) {
        if (json.contains(name)) {
            facts.ports = facts.ports.value_or(made_up_ports);
            (*name == 's' ? facts.ports->source : facts.ports->destination) = port_of(json[name]);
        }
    }
    if (json.contains("time")) {
        take_time(json["time"], text, facts);
    }
    return facts;
} catch (const Json::exception &error) {
    throw Failure(exit_malformed, fmt::format("{:.40}...: {}", text, error.what()));
}

} // namespace

Documents::Documents(const std::string &argument)
    : text_(argument), name_(is_enclosed(argument) ? "JSON" : file_name(argument)),
      file_(is_enclosed(argument)
                ? std::shared_ptr<std::FILE>(fmemopen(text_.data(), text_.size(), "rb"), std::fclose)
                : std::shared_ptr<std::FILE>(open_file(argument))) {}

std::optional<std::string> Documents::next() {
    constexpr size_t largest = size_t{16} << 20;
    std::string text;
    Closing closing;
    for (int c; (c = getc_unlocked(file_.get())) != EOF;) {
        const auto character = static_cast<char>(c);
        const bool blank = std::string_view(" \t\r\n").find(character) != std::string_view::npos;
        line_ += character == '\n' ? 1 : 0;
        if (blank && !is_enclosed(text)) {
            if (text.empty()) {
                continue;
            }
            return text;
        }
        first_line_ = text.empty() ? line_ : first_line_;
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

FrameFacts facts_in(const std::string &text, FrameFacts facts) {
    const Json json = Json::parse(text, nullptr, false);
    if (!json.is_object()) {
        throw Failure(
            exit_malformed,
            fmt::format("found '{:.40}', expected JSON such as {{\"destination_port\": 9000}}", text));
    }
    const std::string_view known = " source source_port destination destination_port protocol time ";
    for (const auto &[name, value] : json.items()) {
        if (known.find(fmt::format(" {} ", name)) == known.npos) {
            throw Failure(exit_malformed, fmt::format("nothing of a frame is called '{:.40}'; there are{}",
                                                      name, known.substr(0, known.size() - 1)));
        }
    }
    return facts_of(json, text, std::move(facts));
}

Decoded decoded_of(const std::string &text, const FrameFacts &facts) {
    const Json json = Json::parse(text, nullptr, false);
    const auto has = [&](const char *name) { return json.is_object() && json.contains(name); };
    const bool is_decoded =
        has("frame") || has("name") || has("type"); // rather than a message with such members
    if (!is_decoded || (!has("message") && !has("error"))) {
        return {"", text, facts, 0, 0};
    }
    const auto number = [&](const char *name) {
        return has(name) && json[name].is_number_unsigned() ? json[name].get<uint64_t>() : 0;
    };
    return {has("type") && json["type"].is_string() ? json["type"].get<std::string>() : "",
            has("message") ? std::optional(json["message"].dump()) : std::nullopt,
            facts_of(json, text, facts), number("deviations"), number("trailing_bytes")};
}

} // namespace tlvmsg::tool
