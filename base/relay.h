// An exception in a callback must not pass the C code that calls it: it is kept, and thrown again when C has returned.
#pragma once

#include <exception>

namespace tlvmsg::base {

class Relay {
public:
    // Gives whether the work was done. Once something was thrown, none is done any more.
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
