#include "capture.h"

#include "file.h"
#include "tools/cli/failure.h"

#include <fmt/format.h>
#include <pcap/pcap.h>

#include <cstdio>
#include <sys/stat.h>

namespace tlvmsg::tool {

namespace {

std::optional<uint64_t> size_of(std::FILE *file) {
    struct stat status {};
    const bool known = fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode);
    return known ? std::optional(static_cast<uint64_t>(status.st_size)) : std::nullopt;
}

} // namespace

void Capture::Close::operator()(pcap *handle) const { pcap_close(handle); }

void Capture::Close::operator()(bpf_program *filter) const {
    pcap_freecode(filter);
    delete filter;
}

Capture::Capture(const std::string &path, const std::string &filter) : name_(file_name(path)) {
    File file = open_file(path);
    size_ = size_of(file.get());
    char error[PCAP_ERRBUF_SIZE] = "";
    handle_.reset(pcap_fopen_offline_with_tstamp_precision(file.get(), PCAP_TSTAMP_PRECISION_NANO, error));
    if (handle_ == nullptr) {
        const bool unreadable = std::ferror(file.get()) != 0;
        throw Failure(unreadable ? exit_io : exit_malformed, fmt::format("{}: {}", name_, error));
    }
    static_cast<void>(file.release()); // closed with the handle from now on
    filter_.reset(new bpf_program{});
    if (pcap_compile(handle_.get(), filter_.get(), filter.c_str(), 1, PCAP_NETMASK_UNKNOWN) != 0) {
        throw Failure(exit_usage, fmt::format("filter '{}': {}", filter, pcap_geterr(handle_.get())));
    }
}

// The filter is applied here rather than by the library, so that frames keep the numbers that they have in
// the file.
std::optional<Frame> Capture::next() {
    pcap_pkthdr *header = nullptr;
    const u_char *bytes = nullptr;
    int result = 0;
    while ((result = pcap_next_ex(handle_.get(), &header, &bytes)) == 1) {
        ++count_;
        if (pcap_offline_filter(filter_.get(), header, bytes) != 0) {
            const auto nanoseconds = static_cast<uint32_t>(header->ts.tv_usec);
            return Frame{count_, header->ts.tv_sec, nanoseconds, {bytes, header->caplen}};
        }
    }
    if (result != PCAP_ERROR_BREAK) { // which is the end of the file
        throw Failure(exit_malformed, fmt::format("{}: {}", name_, pcap_geterr(handle_.get())));
    }
    return std::nullopt;
}

int Capture::link_type() const { return pcap_datalink(handle_.get()); }

uint64_t Capture::position() const {
    const long position = std::ftell(pcap_file(handle_.get()));
    return position < 0 ? 0 : static_cast<uint64_t>(position);
}

} // namespace tlvmsg::tool
