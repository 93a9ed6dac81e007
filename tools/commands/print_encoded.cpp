#include "print_encoded.h"

#include "tools/cli/failure.h"
#include "tools/cli/faults.h"
#include "tools/cli/terminal.h"
#include "tools/text.h"

#include <algorithm>
#include <span>
#include <unistd.h>
#include <vector>

namespace tlvmsg::tool {

namespace {

void print_bytes(std::span<const uint8_t> bytes, const std::string &form) {
    const bool hex = form == "hex" || (form == "auto" && isatty(STDOUT_FILENO) != 0);
    if (!hex) {
        return print({reinterpret_cast<const char *>(bytes.data()), bytes.size()});
    }
    constexpr size_t bytes_a_line = 16;
    for (size_t at = 0; at < bytes.size(); at += bytes_a_line) {
        print(hex_pairs(bytes.subspan(at, std::min(bytes_a_line, bytes.size() - at))) + "\n");
    }
}

} // namespace

int print_encoded(const Record &record, const std::string &form) {
    size_t size = 0;
    tlvmsg_fault fault;
    std::vector<uint8_t> bytes;
    bool done = tlvmsg_size(record.type(), record.data(), &size, &fault);
    if (done) {
        bytes.resize(size);
        done = tlvmsg_encode(record.type(), record.data(), bytes.data(), bytes.size(), &size, &fault);
    }
    if (!done) {
        report(fault);
        return exit_malformed;
    }
    print_bytes(bytes, form);
    return exit_fine;
}

} // namespace tlvmsg::tool
