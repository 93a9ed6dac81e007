#include "frame_line.h"

#include <fmt/format.h>

#include <optional>

namespace tlvmsg::tool {

namespace {

std::optional<uint16_t> source_port(const FrameFacts &facts) {
    return facts.ports ? std::optional(facts.ports->source) : std::nullopt;
}

std::optional<uint16_t> destination_port(const FrameFacts &facts) {
    return facts.ports ? std::optional(facts.ports->destination) : std::nullopt;
}

} // namespace

JsonLine input_line(const Input &input, bool several) {
    JsonLine line;
    if (!input.frame) {
        line.text("name", input.name);
        if (input.line > 0 && !input.alone) {
            line.number("line", input.line);
        }
        return input.alone ? line : line.number("offset", input.offset).number("number", input.number);
    }
    const FrameFacts &facts = *input.frame;
    if (several) {
        line.text("file", input.file);
    }
    line.number("frame", facts.number);
    line.json("time", time_text(facts));
    line.number("length", facts.length).number("captured", facts.captured);
    const auto end = [&](std::string_view name, const std::string &text, std::optional<uint16_t> port) {
        if (!text.empty()) {
            line.text(name, text);
        }
        if (port) {
            line.number(fmt::format("{}_port", name), *port);
        }
    };
    end("source", facts.source, source_port(facts));
    end("destination", facts.destination, destination_port(facts));
    if (!facts.protocol.empty()) {
        line.text("protocol", facts.protocol);
    }
    return line;
}

std::string time_text(const FrameFacts &facts) {
    return fmt::format("{}.{:09}", facts.seconds, facts.nanoseconds);
}

std::string frame_heading(const Input &input) {
    const FrameFacts &facts = *input.frame;
    const auto end = [](const std::string &address, std::optional<uint16_t> port) {
        if (!port) {
            return address;
        }
        const bool colons = address.find(':') != address.npos;
        return colons ? fmt::format("[{}]:{}", address, *port) : fmt::format("{}:{}", address, *port);
    };
    std::string text = input.name;
    if (!facts.source.empty()) {
        text += fmt::format(", {} > {}", end(facts.source, source_port(facts)),
                            end(facts.destination, destination_port(facts)));
    }
    return facts.protocol.empty() ? text : fmt::format("{} {}", text, facts.protocol);
}

} // namespace tlvmsg::tool
