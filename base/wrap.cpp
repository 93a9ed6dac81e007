#include "wrap.h"

#include <algorithm>

namespace tlvmsg::base {

std::string wrapped(std::string_view text, size_t columns, std::string_view prefix) {
    std::string result(prefix);
    size_t column = 0; // 0 where no word stands in the line yet
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (column != 0 && column + 1 + word.size() > columns) {
            result.append("\n").append(prefix);
            column = 0;
        }
        result.append(column == 0 ? "" : " ").append(word);
        column = (column == 0 ? prefix.size() : column + 1) + word.size();
    }
    return result;
}

} // namespace tlvmsg::base
