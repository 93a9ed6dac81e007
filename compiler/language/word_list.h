#pragma once

#include <string_view>
#include <unordered_set>

namespace tlvc {

// The words of a text that has one a line and outlives the list.
class WordList {
public:
    explicit WordList(std::string_view text);
    bool contains(std::string_view word) const { return words_.contains(word); }

private:
    std::unordered_set<std::string_view> words_;
};

} // namespace tlvc
