// Results of the library of forms as the commands need them: what goes wrong is thrown, and texts go to standard output.
#pragma once

#include "base/relay.h"
#include "cli/failure.h"
#include "cli/terminal.h"

#include <tlvmsg/tlvmsg_forms.hpp>

#include <new>
#include <string>
#include <utility>

namespace tlvmsg::tool {

// Throws Failure that begins with the place and ends with what to do.
[[noreturn]] inline void fail(const text_fault &fault, const std::string &place, const char *remedy = "",
                              int status = cli::exit_malformed) {
    if (fault.code == TLVMSG_TEXT_OUT_OF_MEMORY) {
        throw std::bad_alloc();
    }
    throw cli::Failure(status, place + ": " + fault.message + remedy);
}

// What was made; why it was not is thrown, with the path in it for a place.
template <class Value>
Value value_of(result<Value, text_fault> made) {
    if (!made) {
        fail(made.fault, made.fault.path);
    }
    return std::move(made.value);
}

// Prints what `tell` tells the sink that it is given.
template <class Tell>
auto print_told(Tell tell) {
    base::Relay relay;
    auto told = tell([&](std::string_view text) noexcept { return relay.run([&] { cli::print(text); }); });
    relay.throw_on();
    return value_of(std::move(told));
}

} // namespace tlvmsg::tool
