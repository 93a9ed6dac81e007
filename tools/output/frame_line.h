// What is known about an input, as JSON and as a heading.
#pragma once

#include "json_line.h"

#include "tools/reading/reading.h"

namespace tlvmsg::tool {

// Gives `add` the name and the JSON of each thing that may be known of a frame; the JSON is empty where it is not, as it
// is for all when the number is 0.
template <class Add>
void for_each_fact(const FrameFacts &facts, Add add) {
    const Ports ports = facts.ports.value_or(Ports{});
    const auto text = [](std::string_view value) { return value.empty() ? "" : json_string(value); };
    const auto number = [](bool known, size_t value) { return known ? std::to_string(value) : ""; };
    const bool is_frame = facts.number != 0, has_ports = facts.ports.has_value();
    add("frame", number(is_frame, facts.number));
    add("time", is_frame ? fmt::format("{}.{:09}", facts.seconds, facts.nanoseconds) : "");
    add("length", number(is_frame, facts.length));
    add("captured", number(is_frame, facts.captured));
    add("source", text(facts.source));
    add("source_port", number(has_ports, ports.source));
    add("destination", text(facts.destination));
    add("destination_port", number(has_ports, ports.destination));
    add("protocol", text(facts.protocol));
}

// An object to which more can be added. Of a frame {"frame":7,"time":1700000000.250000000,"source":"10.0.0.1",...},
// with the file before it where there are several; of any other input {"name":"led.bin"}.
JsonLine input_line(const Input &input, bool several);

// "# x.pcap:7, 10.0.0.1:4000 > 10.0.0.2:4001 udp", and ": zel_led_control" where there is a type; of what is no frame
// "# dump.txt:3, message 2". Nothing for the only message of the only file.
std::string heading(const Input &input, bool several, const tlvmsg_type *type = nullptr);

// How bytes fit, or why there is no message.
void add_verdict(JsonLine &line, const std::optional<Problem> &problem, const tlvmsg_verdict &verdict);

// "# error[ambiguous]: ..." and a line for each of the types that tie.
std::string problem_lines(const Reading &reading);

} // namespace tlvmsg::tool
