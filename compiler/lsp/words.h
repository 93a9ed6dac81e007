// What stands before a place, for completions: the text there is hardly ever one that the parser reads.
#pragma once

#include <string_view>
#include <vector>

namespace tlvc::lsp {

// The tokens of a text, the last one first. Behind its beginning there are empty ones.
class WordsBefore {
public:
    explicit WordsBefore(std::string_view text);

    size_t size() const { return words_.size(); }
    std::string_view text(size_t back) const { return back < size() ? words_[back].text : ""; }
    bool is_name(size_t back) const { return back < size() && words_[back].is_name; }
    bool starts_line(size_t back) const { return back < size() && words_[back].starts_line; }

    // The brace that is open; the size if none is.
    size_t brace() const;

    // The word that begins the declaration whose body the brace opens.
    size_t head(size_t brace) const;

private:
    struct Word {
        std::string_view text;
        bool is_name;
        bool starts_line;
    };
    std::vector<Word> words_;
};

} // namespace tlvc::lsp
