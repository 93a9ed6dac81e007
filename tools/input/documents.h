// JSON texts one behind the other, as tlv decode and jq print them.
#pragma once

#include "payload.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tlvmsg::tool {

class Documents {
public:
    // A file, "-" for standard input, or JSON itself, which begins with { [ or ". Throws Failure(exit_io).
    explicit Documents(const std::string &argument);

    // The next text, which need not be JSON, up to where its brackets close; null at the end. Throws
    // Failure(exit_malformed) for one that never ends.
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

// Parts of a text that is JSON, as they stand there.
std::vector<std::string_view> items_of(std::string_view array);
std::vector<std::pair<std::string_view, std::string_view>> members_of(std::string_view object);

// What tlv decode prints of a message that is not alone: the message, and what is known about its frame.
struct Decoded {
    std::string type{};                        // empty where none is said
    std::optional<std::string_view> message{}; // JSON, in the text; null where there is an error
    FrameFacts facts{};
    uint64_t deviations = 0; // that were tolerated
    uint64_t trailing_bytes = 0;
};

// Null for any other JSON, such as a message alone; `facts` are those that it does not state. Throws
// Failure(exit_malformed) for a fact that is none.
std::optional<Decoded> decoded_of(std::string_view object, const FrameFacts &facts);

// The facts in an object. Throws Failure(exit_malformed) for one that is none.
FrameFacts facts_of(std::string_view object, FrameFacts facts = {});

} // namespace tlvmsg::tool
