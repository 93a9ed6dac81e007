// JSON texts one behind the other, as tlv decode and jq print them.
#pragma once

#include "payload.h"

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tlvmsg::tool {

class Documents {
public:
    // A file, "-" for standard input, or JSON itself, which begins with { [ or ". Throws Failure(exit_io).
    explicit Documents(const std::string &argument);

    // The next text, which need not be JSON, up to where its brackets close; null at the end. Throws
    // Failure(exit_malformed) for one that is too long.
    std::optional<std::string> next();

    // For people: where the text begins that was given last.
    std::string place() const;

private:
    std::string text_; // of JSON itself
    std::string name_;
    std::shared_ptr<std::FILE> file_;
    size_t line_ = 1;
    size_t first_line_ = 1;
};

// A message, and what tlv decode prints beside it where it is not alone.
struct Decoded {
    std::string type;                   // empty where none is said
    std::optional<std::string> message; // JSON; null where there is an error
    FrameFacts facts;
    uint64_t deviations; // that were tolerated
    uint64_t trailing_bytes;
};

// Any other text is the message itself; `facts` are those that are not stated. Throws Failure(exit_malformed) for a fact
// that is none.
Decoded decoded_of(const std::string &text, const FrameFacts &facts);

// The facts in a JSON object. Throws Failure(exit_malformed) for one that is none.
FrameFacts facts_in(const std::string &text, FrameFacts facts = {});

} // namespace tlvmsg::tool
