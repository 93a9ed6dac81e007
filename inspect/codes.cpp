// The codes' names, wordings and explanations, one row a code.
#include "text.h"

#include <tlvmsg/inspect.h>

#include <cstring>

namespace {

using tlvmsg::inspect::Text;

struct Code {
    const char *name;
    const char *message; // behind the path; # is what was found, $ what is allowed
    const char *text;
};

const Code codes[] = {
    {"ok", "no fault", "Nothing was refused."},
    {"truncated", "needs $ bytes, # are left",
     "The input ends inside an element, or before one that the type has. Either bytes were lost, or the "
     "type is not the one that was sent, or the sender left trailing members out: decoders then look for "
     "them behind the end. Compare the length of the input with what the sender wrote."},
    {"wrong-tag", "tag # where $ belongs",
     "An element has another tag than the member that belongs there. The type may be another than was sent, "
     "the sender may know more or fewer members, or an earlier length may be wrong. Inside a structure or "
     "array this is tolerated: what follows up to the element's end is skipped and reads as zero."},
    {"wrong-length", "length # where $ belongs",
     "A number's element has the right tag but not the number's width. Decoders treat it as an element of "
     "another type."},
    {"count-exceeds-capacity", "# exceeds capacity $",
     "An array announces more items than its record has room for. The exact decoder would write past the "
     "array, so such input must never reach it. Encoding refuses such a count as well."},
    {"count-exceeds-field", "# exceeds $, the most its field can hold",
     "An array announces more items than the count field of its record can say. The exact decoder would "
     "store the low bits of the count only, and most of the items could not be found again."},
    {"allocation-limit", "# bytes to be allocated exceed the limit of $",
     "The dynamic arrays of the input need more memory than the caller allows. The default, 64 times the "
     "input and 64 KiB, is never reached by what an encoder of the library wrote; raise it only for input "
     "that you trust."},
    {"out-of-memory", "no memory for # bytes", "The platform's allocator gave no block for a dynamic array."},
    {"output-full", "needs # bytes, the output has $",
     "The encoding is longer than the output. Ask for the size of the record first."},
    {"value-too-long", "a value of # bytes exceeds $",
     "An element's value does not fit its 16-bit length. Split the record's content over several messages."},
    {"items-missing", "# items behind a null pointer",
     "A dynamic array has a count but a null pointer. Set its count to 0 or its pointer to that many items."},
    {"trailing-bytes", "# bytes behind the end",
     "The input goes on behind the end of the type. Only strict callers mind; to others the position behind "
     "the type tells."},
    {"length-mismatch", "length # where $ is needed",
     "An element's length is not what its members or items take. A longer one may come from a newer sender, "
     "and the rest is skipped. With a shorter one the members are decoded from bytes behind the element, "
     "which the next element then uses again; no encoder of the library writes that."},
    {"count-mismatch", "# where the array has $",
     "The member before a dynamic array gives another count than the array itself. Decoders go by the "
     "array."},
    {"terminator-missing", "no terminator",
     "No zero byte follows the bytes of an array that leaves room for one. Decoders supply it."},
    {"terminator-not-zero", "terminator # is not zero",
     "Another byte stands where the zero byte behind an array's bytes belongs. Decoders pass over it."},
    {"null-argument", "a null pointer was passed",
     "A function was handed a null pointer where it needs an object. The path is the argument's name."},
    {"record-size", "a record of # bytes, the library's has $",
     "The program was compiled with another declaration of the type than the library. Compile it again with "
     "the library's headers."},
};

static_assert(sizeof codes / sizeof codes[0] == TLVMSG_CODE_COUNT, "a row for each code");

const Code *row_of(tlvmsg_code code) {
    return static_cast<unsigned>(code) < TLVMSG_CODE_COUNT ? &codes[code] : nullptr;
}

void write_message(const tlvmsg_fault &fault, Text &text) {
    text.add(fault.path).add(": ");
    const Code *row = row_of(fault.code);
    for (const char *c = row != nullptr ? row->message : "unknown code"; *c != '\0'; ++c) {
        const char plain[] = {*c, '\0'};
        if (*c == '#') {
            text.add(fault.found);
        } else if (*c == '$') {
            text.add(fault.allowed);
        } else {
            text.add(plain);
        }
    }
    text.add(" at byte ").add(uint64_t{fault.offset});
}

} // namespace

const char *tlvmsg_code_name(tlvmsg_code code) {
    const Code *row = row_of(code);
    return row != nullptr ? row->name : "unknown";
}

const char *tlvmsg_code_text(tlvmsg_code code) {
    const Code *row = row_of(code);
    return row != nullptr ? row->text : "";
}

bool tlvmsg_code_find(const char *name, tlvmsg_code *code) {
    for (int i = 0; name != nullptr && i < TLVMSG_CODE_COUNT; ++i) {
        if (std::strcmp(codes[i].name, name) == 0) {
            *code = static_cast<tlvmsg_code>(i);
            return true;
        }
    }
    return false;
}

size_t tlvmsg_fault_text(const tlvmsg_fault *fault, char *buffer, size_t size) {
    Text text(buffer, size);
    text.add("error[").add(tlvmsg_code_name(fault->code)).add("]: ");
    write_message(*fault, text);
    return text.length();
}

size_t tlvmsg_fault_message(const tlvmsg_fault *fault, char *buffer, size_t size) {
    Text text(buffer, size);
    write_message(*fault, text);
    return text.length();
}
