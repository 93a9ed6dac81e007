// Faults as programs read them.
#pragma once

#include "compiler/text/diagnostics.h"

#include <tlvmsg/schema.h>

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace tlvmsg::schema {

// An array of them, and their texts.
class Faults {
public:
    // The first ones of what the compiler says, file by file.
    void add(const tlvc::Diagnostics &found, const tlvc::Sources &sources);

    // An error that is in no text.
    void add(std::string_view code, std::string_view message);

    const std::vector<tlvmsg_schema_fault> &all() const { return all_; }

private:
    void add(tlvmsg_schema_severity severity, std::string_view code, std::string_view message,
             std::string_view help);
    void place(const tlvc::Sources &sources, tlvc::Span span); // that of the last one
    const char *keep(std::string_view text);

    std::deque<std::string> texts_;
    std::vector<tlvmsg_schema_fault> all_;
};

} // namespace tlvmsg::schema
