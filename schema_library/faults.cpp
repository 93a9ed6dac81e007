#include "schema_library/faults.h"

#include "base/visible.h"

#include <algorithm>

namespace tlvmsg::schema {

namespace {

// More than anyone reads. To find the columns of all faults in a long line would take the square of its length.
constexpr size_t most_faults = 200;
constexpr size_t most_notes = 20; // to one fault

} // namespace

void Faults::add(const tlvc::Diagnostics &found, const tlvc::Sources &sources) {
    const std::vector<tlvc::Diagnostic> sorted = found.in_file_order();
    for (size_t i = 0; i < std::min(sorted.size(), most_faults); ++i) {
        const tlvc::Diagnostic &each = sorted[i];
        add(each.severity == tlvc::Severity::Error ? TLVMSG_SCHEMA_ERROR : TLVMSG_SCHEMA_WARNING,
            each.fault->code, each.message, fmt::format("{}", fmt::join(each.helps, "; ")));
        place(sources, each.span);
        for (size_t note = 0; note < std::min(each.notes.size(), most_notes); ++note) {
            add(TLVMSG_SCHEMA_NOTE, each.fault->code, each.notes[note].text, "");
            place(sources, each.notes[note].span);
        }
    }
}

void Faults::add(std::string_view code, std::string_view message) {
    add(TLVMSG_SCHEMA_ERROR, code, message, "");
}

void Faults::add(tlvmsg_schema_severity severity, std::string_view code, std::string_view message,
                 std::string_view help) {
    tlvmsg_schema_fault fault{};
    fault.severity = severity;
    fault.code = keep(code);
    fault.file = "";
    fault.message = keep(base::visible_head(message));
    fault.help = keep(base::visible_head(help));
    all_.push_back(fault);
}

void Faults::place(const tlvc::Sources &sources, tlvc::Span span) {
    const tlvc::Position begin = sources.position(span.file, span.begin);
    const tlvc::Position end = sources.position(span.file, span.end);
    tlvmsg_schema_fault &fault = all_.back();
    fault.file = keep(sources.path(span.file));
    fault.line = begin.line;
    fault.column = begin.column;
    fault.end_line = end.line;
    fault.end_column = end.column;
}

const char *Faults::keep(std::string_view text) { return texts_.emplace_back(text).c_str(); }

} // namespace tlvmsg::schema
