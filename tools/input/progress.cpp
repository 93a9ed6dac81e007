#include "progress.h"

#include <fmt/format.h>

#include <cstdio>
#include <unistd.h>

namespace tlvmsg::tool {

Progress::Progress(std::string what, std::optional<uint64_t> total)
    : what_(std::move(what)), total_(total),
      wanted_(isatty(STDERR_FILENO) != 0 && isatty(STDOUT_FILENO) == 0),
      next_(Clock::now() + std::chrono::seconds(2)) {}

Progress::~Progress() {
    if (shown_) {
        std::fputs("\r\033[K", stderr);
    }
}

bool Progress::due() const { return wanted_ && Clock::now() >= next_; }

void Progress::show(uint64_t count, uint64_t done) {
    const std::string part =
        total_ && *total_ > 0 ? fmt::format(", {} %", done * 100 / *total_) : std::string();
    std::fputs(fmt::format("\r\033[Ktlv: {} {}{}", count, what_, part).c_str(), stderr);
    std::fflush(stderr);
    shown_ = true;
    next_ = Clock::now() + std::chrono::milliseconds(200);
}

} // namespace tlvmsg::tool
