// How far reading a capture has come.
#pragma once

#include <fmt/format.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <unistd.h>

namespace tlvmsg::tool {

// What has been done so far, on standard error: only on a terminal that the output does not go to as well,
// and only when it takes longer than two seconds.
class Progress {
public:
    // `total` is unknown for pipes.
    explicit Progress(std::optional<uint64_t> total) : total_(total) {}
    ~Progress() {
        if (shown_) {
            std::fputs("\r\033[K", stderr);
        }
    }
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    // Whether it is time to show something.
    bool due() const { return wanted_ && Clock::now() >= next_; }

    void show(uint64_t frames, uint64_t done) {
        const std::string part = total_ && *total_ > 0 ? fmt::format(", {} %", done * 100 / *total_) : "";
        fmt::print(stderr, "\r\033[Ktlv: {} frames{}", frames, part);
        std::fflush(stderr);
        shown_ = true;
        next_ = Clock::now() + std::chrono::milliseconds(200);
    }

private:
    using Clock = std::chrono::steady_clock;

    std::optional<uint64_t> total_;
    bool wanted_ = isatty(STDERR_FILENO) != 0 && isatty(STDOUT_FILENO) == 0;
    bool shown_ = false;
    Clock::time_point next_ = Clock::now() + std::chrono::seconds(2);
};

} // namespace tlvmsg::tool
