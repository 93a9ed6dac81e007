#include "forms/sample/setting.h"

#include "base/hex.h"
#include "base/json.h"
#include "base/number.h"
#include "forms/json/reader.h"

#include <tlvmsg/record.h>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace tlvmsg::forms {

namespace {

// Whether the path is that of the member, or of something in it.
bool leads_to(std::string_view path, std::string_view member) {
    return path.starts_with(member) &&
           (path.size() == member.size() || path[member.size()] == '.' || path[member.size()] == '[');
}

std::string json_of_value(const tlvmsg_type *type, std::string_view value) {
    const bool number = type->kind == TLVMSG_SCALAR || type->kind == TLVMSG_ENUMERATION;
    const auto hex = value.starts_with("0x") ? base::number_of(value.substr(2), 16) : std::nullopt;
    if (number && hex) {
        return std::to_string(*hex);
    }
    if (number && value.find_first_not_of("-0123456789") != value.npos) {
        return base::json_text(nlohmann::json(value));
    }
    if (tlvmsg_type_is_bytes(type) && !value.starts_with('"') && !value.starts_with('{')) {
        const std::vector<uint8_t> bytes(value.begin(), value.end());
        return R"({"hex":")" + base::hex_digits(bytes) + R"("})";
    }
    return std::string(value);
}

} // namespace

Settings::Settings(std::string_view text) : text_(text) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        const size_t end = std::min(line.find('='), line.size());
        settings_.push_back({line.substr(0, end), std::nullopt});
        if (end < line.size()) {
            settings_.back().value = line.substr(end + 1);
        }
        text.remove_prefix(line.size() + 1);
    }
}

const Setting *Settings::of(const std::string &path) {
    const Setting *found = nullptr;
    for (Setting &each : settings_) {
        if (each.path == path) {
            each.used = true;
            found = &each;
        }
    }
    if (!settings_.empty()) {
        members_.push_back(path);
    }
    return found;
}

const tlvmsg_alternative *Settings::alternative(const tlvmsg_type *type, const std::string &path) const {
    const std::string above = path + (path.empty() ? "" : ".");
    const tlvmsg_alternative *found = nullptr;
    for (const Setting &setting : settings_) {
        for (uint32_t i = 0; i < type->alternative_count; ++i) {
            const tlvmsg_alternative &each = type->alternatives[i];
            if (each.value_count > 0 && leads_to(setting.path, above + each.name)) {
                found = &each;
            }
        }
    }
    return found;
}

uint64_t Settings::items(const tlvmsg_type *array, const std::string &path) const {
    const uint64_t most = tlvmsg_most_items(array);
    uint64_t count = 0;
    for (const Setting &each : settings_) {
        if (each.path.starts_with(path + "[")) {
            const std::string_view digits = each.path.substr(path.size() + 1);
            const std::optional<uint64_t> index = base::number_of(digits.substr(0, digits.find(']')), 10);
            if (index && *index >= most) {
                fail(TLVMSG_TEXT_TOO_MANY, digits, path,
                     "no item " + std::to_string(*index) + ", at most " + std::to_string(most) + " fit");
            }
            count = index ? std::max(count, *index + 1) : count;
        }
    }
    return count;
}

void Settings::read(const Setting &setting, const tlvmsg_type *type, void *field) const {
    const std::string path(setting.path);
    if (!setting.value) {
        fail(TLVMSG_TEXT_SYNTAX, setting.path, path, "'=' and a value are missing");
    }
    try {
        read_json(type, field, json_of_value(type, *setting.value), nullptr);
    } catch (const TextFault &fault) {
        fail(fault.code, *setting.value, path + fault.path.substr(1), fault.message); // behind its $
    }
}

uint64_t Settings::read_count(const Setting &setting, const tlvmsg_type *array) const {
    const uint64_t most = tlvmsg_most_items(array);
    const std::string_view value = setting.value.value_or("");
    const std::optional<uint64_t> count = base::number_of(value, 10);
    if (!count || *count > most) {
        fail(TLVMSG_TEXT_WRONG_VALUE, setting.value.value_or(setting.path), std::string(setting.path),
             "found " + quoted(value) + ", expected a whole number from 0 to " + std::to_string(most));
    }
    return *count;
}

void Settings::check() const {
    for (const Setting &each : settings_) {
        if (!each.used) {
            const std::vector<std::string_view> names(members_.begin(), members_.end());
            fail(TLVMSG_TEXT_UNKNOWN_NAME, each.path, "", no_such("member", each.path, names));
        }
    }
}

void Settings::fail(tlvmsg_text_code code, std::string_view place, const std::string &path,
                    const std::string &message) const {
    throw TextFault{code, static_cast<size_t>(place.data() - text_.data()), path, message};
}

} // namespace tlvmsg::forms
