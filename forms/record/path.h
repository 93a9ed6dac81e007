// Where something stands in a record that is gone through: "led_control.color", "vlan_counters[3]".
#pragma once

#include <string>
#include <string_view>

namespace tlvmsg::forms {

class Path {
public:
    // Both do the work one step further in.
    template <class Work>
    auto member(std::string_view name, Work work) {
        const Back back{text_, text_.size()};
        text_.append(text_.empty() ? "" : ".").append(name);
        return work();
    }

    template <class Work>
    auto item(size_t index, Work work) {
        const Back back{text_, text_.size()};
        text_.append("[").append(std::to_string(index)).append("]");
        return work();
    }

    const std::string &text() const { return text_; } // empty for the whole

private:
    struct Back {
        std::string &text;
        size_t size;
        ~Back() { text.resize(size); }
    };

    std::string text_;
};

} // namespace tlvmsg::forms
