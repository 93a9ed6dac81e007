#include "compiler/language/word_list.h"

namespace tlvc {

WordList::WordList(std::string_view text) {
    for (size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
        words_.insert(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
}

} // namespace tlvc
