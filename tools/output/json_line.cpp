#include "json_line.h"

#include <nlohmann/json.hpp>

namespace tlvmsg::tool {

std::string json_string(std::string_view text) {
    return nlohmann::json(text).dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

JsonLine &JsonLine::json(std::string_view name, std::string_view value) {
    members_ += members_.empty() ? "\"" : ",\"";
    members_ += name;
    members_ += "\":";
    members_ += value;
    return *this;
}

} // namespace tlvmsg::tool
