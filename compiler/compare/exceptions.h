// Changes that have been reviewed and are allowed, in a file that is kept beside the schema.
#pragma once

#include "compiler/compare/compare.h"
#include "compiler/text/source.h"

namespace tlvc {

// A line for each: the rule's code, the name that findings give, and the reason. Empty lines and those that begin with
// '#' are for people.
class Exceptions {
public:
    // Takes a text of the sources.
    Exceptions(const Sources &sources, uint32_t file);

    // Leaves out the findings that break something, but for an exception.
    void apply(std::vector<Finding> &findings);

    // One for each line that is none, or that has not applied to anything.
    std::vector<Finding> at_fault() const;

private:
    struct Line {
        Span span;
        std::string_view code;
        std::string_view name;
        std::string why_none; // empty if it is an exception
        bool applies = false;
    };
    std::vector<Line> lines_;
};

} // namespace tlvc
