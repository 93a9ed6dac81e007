#include "forms/border/text_fault.h"

#include "base/json.h"
#include "base/suggest.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace tlvmsg::forms {

namespace {

constexpr const char *code_names[] = {
    "ok",          "syntax",        "wrong-value",  "unknown-name",  "duplicate-name",
    "too-many",    "not-chosen",    "memory-limit", "out-of-memory", "null-argument",
    "record-size", "reserved-word", "not-encodable"};
static_assert(std::size(code_names) == TLVMSG_TEXT_CODE_COUNT, "a name for each code");

// Cut to the buffer.
template <size_t Size>
void copy(std::string_view text, char (&buffer)[Size]) {
    const size_t size = std::min(text.size(), Size - 1);
    std::memcpy(buffer, text.data(), size);
    buffer[size] = '\0';
}

} // namespace

std::string cut(std::string_view text, size_t longest) {
    return std::string(text.substr(0, longest)) + (text.size() > longest ? "..." : "");
}

std::string quoted(std::string_view text) {
    constexpr size_t enough = 64; // to be cut
    return cut(base::json_text(nlohmann::json(text.substr(0, enough))));
}

std::string no_such(const std::string &what, std::string_view name,
                    const std::vector<std::string_view> &names) {
    const std::string hint = base::did_you_mean(name, names);
    return "no " + what + " " + quoted(name) + (hint.empty() ? "" : ", " + hint);
}

void store_fault(tlvmsg_text_fault *wanted, tlvmsg_text_code code, std::string_view path,
                 std::string_view message, std::string_view before) {
    if (wanted == nullptr) {
        return;
    }
    *wanted = {};
    wanted->code = code;
    wanted->offset = before.size();
    wanted->line = 1 + static_cast<size_t>(std::ranges::count(before, '\n'));
    wanted->column = before.size() - (before.find_last_of('\n') + 1) + 1; // npos + 1 is 0
    copy(path, wanted->path);
    copy(message, wanted->message);
    // A text that somebody changes meanwhile may have shown anything.
    const auto is_unprintable = [](char c) { return c < ' ' || c > '~'; };
    std::replace_if(wanted->message, wanted->message + std::strlen(wanted->message), is_unprintable, '?');
}

} // namespace tlvmsg::forms

const char *tlvmsg_text_code_name(tlvmsg_text_code code) {
    using tlvmsg::forms::code_names;
    return static_cast<unsigned>(code) < TLVMSG_TEXT_CODE_COUNT ? code_names[code] : "unknown";
}
