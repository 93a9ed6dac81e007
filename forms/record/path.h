// Where something stands in a record that is gone through: "led_control.color", "vlan_counters[3]".
#pragma once

#include <string>
#include <string_view>

namespace tlvmsg::forms {

class Path {
public:
    // Both do the work one step further in.
    template <class Work>
    void member(std::string_view name, Work work) {
        go(text_.empty() ? "" : ".", name, "", work);
    }

    template <class Work>
    void item(size_t index, Work work) {
        go("[", std::to_string(index), "]", work);
    }

    const std::string &text() const { return text_; } // empty for the whole

private:
    template <class Work>
    void go(std::string_view before, std::string_view step, std::string_view behind, Work work) {
        const size_t size = text_.size();
        text_.append(before).append(step).append(behind);
        work();
        text_.resize(size);
    }

    std::string text_;
};

} // namespace tlvmsg::forms
