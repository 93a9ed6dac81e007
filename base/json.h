// JSON as text.
#pragma once

#include <string>

namespace tlvmsg::base {

// In ASCII alone: no text that stands in it, whoever wrote that, moves a terminal's cursor or turns its lines around. What
// is no UTF-8 is replaced. In one line unless it is indented by so many blanks a level.
template <class Json>
std::string json_text(const Json &value, int indent = -1) {
    return value.dump(indent, ' ', true, Json::error_handler_t::replace);
}

} // namespace tlvmsg::base
