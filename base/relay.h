// What is thrown in a callback of C must not pass the C that calls it: it is kept, and thrown on behind that.
#pragma once

#include <exception>

namespace tlvmsg::base {

class Relay {
public:
    // Whether the work was done; none is done any more once something was thrown.
    template <class Work>
    bool run(Work work) {
        if (!thrown_) {
            try {
                work();
            } catch (...) {
                thrown_ = std::current_exception();
            }
        }
        return !thrown_;
    }

    void throw_on() const {
        if (thrown_) {
            std::rethrow_exception(thrown_);
        }
    }

private:
    std::exception_ptr thrown_;
};

} // namespace tlvmsg::base
