// Why a command gives up, and the status that the program then exits with.
#pragma once

#include <stdexcept>
#include <string>

namespace tlvmsg::cli {

enum ExitStatus {
    exit_fine = 0,
    exit_found = 1, // a difference, or invalid data where the question was whether it is valid
    exit_usage = 2,
    exit_malformed = 3,
    exit_io = 4,
    exit_memory = 5
};

struct Failure : std::runtime_error {
    Failure(int status, const std::string &message) : std::runtime_error(message), exit_status(status) {}
    int exit_status;
};

} // namespace tlvmsg::cli
