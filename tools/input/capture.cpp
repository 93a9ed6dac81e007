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

// Null, and why, when the filter makes no sense for such frames.
std::shared_ptr<bpf_program> compiled(int link_type, const std::string &filter, std::string &why) {
    const int type = link_type == link_raw_ip ? DLT_RAW : link_type;
    const std::shared_ptr<pcap_t> handle(pcap_open_dead(type, 65535), pcap_close);
    const std::shared_ptr<bpf_program> program(new bpf_program{}, [](bpf_program *each) {
        pcap_freecode(each);
        delete each;
    });
    const bool fine = pcap_compile(handle.get(), program.get(), filter.c_str(), 1, PCAP_NETMASK_UNKNOWN) == 0;
    why = fine ? "" : fmt::format("filter '{}': {}", filter, pcap_geterr(handle.get()));
    return fine ? program : nullptr;
}

bool is_pcapng(std::FILE *file) {
    const int first = std::getc(file); // which no pcap begins with
    std::ungetc(first, file);
    return first == 0x0A;
}

// The library reads a file's unsigned numbers as signed, and believes subseconds of a second and more.
Frame frame_of(const pcap_pkthdr &header, int link_type, const u_char *bytes) {
    constexpr int64_t second = 1'000'000'000;
    const int64_t subseconds = (header.ts.tv_usec % second + second) % second;
    int64_t seconds = header.ts.tv_sec + (header.ts.tv_usec - subseconds) / second;
    seconds += seconds < 0 ? int64_t{1} << 32 : 0;
    const size_t length = std::max(header.len, header.caplen);
    return {FrameFacts{0, seconds, static_cast<uint32_t>(subseconds), header.caplen, length},
            link_type,
            {bytes, header.caplen}};
}

} // namespace

Capture::Capture(File file, std::string name, const std::string &filter)
    : name_(std::move(name)), filter_(filter), size_(size_of(file.get())), file_(std::move(file)) {
    if (is_pcapng(file_.get())) {
        pcapng_.emplace(file_.get());
        return;
    }
    char error[PCAP_ERRBUF_SIZE] = "";
    pcap_t *const handle =
        pcap_fopen_offline_with_tstamp_precision(file_.get(), PCAP_TSTAMP_PRECISION_NANO, error);
    if (handle == nullptr) {
        const bool unreadable = std::ferror(file_.get()) != 0;
        throw Failure(unreadable ? exit_io : exit_malformed, fmt::format("{}: {}", name_, error));
    }
    static_cast<void>(file_.release()); // closed with the handle from now on
    handle_.reset(handle, pcap_close);
}

// The library knows pcapng, too, but stops at a second link type or byte order.
std::optional<Frame> Capture::read() {
    if (pcapng_) {
        try {
            return pcapng_->next();
        } catch (const std::runtime_error &error) {
            error_ = fmt::format("{}: {}", name_, error.what());
            return std::nullopt;
        }
    }
    pcap_pkthdr *header = nullptr;
    const u_char *bytes = nullptr;
    const int result = pcap_next_ex(handle_.get(), &header, &bytes);
    if (result == 1) {
        return frame_of(*header, pcap_datalink(handle_.get()), bytes);
    }
    if (result != PCAP_ERROR_BREAK) { // which is the end of the file
        error_ = fmt::format("{}: {}", name_, pcap_geterr(handle_.get()));
    }
    return std::nullopt;
}

// The filter is applied here rather than by the library, so that frames keep the numbers that they have in
// the file.
std::optional<Frame> Capture::next() {
    while (std::optional<Frame> frame = read()) {
        frame->facts.number = ++count_;
        if (filter_.empty() || lets_through(*frame)) {
            return frame;
        }
    }
    return std::nullopt;
}

bool Capture::lets_through(const Frame &frame) {
    std::shared_ptr<bpf_program> &program = filters_[frame.link_type];
    std::string why, otherwise;
    if (program == nullptr && (program = compiled(frame.link_type, filter_, why)) == nullptr) {
        throw compiled(DLT_EN10MB, filter_, otherwise)
            ? Failure(exit_malformed,
                      fmt::format("{}: {} (link type {})", name_, why, link_name(frame.link_type)))
            : Failure(exit_usage, why);
    }
    pcap_pkthdr header{};
    header.caplen = static_cast<bpf_u_int32>(frame.bytes.size());
    header.len = static_cast<bpf_u_int32>(frame.facts.length);
    return pcap_offline_filter(program.get(), &header, frame.bytes.data()) != 0;
}

void Capture::check() const {
    if (!error_.empty()) {
        throw Failure(exit_malformed, error_);
    }
}

uint64_t Capture::position() const {
    const long position = std::ftell(pcapng_ ? file_.get() : pcap_file(handle_.get()));
    return position < 0 ? 0 : static_cast<uint64_t>(position);
}

} // namespace tlvmsg::tool
