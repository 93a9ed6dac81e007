#include "frame_line.h"

#include "tools/faults/faults.h"

#include <fmt/format.h>

namespace tlvmsg::tool {

JsonLine input_line(const Input &input, bool several) {
    JsonLine line;
    if (input.frame) {
        if (several) {
            line.text("file", input.file);
        }
        for_each_fact(*input.frame, [&](std::string_view name, const std::string &json) {
            if (!json.empty()) {
                line.json(name, json);
            }
        });
        return line;
    }
    line.text("name", input.name);
    if (input.line > 0 && !input.alone) {
        line.number("line", input.line);
    }
    return input.alone ? line : line.number("offset", input.offset).number("number", input.number);
}

void add_verdict(JsonLine &line, const std::optional<Problem> &problem, const tlvmsg_verdict &verdict) {
    if (problem || verdict.fit == TLVMSG_FITS_NOT) {
        line.json("error", error_json(problem, verdict.fault).dump());
    } else {
        line.number("consumed", verdict.extent.consumed).number("deviations", verdict.extent.deviations);
    }
}

std::string heading(const Input &input, bool several, const tlvmsg_type *type) {
    if (!input.frame) {
        const std::string nth = input.alone ? "" : fmt::format(", message {}", input.number);
        return several || !input.alone ? fmt::format("# {}{}\n", input.name, nth) : "";
    }
    const FrameFacts &facts = *input.frame;
    const auto end = [&](const std::string &address, uint16_t Ports::*port) {
        const char *const form = address.find(':') != address.npos ? "[{}]:{}" : "{}:{}";
        return facts.ports ? fmt::format(fmt::runtime(form), address, (*facts.ports).*port) : address;
    };
    std::string text = "# " + input.name;
    if (!facts.source.empty()) {
        text += fmt::format(", {} > {}", end(facts.source, &Ports::source),
                            end(facts.destination, &Ports::destination));
    }
    return fmt::format("{}{}{}{}{}\n", text, facts.protocol.empty() ? "" : " ", facts.protocol,
                       type != nullptr ? ": " : "", type != nullptr ? type->name : "");
}

std::string problem_lines(const Reading &reading) {
    std::string text =
        fmt::format("# error[{}]: {}\n", code_name(reading.problem->code), reading.problem->text);
    for (const tlvmsg_type *type : reading.types) {
        text += fmt::format("#   {}\n", type->name);
    }
    return text;
}

} // namespace tlvmsg::tool
