#include "message_line.h"

#include "base/json.h"
#include "base/visible.h"
#include "tools/faults/faults.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>

namespace tlvmsg::tool {

std::string json_string(std::string_view text) {
    const auto is_plain = [](char c) { return c >= ' ' && c <= '~' && c != '"' && c != '\\'; };
    return std::all_of(text.begin(), text.end(), is_plain) // as nearly all are, of which there are many
               ? std::string("\"").append(text).append("\"")
               : base::json_text(nlohmann::json(text));
}

JsonLine &JsonLine::facts(const FrameFacts &facts) {
    const bool is_frame = facts.number != 0, has_ports = facts.ports.has_value();
    const Ports ports = facts.ports.value_or(Ports{});
    const auto string = [](const std::string &value) { return value.empty() ? "" : json_string(value); };
    const auto integer = [](bool known, size_t value) { return known ? std::to_string(value) : ""; };
    members_.reserve(16);
    json("frame", integer(is_frame, facts.number));
    json("time", is_frame && facts.timed ? fmt::format("{}.{:09}", facts.seconds, facts.nanoseconds) : "");
    json("length", integer(is_frame, facts.length));
    json("captured", integer(is_frame, facts.captured));
    json("source", string(facts.source));
    json("source_port", integer(has_ports, ports.source));
    json("destination", string(facts.destination));
    json("destination_port", integer(has_ports, ports.destination));
    return json("protocol", string(facts.protocol));
}

std::string JsonLine::object(std::string_view unknown) const {
    std::string text;
    for (const auto &[name, value] : members_) {
        if (const std::string_view shown = value.empty() ? unknown : value; !shown.empty()) {
            text.append(text.empty() ? "{\"" : ",\"").append(name).append("\":").append(shown);
        }
    }
    return text.append(text.empty() ? "{}" : "}");
}

JsonLine message_line(const Message &message, bool several) {
    JsonLine line;
    if (message.frame) {
        return line.json("file", several ? json_string(message.file) : "").facts(*message.frame);
    }
    line.text("name", message.name);
    if (message.line > 0 && !message.alone) {
        line.number("line", message.line);
    }
    return message.alone ? line : line.number("offset", message.offset).number("number", message.number);
}

const char *fit_name(tlvmsg_fit fit) {
    return fit == TLVMSG_FITS ? "yes" : fit == TLVMSG_FITS_PART ? "part" : "no";
}

std::string counted(size_t count, std::string_view what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

JsonLine error_line(const std::optional<Problem> &problem, const tlvmsg_fault &fault) {
    JsonLine line;
    if (problem) {
        return line.text("code", code_name(problem->code)).text("text", base::visible_head(problem->text));
    }
    line.text("code", tlvmsg_code_name(fault.code)).text("path", fault.path);
    line.number("offset", fault.offset).number("found", fault.found).number("allowed", fault.allowed);
    return line.text("text", fault_message(fault));
}

void add_verdict(JsonLine &line, const std::optional<Problem> &problem, const tlvmsg_verdict &verdict) {
    if (problem || verdict.fit == TLVMSG_FITS_NOT) {
        line.json("error", error_line(problem, verdict.fault).object());
    } else {
        line.number("consumed", verdict.extent.consumed).number("deviations", verdict.extent.deviations);
    }
}

std::string heading(const Message &message, bool several, const tlvmsg_type *type) {
    if (!message.frame) {
        const std::string nth = message.alone ? "" : fmt::format(", message {}", message.number);
        return several || !message.alone ? fmt::format("# {}{}\n", message.name, nth) : "";
    }
    const FrameFacts &facts = *message.frame;
    const auto end = [&](const std::string &address, uint16_t Ports::*port) {
        const char *const form = address.find(':') != address.npos ? "[{}]:{}" : "{}:{}";
        return facts.ports ? fmt::format(fmt::runtime(form), address, (*facts.ports).*port) : address;
    };
    std::string text = "# " + message.name;
    if (!facts.source.empty()) {
        text += fmt::format(", {} > {}", end(facts.source, &Ports::source),
                            end(facts.destination, &Ports::destination));
    }
    return fmt::format("{}{}{}{}{}\n", text, facts.protocol.empty() ? "" : " ", facts.protocol,
                       type != nullptr ? ": " : "", type != nullptr ? type->name : "");
}

std::string problem_lines(const Message &message) {
    std::string text =
        fmt::format("# error[{}]: {}\n", code_name(message.problem->code), message.problem->text);
    for (const tlvmsg_type *type : message.types) {
        text += fmt::format("#   {}\n", type->name);
    }
    return text;
}

} // namespace tlvmsg::tool
