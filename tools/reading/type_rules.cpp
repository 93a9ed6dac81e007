#include "type_rules.h"

#include "base/files.h"
#include "base/number.h"
#include "cli/failure.h"
#include "tools/types/lookup.h"

#include <tlvmsg/dispatch.h>

#include <fmt/format.h>

#include <algorithm>
#include <sstream>

namespace tlvmsg::tool {

using namespace cli;

void TypeRules::add(std::string_view line) {
    static const std::map<std::string_view, uint64_t> largest{{"udp/", UINT16_MAX},
                                                              {"tcp/", UINT16_MAX},
                                                              {"ethertype/", UINT16_MAX},
                                                              {"ip/", UINT8_MAX},
                                                              {"msg_type=", UINT32_MAX}};
    const size_t begin = std::min(line.find_first_of("/=") + 1, line.size()), end = line.rfind('=');
    const auto kind = largest.find(line.substr(0, begin));
    if (kind != largest.end() && end >= begin && end != line.npos) {
        if (const auto number = base::typed_number(line.substr(begin, end - begin), kind->second)) {
            const std::string_view name = kind->first.substr(0, begin - 1);
            rules_[{std::string(name), *number}] = find_type(std::string(line.substr(end + 1)));
            return;
        }
    }
    throw Failure(exit_usage, fmt::format("'{}' says no message's type; udp/PORT=TYPE, tcp/PORT=TYPE, "
                                          "ethertype/N=TYPE, ip/N=TYPE or msg_type=N=TYPE does",
                                          line));
}

void TypeRules::add_file(const std::string &path) {
    std::istringstream text(base::read_file(path));
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
    if (rules_.empty()) {
        return nullptr;
    }
    const auto rule = [&](const std::string &kind, uint64_t number) {
        const auto found = rules_.find({kind, number});
        return found != rules_.end() ? found->second : nullptr;
    };
    uint32_t key = 0;
    const bool has_key = tlvmsg_session_key(payload.data(), payload.size(), &key);
    const tlvmsg_type *type = has_key ? rule("msg_type", key) : nullptr;
    const size_t space = facts.protocol.find(' ');
    if (type == nullptr && space != facts.protocol.npos) {
        const auto number = base::typed_number(std::string_view(facts.protocol).substr(space + 1));
        return rule(facts.protocol.substr(0, space), number.value_or(0));
    }
    if (type == nullptr && facts.ports) {
        type = rule(facts.protocol, facts.ports->destination);
        type = type != nullptr ? type : rule(facts.protocol, facts.ports->source);
    }
    return type;
}

} // namespace tlvmsg::tool
