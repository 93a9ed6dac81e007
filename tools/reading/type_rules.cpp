#include "type_rules.h"

#include "base/number.h"
#include "cli/failure.h"
#include "tools/input/input.h"
#include "tools/types/lookup.h"

#include <tlvmsg/dispatch.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <sstream>

namespace tlvmsg::tool {

using namespace cli;

void TypeRules::add(std::string_view line) {
    const size_t end = line.rfind('=');
    const std::string_view known = line.substr(0, end);
    const tlvmsg_type *const type = end == line.npos ? nullptr : find_type(std::string(line.substr(end + 1)));
    if (const size_t slash = known.find('/'); type != nullptr && slash != known.npos) {
        const std::string protocol(known.substr(0, slash));
        if (const auto port = base::typed_number(known.substr(slash + 1), UINT16_MAX);
            port && (protocol == "udp" || protocol == "tcp" || protocol == "ip" || protocol == "ethertype")) {
            ports_[{protocol, *port}] = type;
            return;
        }
    } else if (type != nullptr && known.starts_with("msg_type=")) {
        if (const auto number = base::typed_number(known.substr(std::strlen("msg_type=")), UINT32_MAX)) {
            message_types_[*number] = type;
            return;
        }
    }
    throw Failure(
        exit_usage,
        fmt::format(
            "'{}' says no message's type; udp/PORT=TYPE, tcp/PORT=TYPE, ethertype/N=TYPE, ip/N=TYPE or "
            "msg_type=N=TYPE does",
            line));
}

void TypeRules::add_file(const std::string &path) {
    std::istringstream text(read_text(path));
    std::string line;
    for (size_t number = 1; std::getline(text, line); ++number) {
        line.erase(std::min(line.find('#'), line.size()));
        const std::string_view blanks = " \t\r";
        const size_t first = line.find_first_not_of(blanks);
        if (first == line.npos) {
            continue;
        }
        try {
            add(std::string_view(line).substr(first, line.find_last_not_of(blanks) - first + 1));
        } catch (const Failure &failure) {
            throw Failure(exit_usage, fmt::format("{}:{}: {}", path, number, failure.what()));
        }
    }
}

const tlvmsg_type *TypeRules::type_for(const FrameFacts &facts, std::span<const uint8_t> payload) const {
    uint32_t key = 0;
    if (!message_types_.empty() && tlvmsg_session_key(payload.data(), payload.size(), &key)) {
        if (const auto rule = message_types_.find(key); rule != message_types_.end()) {
            return rule->second;
        }
    }
    if (const size_t space = facts.protocol.find(' '); space != facts.protocol.npos && !ports_.empty()) {
        const auto number = base::typed_number(std::string_view(facts.protocol).substr(space + 1));
        const auto rule = ports_.find({facts.protocol.substr(0, space), number.value_or(0)});
        return rule != ports_.end() ? rule->second : nullptr;
    }
    if (facts.ports) {
        for (const uint16_t port : {facts.ports->destination, facts.ports->source}) {
            if (const auto rule = ports_.find({facts.protocol, port}); rule != ports_.end()) {
                return rule->second;
            }
        }
    }
    return nullptr;
}

} // namespace tlvmsg::tool
