// How far reading has come.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace tlvmsg::tool {

// What has been done so far, on standard error: only on a terminal that the output does not go to as well,
// and only when it takes longer than two seconds.
class Progress {
public:
    // `total` is unknown for pipes.
    Progress(std::string what, std::optional<uint64_t> total);
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    // Whether it is time to show something.
    bool due() const;
    void show(uint64_t count, uint64_t done);

private:
    using Clock = std::chrono::steady_clock;

    std::string what_;
    std::optional<uint64_t> total_;
    bool wanted_;
    bool shown_ = false;
    Clock::time_point next_;
};

} // namespace tlvmsg::tool
