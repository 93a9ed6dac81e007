#include "capture.h"

#include "headers.h"

#include "cli/failure.h"

#include <pcap/pcap.h>

#include <algorithm>
#include <cstdio>
#include <sys/stat.h>

namespace tlvmsg::tool {

using namespace cli;

namespace {

std::optional<uint64_t> size_of(std::FILE *file) {
    struct stat status {};
    const bool known = fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode);
    return known ? std::optional(static_cast<uint64_t>(status.st_size)) : std::nullopt;
}

// Null when the filter makes no sense for such frames.
std::shared_ptr<bpf_program> compiled(pcap_t *handle, const std::string &filter) {
    const std::shared_ptr<bpf_program> program(new bpf_program{}, [](bpf_program *each) {
        pcap_freecode(each);
        delete each;
    });
    const int result = pcap_compile(handle, program.get(), filter.c_str(), 1, PCAP_NETMASK_UNKNOWN);
    return result == 0 ? program : nullptr;
}

// The library reads a file's unsigned numbers as signed, and believes subseconds of a second and more.
Frame frame_of(uint64_t number, const pcap_pkthdr &header, const u_char *bytes) {
    constexpr int64_t second = 1'000'000'000;
    const int64_t subseconds = (header.ts.tv_usec % second + second) % second;
    int64_t seconds = header.ts.tv_sec + (header.ts.tv_usec - subseconds) / second;
    seconds += seconds < 0 ? int64_t{1} << 32 : 0;
    const size_t length = std::max(header.len, header.caplen);
    return {FrameFacts{number, seconds, static_cast<uint32_t>(subseconds), header.caplen, length},
            {bytes, header.caplen}};
}

// What to do about what Wireshark reads and the library does not.
const char *remedy(std::string_view error) {
    if (error.find("different from the type of the first interface") != error.npos) {
        return "; of each interface, tshark -r FILE -Y 'frame.interface_id == 0' -w A and then editcap -T "
               "ether A B make a file, with the name of its link type";
    }
    return error.find("block size") != error.npos
               ? "; where sections differ in their byte order, editcap FILE NEW gives them one"
               : "";
}

} // namespace

Capture::Capture(File file, std::string name, const std::string &filter)
    : name_(std::move(name)), size_(size_of(file.get())) {
    char error[PCAP_ERRBUF_SIZE] = "";
    pcap_t *const handle =
        pcap_fopen_offline_with_tstamp_precision(file.get(), PCAP_TSTAMP_PRECISION_NANO, error);
    if (handle == nullptr) {
        const bool unreadable = std::ferror(file.get()) != 0;
        throw Failure(unreadable ? exit_io : exit_malformed,
                      fmt::format("{}: {}{}", name_, error, remedy(error)));
    }
    static_cast<void>(file.release()); // closed with the handle from now on
    handle_.reset(handle, pcap_close);
    if (!filter.empty() && (filter_ = compiled(handle, filter)) == nullptr) {
        const std::string why = fmt::format("filter '{}': {}", filter, pcap_geterr(handle));
        const std::shared_ptr<pcap_t> ethernet(pcap_open_dead(DLT_EN10MB, 65535), pcap_close);
        throw compiled(ethernet.get(), filter)
            ? Failure(exit_malformed,
                      fmt::format("{}: {} (link type {})", name_, why, link_name(link_type())))
            : Failure(exit_usage, why);
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
        if (filter_ == nullptr || pcap_offline_filter(filter_.get(), header, bytes) != 0) {
            return frame_of(count_, *header, bytes);
        }
    }
    if (result != PCAP_ERROR_BREAK) { // which is the end of the file
        const char *const error = pcap_geterr(handle_.get());
        error_ = fmt::format("{}: {}{}", name_, error, remedy(error));
    }
    return std::nullopt;
}

void Capture::check() const {
    if (!error_.empty()) {
        throw Failure(exit_malformed, error_);
    }
}

int Capture::link_type() const { return pcap_datalink(handle_.get()); }

uint64_t Capture::position() const {
    const long position = std::ftell(pcap_file(handle_.get()));
    return position < 0 ? 0 : static_cast<uint64_t>(position);
}

} // namespace tlvmsg::tool
