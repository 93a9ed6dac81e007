// A JSON object in a line, member by member, of parts that are JSON already.
#pragma once

#include "base/json.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>
#include <string_view>

namespace tlvmsg::tool {

// In quotes, in ASCII; bytes that are no UTF-8 are replaced.
inline std::string json_string(std::string_view text) { return base::json_text(nlohmann::json(text)); }

class JsonLine {
public:
    JsonLine &json(std::string_view name, std::string_view value) {
        members_.append(members_.empty() ? "\"" : ",\"").append(name).append("\":").append(value);
        return *this;
    }
    JsonLine &text(std::string_view name, std::string_view value) { return json(name, json_string(value)); }
    JsonLine &number(std::string_view name, uint64_t value) { return json(name, std::to_string(value)); }

    std::string object() const { return "{" + members_ + "}"; }
    std::string line() const { return object() + "\n"; }

private:
    std::string members_;
};

} // namespace tlvmsg::tool
