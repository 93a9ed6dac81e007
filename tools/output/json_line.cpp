#include "json_line.h"

#include "base/json.h"

#include <nlohmann/json.hpp>

namespace tlvmsg::tool {

std::string json_string(std::string_view text) { return base::json_text(nlohmann::json(text)); }

JsonLine &JsonLine::json(std::string_view name, std::string_view value) {
    members_ += members_.empty() ? "\"" : ",\"";
    members_ += name;
    members_ += "\":";
    members_ += value;
    return *this;
}

} // namespace tlvmsg::tool
