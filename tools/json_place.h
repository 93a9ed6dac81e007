// Where in a JSON text something stands: "$.led_control.color", "$.vlan_counters[3]".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tlvmsg::tool {

// A chain from the place up to the whole text; each link outlives those below it.
class JsonPlace {
public:
    JsonPlace() = default;
    JsonPlace(const JsonPlace *parent, std::string_view name) : parent_(parent), name_(name) {}
    JsonPlace(const JsonPlace *parent, size_t index) : parent_(parent), index_(index) {}

    std::string text() const {
        if (parent_ == nullptr) {
            return "$";
        }
        return parent_->text() +
               (name_.empty() ? "[" + std::to_string(index_) + "]" : "." + std::string(name_));
    }

private:
    const JsonPlace *parent_ = nullptr;
    std::string_view name_; // empty for an item
    size_t index_ = 0;
};

} // namespace tlvmsg::tool
