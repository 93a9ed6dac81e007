#include "compiler/language/word_list.h"

namespace tlvc {

// By bisection of the text, so that nothing has to be made, or destroyed, for words that few programs ask for.
bool WordList::contains(std::string_view word) const {
    std::string_view lines = text_;
    while (!lines.empty()) {
        const size_t middle = lines.size() / 2;
        const size_t begin = middle == 0 ? 0 : lines.rfind('\n', middle - 1) + 1; // npos + 1 is 0
        const size_t end = lines.find('\n', begin);
        const std::string_view line = lines.substr(begin, end - begin);
        if (line == word) {
            return true;
        }
        lines = line < word ? lines.substr(end + 1) : lines.substr(0, begin);
    }
    return false;
}

} // namespace tlvc
