// Standard output and standard error: what can go wrong with them, and what is only for the eye.
#pragma once

#include "base/colour.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace tlvmsg::cli {

// Thrown when whoever read our output has gone, which is no failure: `tlv types | head -1`.
struct ReaderGone {};

// To standard output. Throws ReaderGone, or Failure(exit_io) when it cannot be written.
void print(std::string_view text);

// One value, over several lines.
void print_json(const nlohmann::ordered_json &value);

// Each as `line` words it or, for programs, an array of what `object` makes of each.
template <class Items, class Line, class Object>
void print_list(const Items &items, bool as_json, Line line, Object object) {
    auto list = nlohmann::ordered_json::array();
    for (const auto &each : items) {
        as_json ? list.push_back(object(each)) : print(line(each) + "\n");
    }
    if (as_json) {
        print_json(list);
    }
}

// Writes out what is still buffered; throws as print does.
void finish_output();

enum class ColourWhen { automatic, always, never };

// What the command line says. Automatic: on terminals, unless NO_COLOR is set.
inline ColourWhen colour_when = ColourWhen::automatic;

using base::Colour;

// A line for standard error, with a label in colour. All of it is from outside, as far as this knows, and made visible.
std::string complaint(std::string_view before, Colour colour = Colour::dim, std::string_view label = "",
                      std::string_view after = "");

// Writes several at once, since each write takes as long as it takes to word them.
void write_complaints(const std::string &lines);

void complain(std::string_view before, Colour colour = Colour::dim, std::string_view label = "",
              std::string_view after = "");

// Colours text when it is wanted where the text goes.
class Paint {
public:
    explicit Paint(int descriptor);
    std::string operator()(Colour colour, std::string_view text) const;
    bool is_on() const { return coloured_; }

private:
    bool coloured_;
};

} // namespace tlvmsg::cli
