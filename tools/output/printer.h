/*
 * Decoded messages to standard output, in the form that was asked for. A further form is a further printer.
 *
 * JSON: a file's message stands alone, as tlv encode takes it; a frame's is the member "message" of an object in a
 * line, beside what is known about the frame. Text: a line a value, below a heading where there are several. Flat: a JSON
 * object in a line without objects inside, the same members for each message of a type. CSV: those as columns, for the
 * messages of one type.
 */
#pragma once

#include "tools/reading/reading.h"

#include <tlvmsg/tlvmsg_forms.hpp>

#include <memory>

namespace tlvmsg::tool {

struct PrintOptions {
    bool compact = false; // JSON in one line
    bool bytes = false;   // frames: those of the message, too
    bool partial = false; // what can be read of a message that is broken
    bool several = false; // files: then each is named
};

class Printer {
public:
    virtual ~Printer() = default;

    // What decoders accept, with all that they tolerate.
    virtual void message(const Message &message, const tlvmsg_verdict &verdict, const any_record &record) = 0;

    // Elements by their tags. Gives how many bytes whole elements take.
    virtual size_t untyped(const Message &message) = 0;

    // What they refuse; and a frame that has no message, but a problem.
    virtual void refused(const Message &message, const tlvmsg_fault &fault) = 0;
};

std::unique_ptr<Printer> make_json_printer(const PrintOptions &options);
std::unique_ptr<Printer> make_text_printer(const PrintOptions &options);
std::unique_ptr<Printer> make_flat_printer();
std::unique_ptr<Printer> make_csv_printer(const tlvmsg_type *type);

} // namespace tlvmsg::tool
