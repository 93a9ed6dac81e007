#include "summary.h"

#include "message_line.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace tlvmsg::tool {

void Summary::add(const Message &message, const tlvmsg_verdict &verdict) {
    if (message.problem) {
        const Loss loss = message.problem->loss;
        gaps_ += loss == Loss::gap ? 1 : 0;
        without_ += loss == Loss::none ? 1 : 0;
        if (loss == Loss::possible) {
            ++faults_[code_name(message.problem->code)];
        }
    } else if (verdict.fit == TLVMSG_FITS_NOT) {
        ++faults_[tlvmsg_code_name(verdict.fault.code)];
    } else {
        ++messages_;
        if (message.type != nullptr) {
            ++types_[message.type->name];
        }
        deviating_ += verdict.extent.deviations > 0 ? 1 : 0;
    }
}

std::string Summary::json() const {
    const nlohmann::ordered_json summary{{"messages", messages_},   {"types", types_},
                                         {"deviating", deviating_}, {"faults", faults_},
                                         {"without", without_},     {"gaps", gaps_}};
    return JsonLine().json("summary", summary.dump()).line();
}

std::string Summary::text() const {
    std::string text = fmt::format("# {}, {} of them with deviations; {} without one; {} in streams\n",
                                   counted(messages_, "message"), deviating_, counted(without_, "frame"),
                                   counted(gaps_, "gap"));
    for (const auto &[name, count] : types_) {
        text += fmt::format("# {:>8} {}\n", count, name);
    }
    for (const auto &[name, count] : faults_) {
        text += fmt::format("# {:>8} error[{}]\n", count, name);
    }
    return text;
}

} // namespace tlvmsg::tool
