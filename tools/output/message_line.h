// What is said about a message: as JSON, as a heading, in words.
#pragma once

#include "tools/reading/reading.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tlvmsg::tool {

// In quotes, in ASCII; bytes that are no UTF-8 are replaced.
std::string json_string(std::string_view text);

// A JSON object in a line, member by member, of parts that are JSON already. An empty part is not known.
class JsonLine {
public:
    using Members = std::vector<std::pair<std::string, std::string>>;

    JsonLine &json(std::string_view name, std::string value) {
        members_.emplace_back(name, std::move(value));
        return *this;
    }
    JsonLine &text(std::string_view name, std::string_view value) { return json(name, json_string(value)); }
    JsonLine &number(std::string_view name, uint64_t value) { return json(name, std::to_string(value)); }

    // What may be known of a frame, in the words of tlv decode; nothing is when its number is 0.
    JsonLine &facts(const FrameFacts &facts);

    const Members &members() const { return members_; }

    // What is not known is left out, unless it is to be something.
    std::string object(std::string_view unknown = "") const;
    std::string line() const { return object() + "\n"; }

private:
    Members members_;
};

// An object to which more can be added. Of a frame {"frame":7,"time":1700000000.250000000,"source":"10.0.0.1",...},
// with the file before it where there are several; of any other message {"name":"led.bin"}.
JsonLine message_line(const Message &message, bool several);

// "# x.pcap:7, 10.0.0.1:4000 > 10.0.0.2:4001 udp", and ": zel_led_control" where there is a type; of what is no frame
// "# dump.txt:3, message 2". Nothing for the only message of the only file.
std::string heading(const Message &message, bool several, const tlvmsg_type *type = nullptr);

const char *fit_name(tlvmsg_fit fit); // "yes", "part", "no"

std::string counted(size_t count, std::string_view what); // "1 deviation", "2 deviations"

// {"code", "path", "offset", "found", "allowed", "text"}; code and text of a problem, where there is one.
JsonLine error_line(const std::optional<Problem> &problem, const tlvmsg_fault &fault);

// How bytes fit, or why there is no message.
void add_verdict(JsonLine &line, const std::optional<Problem> &problem, const tlvmsg_verdict &verdict);

// "# error[ambiguous]: ..." and a line for each of the types that tie.
std::string problem_lines(const Message &message);

} // namespace tlvmsg::tool
