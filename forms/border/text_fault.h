// What goes wrong with texts: thrown inside the library, and at its border turned into a caller's fault.
#pragma once

#include <tlvmsg/forms.h>

#include <algorithm>
#include <exception>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::forms {

struct TextFault {
    tlvmsg_text_code code;
    size_t offset; // in the text
    std::string path;
    std::string message;
};

// ---- Words for messages, which are one line of printable ASCII ----

std::string cut(std::string text, size_t longest = 60);

// Text from the input, in quotes: its beginning, where it is long.
std::string quoted(const std::string &text);

// 'no member "colour", did you mean 'color'?'
std::string no_such(const std::string &what, const std::string &name,
                    const std::vector<std::string_view> &names);

// ---- At the border ----

// Stores a fault for a caller who may not want it. Allocates nothing.
void give(tlvmsg_text_fault *wanted, tlvmsg_text_code code, std::string_view path, std::string_view message);

// The same with its place in the text.
void give(tlvmsg_text_fault *wanted, const TextFault &fault, std::string_view text);

// Thrown when the caller wants no more. It says so, so there is no fault.
struct Stopped {};

inline void give_null_argument(tlvmsg_text_fault *wanted, const char *argument) {
    give(wanted, TLVMSG_TEXT_NULL_ARGUMENT, argument, "a null pointer was passed");
}

// Whether an argument is missing, which then is named.
inline bool is_missing(tlvmsg_text_fault *wanted, const char *argument) {
    if (argument != nullptr) {
        give_null_argument(wanted, argument);
    }
    return argument != nullptr;
}

// Refuses an argument, which may be null, of which a word that has no meaning yet is not zero. Throws TextFault.
template <class Structure>
void check_reserved(const char *argument, const Structure *structure) {
    if (structure != nullptr && std::any_of(std::begin(structure->reserved), std::end(structure->reserved),
                                            [](uintptr_t word) { return word != 0; })) {
        throw TextFault{TLVMSG_TEXT_RESERVED_WORD, 0, argument, "a reserved word is not zero"};
    }
}

// Does the work and lets nothing out. Gives whether it succeeded; if not, the fault says why.
template <class Work>
bool guarded(tlvmsg_text_fault *fault, std::string_view text, Work work) {
    if (fault != nullptr) {
        *fault = {};
    }
    try {
        work();
        return true;
    } catch (const TextFault &found) {
        give(fault, found, text);
    } catch (const Stopped &) {
    } catch (const std::exception &) { // std::bad_alloc, or a length that no string can have
        give(fault, TLVMSG_TEXT_OUT_OF_MEMORY, "$", "there is no more memory");
    }
    return false;
}

} // namespace tlvmsg::forms
