// Frames of every kind, written down here byte by byte, and what comes out of a capture of them.
#include "cli/failure.h"
#include "tools/input/packets.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <unistd.h>

namespace tlvmsg::tool {

using namespace cli;

namespace {

using Octets = std::string;
using Lines = std::vector<std::string>;
using namespace std::string_literals;

constexpr char syn = 2;
constexpr char ack = 16;

Octets be16(size_t value) { return {static_cast<char>(value >> 8), static_cast<char>(value)}; }
Octets be32(size_t value) { return be16(value >> 16) + be16(value & 0xFFFF); }
Octets le32(size_t value) {
    const Octets bytes = be32(value);
    return {bytes.rbegin(), bytes.rend()};
}

Octets udp(const Octets &data, size_t port = 4001) {
    return be16(4000) + be16(port) + be16(8 + data.size()) + "\0\0"s + data;
}

Octets ipv4(char protocol, const Octets &data, size_t id = 0, size_t fragment = 0) {
    return "\x45\0"s + be16(20 + data.size()) + be16(id) + be16(fragment) + "\x40"s + protocol + "\0\0"s +
           "\x0A\0\0\1\x0A\0\0\2"s + data;
}

Octets ipv6(char next, const Octets &data) {
    return "\x60\0\0\0"s + be16(data.size()) + next + "\x40"s + "\xFE\x80"s + Octets(13, 0) + "\1\xFE\x80"s +
           Octets(13, 0) + "\2"s + data;
}

Octets tcp(size_t sequence, const Octets &data, char flags = ack, size_t port = 4000) {
    return ipv4(6,
                be16(port) + be16(4001) + be32(sequence) + be32(0) + "\x50"s + flags + Octets(6, 0) + data);
}

Octets ethernet(size_t type, const Octets &data) { return "\2\2\2\2\2\1\2\2\2\2\2\2"s + be16(type) + data; }

struct Recorded {
    Octets bytes;
    size_t missing = 0;
    size_t microseconds = 0;
    Recorded(const Octets &frame, size_t left_out = 0, size_t time = 0)
        : bytes(frame), missing(left_out), microseconds(time) {}
};

Octets capture_of(int link_type, const std::vector<Recorded> &frames) {
    Octets file =
        le32(0xA1B2C3D4) + "\2\0\4\0"s + Octets(8, 0) + le32(1 << 18) + le32(static_cast<size_t>(link_type));
    for (const Recorded &each : frames) {
        const size_t size = each.bytes.size();
        file += le32(7) + le32(each.microseconds) + le32(size - each.missing) + le32(size) +
                each.bytes.substr(0, size - each.missing);
    }
    return file;
}

// What a file yields, a payload each: "3 hello" with the frame's number, or "3 fragment: 8 bytes ...".
class Reader {
public:
    explicit Reader(const Octets &file, const std::string &framing = "segment",
                    std::optional<size_t> offset = {}) {
        std::ofstream(path_, std::ios::binary) << file;
        const auto fits = [](const FrameFacts &, Bytes there, size_t) { // begins like a word of lower case
            return !there.empty() && there[0] >= 'a' && there[0] <= 'z';
        };
        packets_.emplace(open_file(path_), path_, PacketOptions{"", offset, {parse_framing(framing), fits}});
    }
    ~Reader() { unlink(path_.c_str()); }

    std::string next() {
        const std::optional<Payload> payload = packets_->next();
        if (!payload) {
            return "";
        }
        facts = payload->facts;
        const std::string what = payload->problem ? fmt::format("{}: {}", code_name(payload->problem->code),
                                                                payload->problem->text)
                                                  : Octets(payload->bytes.begin(), payload->bytes.end());
        return fmt::format("{} {}", facts.number, what);
    }

    FrameFacts facts;

private:
    std::string path_ = fmt::format("{}packets_test.{}.pcap", testing::TempDir(), getpid());
    std::optional<Packets> packets_;
};

Lines all(int link_type, const std::vector<Recorded> &frames, const std::string &framing = "segment") {
    Reader reader(capture_of(link_type, frames), framing);
    Lines lines;
    for (std::string line; !(line = reader.next()).empty();) {
        lines.push_back(line);
    }
    return lines;
}

constexpr int link_ethernet = 1;
constexpr int link_ip = 101;

TEST(Packets, FindThePayloadBehindTheHeadersOfEveryLink) {
    const Octets v4 = ipv4(17, udp("hello")), v6 = ipv6(17, udp("hello"));
    const Octets cooked = "\0\4\0\1\0\6\2\2\2\2\2\2\0\0"s, cooked2 = "\0\0\0\0\0\1\0\1\4\6\2\2\2\2\2\2\0\0"s;
    const Octets snap = "\xAA\xAA\3\0\0\0"s;
    const std::pair<int, Octets> frames[] = {
        {1, ethernet(0x0800, v4 + "padding")},
        {1, ethernet(0x86DD, v6 + "padding")},
        {1, ethernet(0x88A8, "\0\1\x81\0\0\2\x91\0\0\3\x08\0"s + v4)},
        {113, cooked + be16(0x0800) + v4},
        {113, cooked + be16(0x8100) + "\0\1\x86\xDD"s + v6},
        {276, be16(0x0800) + cooked2 + v4},
        {276, be16(0x86DD) + cooked2 + v6},
        {101, v4},
        {101, v6},
        {12, v4},
        {228, v4},
        {229, v6},
        {0, "\2\0\0\0"s + v4},
        {0, "\0\0\0\2"s + v4},
        {0, "\x1E\0\0\0"s + v6},
        {108, "\0\0\0\x18"s + v6},
        {9, "\xFF\3\0\x21"s + v4},
        {9, "\x57"s + v6},
        {1, ethernet(8 + v4.size(), snap + be16(0x0800) + v4 + "padding")},
        {1, ethernet(3 + v4.size(), "\6\6\3"s + v4)},
        {113, "\0\4\0\1\0\6\2\2\2\2\2\2\0\0\0\4"s + snap + be16(0x86DD) + v6},
        {1, ethernet(0x8847, "\0\1\0\xFF\0\2\1\xFF"s + v4)},
        {219, "\0\2\1\xFF\0\0\0\7"s + ethernet(0x86DD, v6)},
        {219, "\0\2\1\xFF"s + ethernet(0x0800, v4)},
        {1, ethernet(0x8864, "\x11\0\0\5"s + be16(2 + v4.size()) + "\0\x21"s + v4 + "padding")},
        {101, ipv4(4, v4)},
        {101, ipv4(41, v6)},
        {101, ipv6(4, v4)},
        {101, ipv4(47, "\0\0\x08\0"s + v4)},
        {101, ipv4(47, "\xB0\0\x65\x58"s + Octets(12, 1) + ethernet(0x8100, "\0\1\x08\0"s + v4))},
        {101, ipv4(47, "\x30\x81\x88\x0B"s + Octets(12, 1) + "\xFF\3\0\x21"s + v4)},
        {101, ipv4('\x89', "\0\2\1\xFF"s + v6)},
        {101, ipv4(17, udp("\x08\0\0\0\0\0\7\0"s + ethernet(0x0800, v4), 4789))},
    };
    for (const auto &[link, frame] : frames) {
        Reader reader(capture_of(link, {frame}));
        EXPECT_EQ(reader.next(), "1 hello") << link;
        const FrameFacts &facts = reader.facts;
        ASSERT_TRUE(facts.ports);
        EXPECT_EQ(fmt::format("{} {} {} {} {}", facts.source, facts.ports->source, facts.destination,
                              facts.ports->destination, facts.protocol),
                  facts.source[0] == 'f' ? "fe80::1 4000 fe80::2 4001 udp"
                                         : "10.0.0.1 4000 10.0.0.2 4001 udp");
        EXPECT_EQ(facts.length, frame.size());
    }
    const std::pair<int, Octets> others[] = {
        {147, "hello"}, {162, "hello"}, {252, "\0\x0C\0\3abc\0\0\0\0hello"s}, {0, "\7\0\0\0hello"s}};
    for (const auto &[link, frame] : others) {
        EXPECT_EQ(all(link, {frame}), Lines{"1 hello"}) << link;
    }
    const Lines unknown = all(105, {"hello"s, "hello"s});
    EXPECT_EQ(unknown.size(), 2);
    EXPECT_EQ(unknown[0].substr(0, 58), "1 link-type: the headers of link type 105 (IEEE802_11) are");
    Reader reader(capture_of(105, {"hello"s}), "segment", 2);
    EXPECT_EQ(reader.next(), "1 llo");
}

TEST(Packets, BeginBehindTheInnermostKnownHeader) {
    Reader own(capture_of(link_ethernet, {ethernet(0x88B5, "hello")}));
    EXPECT_EQ(own.next(), "1 hello");
    EXPECT_EQ(own.facts.protocol, "ethertype 0x88B5");
    const std::pair<Octets, std::string> named[] = {
        {ethernet(8, "\x42\x42\3hello"), "llc 0x42"},
        {ethernet(13, "\xAA\xAA\3\0\0\x0C\x20\0hello"s), "snap 00000C 0x2000"},
        {ethernet(0x8864, "\x11\0\0\5\0\7\xC0\x21hello"s), "ppp 0xC021"},
        {ethernet(0x0800, ipv4(47, "\0\0\x88\xB5hello"s)), "ethertype 0x88B5"},
        {ethernet(0x0800, ipv4(17, udp("hello", 4789))), "udp"}};
    for (const auto &[frame, name] : named) {
        Reader other(capture_of(link_ethernet, {frame}));
        EXPECT_EQ(other.next() + " " + other.facts.protocol, "1 hello " + name);
    }
    EXPECT_EQ(own.facts.source + own.facts.destination, "02:02:02:02:02:0202:02:02:02:02:01");
    const Octets options = "\0\0\0\0\0\0\0"s;
    const Octets extended = ipv6(0, "\x2B"s + options + "\x3C"s + options + "\x33\1"s + Octets(14, 0) +
                                        "\x11\4"s + Octets(22, 0) + udp("hello"));
    EXPECT_EQ(all(link_ip, {extended, ipv4(51, "\x11\4"s + Octets(22, 0) + udp("hello"))}),
              (Lines{"1 hello", "2 hello"}));
    Octets offloaded = ipv4(89, "hello");
    offloaded[2] = offloaded[3] = 0;
    Octets no_length = ipv4(17, udp("hello")), no_header = tcp(1, "hello");
    no_length[25] = 0;
    no_header[32] = '\x40'; // of less than it has at least
    EXPECT_EQ(all(link_ip, {offloaded, no_length, no_header}), (Lines{"1 hello", "2 hello", "3 hello"}));
    // Neither of these is an IP packet.
    const Octets few = "\x42 words for a header", length = "\x45\0\0\x0A are too few for it"s,
                 version = "\x12";
    EXPECT_EQ(all(link_ip, {few, length, version}), (Lines{"1 " + few, "2 " + length, "3 " + version}));
}

TEST(Packets, TellWhatTheSnapLengthCut) {
    const Octets frame = ethernet(0x0800, ipv4(17, udp("hello")));
    EXPECT_EQ(
        all(link_ethernet, {{frame + "padding", 7}, {frame, 1}, {frame, 7}, {frame, 27}, {frame, 46}, frame}),
        (Lines{"1 hello", "2 cut: bytes missing at its end: 1", "3 cut: it ends inside the UDP header",
               "4 cut: it ends inside the IPv4 header", "5 cut: it ends inside the Ethernet header",
               "6 hello"}));
    EXPECT_EQ(all(link_ip, {ipv4(17, udp("hello")).substr(0, 30)}),
              Lines{"1 cut: bytes missing at its end: 3"});
    EXPECT_EQ(all(147, {{"hello"s, 2}}), Lines{"1 cut: bytes missing at its end: 2"});
    EXPECT_EQ(all(link_ip, {{tcp(1, "abc"), 1}, tcp(4, "def")}),
              (Lines{"1 cut: bytes missing at its end: 1", "2 def"}));
    EXPECT_EQ(all(link_ip, {ipv4(17, udp("hello")), {ipv4(17, udp("hello"), 1, 0x2000), 1}}),
              (Lines{"1 hello", "2 cut: bytes missing at its end: 1"}));
}

// A datagram of 48 bytes in three fragments.
Octets part(size_t index, size_t id = 1, size_t size = 16) {
    const Octets whole = udp(Octets(20, 'a') + Octets(20, 'b'));
    return ipv4(17, whole.substr(16 * index, size), id, 2 * index | (index < 2 ? 0x2000 : 0));
}

TEST(Packets, PutFragmentsTogether) {
    const std::string whole = Octets(20, 'a') + Octets(20, 'b');
    const Recorded other = ipv4(17, Octets(16, 'x'), 1, 0x2001), behind = ipv4(17, "beyond", 1, 0x2010);
    const std::pair<std::vector<Recorded>, Lines> cases[] = {
        {{part(2), part(0), part(1), part(0), part(2), part(1)}, {"3 " + whole, "6 " + whole}},
        {{part(0, 1, 24), part(0), part(0, 2), part(2), part(1), part(2, 2), part(1, 2)},
         {"5 " + whole, "7 " + whole}},
        {{part(0), other, part(1), part(2)}, {"4 " + Octets(8, 'a') + Octets(8, 'x') + whole.substr(16)}},
        {{part(2), behind, part(0), part(1)}, {"4 " + whole}},
        {{behind, part(2), part(0), part(1)}, {"4 " + whole}},
        {{part(0), part(2), part(1, 2), part(1, 2)},
         {"1 fragment: 16 of the datagram's 48 bytes are missing",
          "3 fragment: 16 bytes of the datagram have come, its end has not"}},
        {{ipv4(17, Octets(1000, 0), 1, 0x1FFF)},
         {"1 fragment: 65528 of the datagram's 66528 bytes are missing"}},
    };
    for (const auto &[frames, lines] : cases) {
        EXPECT_EQ(all(link_ip, frames), lines);
    }
    const Octets options = "\x11\0\0\0\0\0\0\0"s, data = options + udp("hello");
    EXPECT_EQ(all(link_ip, {ipv6(0, "\x2C\0\0\0\0\0\0\0\x3C\0\0\x10\0\0\0\7"s + data.substr(16)),
                            ipv6(44, "\x3C\0\0\1\0\0\0\7"s + data.substr(0, 16)),
                            ipv6(44, "\x11\0\0\0\0\0\0\7"s + udp("whole"))}),
              (Lines{"2 hello", "3 whole"}));
}

TEST(Packets, KeepABoundedNumberOfDatagrams) {
    for (const size_t count : {64U, 65U}) {
        std::vector<Recorded> frames;
        for (const size_t index : {0U, 2U, 1U}) {
            for (size_t id = 0; id < count; ++id) {
                frames.emplace_back(part(index, id));
            }
        }
        const Lines lines = all(link_ip, frames);
        ASSERT_EQ(lines.size(), count == 64 ? 64 : 195); // the oldest is always the next one wanted
        EXPECT_EQ(lines[0].substr(0, 10), count == 64 ? "129 aaaaaa" : "1 fragment");
    }
}

TEST(Packets, PutSegmentsInOrder) {
    EXPECT_EQ(all(link_ip, {tcp(0xFFFFFFFB, "", syn), tcp(0xFFFFFFFC, "abc"), tcp(2, "ghi"), tcp(2, "ghi"),
                            tcp(0xFFFFFFFF, "def"), tcp(0xFFFFFFFB, "", syn), tcp(0xFFFFFFFC, "abc"),
                            tcp(0xFFFFFFFF, "defghijk"), tcp(7, "", 1)}),
              (Lines{"1 segment: no data (SYN)", "2 abc", "5 def", "3 ghi",
                     "4 segment: all of its bytes have come before", "6 segment: no data (SYN)",
                     "7 segment: all of its bytes have come before", "8 jk", "9 segment: no data (FIN)"}));
    // Begun in the middle; another stream; the addresses and ports of one that was.
    EXPECT_EQ(all(link_ip, {tcp(5000, "abc"), tcp(9, "xyz", ack, 4002), tcp(4990, "early"), tcp(5003, "def"),
                            tcp(70000, "", syn), tcp(70001, "ghi"), tcp(0x80000000, "jkl")}),
              (Lines{"1 abc", "2 xyz",
                     "3 segment: 5 of its 5 bytes lie before the first segment seen of its connection",
                     "4 def", "5 segment: no data (SYN)", "6 ghi", "7 jkl"}));
}

TEST(Packets, TellWhatIsMissingInAStream) {
    const std::string gap = "2 segment: bytes missing before this segment: 5";
    EXPECT_EQ(all(link_ip, {tcp(1, "abc"), tcp(9, "ghi"), tcp(12, "jkl")}),
              (Lines{"1 abc", gap, "2 ghi", "3 jkl"}));
    EXPECT_EQ(all(link_ip, {tcp(0, "", syn), tcp(1, be16(9) + "abc"), tcp(9, be16(2) + "de")}, "length:2@0"),
              (Lines{"2 segment: 5 of a message's 11 bytes",
                     "3 segment: bytes missing before this segment: 3", "3 de"}));
    // Begun inside a message; a lost segment, behind which another one ends; damage; what never comes.
    EXPECT_EQ(
        all(link_ip,
            {tcp(7, "ing" + be16(3) + "one" + be16(4)), tcp(17, "four" + be16(9) + "lo"),
             tcp(30, "st" + be16(2) + "ok"), tcp(36, "\xFF\xFF" + be16(3) + "two" + be16(70) + "x")},
            "length:2@0,most=80"),
        (Lines{"1 segment: bytes passed over without a whole message of a known type: 3", "1 one", "2 four",
               "2 segment: 4 of a message's 11 bytes", "3 segment: bytes missing before this segment: 5",
               "3 segment: bytes passed over without a whole message of a known type: 2", "3 ok",
               "4 segment: frame: a message of 65535 bytes, where 80 are allowed at byte 24",
               "4 segment: bytes passed over without a whole message of a known type: 2", "4 two",
               "4 segment: 3 of a message's 72 bytes"}));
    std::vector<Recorded> flood = {tcp(1, "abc")};
    for (size_t i = 0; i < 10; ++i) {
        flood.emplace_back(tcp(9 + 30000 * i, Octets(30000, 'x')));
    }
    flood.emplace_back(ipv4(89, "now"));
    const Lines lines = all(link_ip, flood);
    EXPECT_EQ(lines[1], gap);
    EXPECT_EQ(lines.back(), "12 now");
}

TEST(Packets, KeepABoundedNumberOfStreams) {
    std::vector<Recorded> frames;
    for (size_t i = 0; i < 514; ++i) { // the first is used again, the second and third are too many
        frames.emplace_back(tcp(1, be16(9) + "abc", ack, i));
        if (i == 2) {
            frames.emplace_back(tcp(6, "d", ack, 0));
        }
    }
    frames.emplace_back(tcp(7, "efghi", ack, 0));
    const Lines lines = all(link_ip, frames, "length:2@0");
    EXPECT_EQ(lines[0], "2 segment: bytes passed over without a whole message of a known type: 5");
    EXPECT_EQ(lines[2], "516 abcdefghi");
    // Each holds less than it may, but all of them more.
    frames.clear();
    for (size_t i = 0; i < 400; ++i) {
        frames.emplace_back(tcp(1 + 60001 * (i % 4), Octets(60000, 'x'), ack, i / 4));
    }
    frames.emplace_back(ipv4(89, "now"));
    const Lines held = all(link_ip, frames);
    EXPECT_EQ(held.size(), 701);
    EXPECT_GT(std::find(held.begin(), held.end(), "401 now") - held.begin(), 100 + 30);
}

TEST(Packets, CutMessagesOutByTheirLengths) {
    const Octets one = "\xAA\0\3\xBB"s + "one", two = "\xAA\0\5\xBB"s + "three", none = "\xAA\0\0\xBB"s;
    EXPECT_EQ(all(link_ip,
                  {tcp(0, "", syn), tcp(1, one + two.substr(0, 2)), tcp(10, two.substr(2, 4)),
                   tcp(14, two.substr(6) + none + one), tcp(28, one.substr(0, 6))},
                  "length:2@1+4"),
              (Lines{"2 one", "4 three", "4 ", "4 one", "5 segment: 6 of a message's 7 bytes"}));
    EXPECT_EQ(
        all(link_ip, {tcp(1, be32(1) + "a" + be32(0x100001) + "junk"), tcp(14, be32(2) + "bc")},
            "length:4@0"),
        (Lines{"1 a", "1 segment: frame: a message of 1048577 bytes, where 1048576 are allowed at byte 5",
               "2 segment: bytes passed over without a whole message of a known type: 8", "2 bc"}));
    EXPECT_EQ(all(link_ip, {ipv4(17, udp("\1a\2bc\0\0\3d"s))}, "length:1@0"),
              (Lines{"1 a", "1 bc", "1 segment: messages without a byte: 2",
                     "1 segment: 2 of a message's 4 bytes"}));
    EXPECT_EQ(all(link_ip, {{ipv4(17, udp("\1a\2bc")), 1}}, "length:1@0"),
              (Lines{"1 a", "1 cut: bytes missing at its end: 1"}));
    EXPECT_EQ(all(link_ip, {tcp(1, "xxabc"), ipv4(17, udp("xxdef")), ipv4(17, udp("x"))}, "skip:2"),
              (Lines{"1 abc", "2 def", "3 segment: 1 of 2 bytes before a message"}));
    for (const char *wrong : {"", "segments", "skip:", "skip:-1", "length:5@0", "length:2@0,", "length:2",
                              "length:2@1+2", "skip:4x", "skip:100000"}) {
        EXPECT_THROW(parse_framing(wrong), Failure) << wrong;
    }
}

TEST(Packets, ComeBeforeTheNextFrameIsThere) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const Octets file = capture_of(link_ip, {ipv4(17, udp("hello")), tcp(1, "abc")});
    ASSERT_EQ(write(ends[1], file.data(), file.size()), static_cast<ssize_t>(file.size()));
    Packets packets(open_file(fmt::format("/dev/fd/{}", ends[0])), "a pipe", {});
    EXPECT_EQ(packets.next()->facts.number, 1);
    EXPECT_EQ(packets.next()->facts.number, 2);
    close(ends[1]);
    EXPECT_FALSE(packets.next());
    close(ends[0]);
}

TEST(Packets, HaveATimeAndAreToldBeforeABrokenFrame) {
    const Octets file = capture_of(link_ip, {{ipv4(17, udp("hello")), 0, 2500001}, part(0), part(1)});
    Reader reader(file.substr(0, file.size() - 1));
    EXPECT_EQ(reader.next(), "1 hello");
    EXPECT_EQ(reader.facts.seconds, 9);
    EXPECT_EQ(reader.facts.nanoseconds, 500001000);
    EXPECT_EQ(reader.next(), "2 fragment: 16 bytes of the datagram have come, its end has not");
    EXPECT_THROW(reader.next(), Failure);
    Octets last = capture_of(147, {{"hello"s, 0, 0xFFFFFFFF}});
    std::fill_n(last.begin() + 24, 4, '\xFF');
    Reader wrong(last);
    EXPECT_EQ(wrong.next(), "1 hello");
    EXPECT_GT(wrong.facts.seconds, int64_t{0xFFFFFFF0});
    EXPECT_LT(wrong.facts.nanoseconds, 1'000'000'000);
}

// Whatever the bytes: it ends, every frame of an unknown link is told, nothing grows beyond its bounds.
TEST(Packets, StandAnyBytes) {
    std::mt19937 random(1);
    const Octets fragment = ipv6(0, "\x2C"s + Octets(7, 0) + "\x11\0\0\1\0\0\0\7"s + udp("\1a\2bc"));
    const Octets packets[] = {fragment,          part(1),         part(2),
                              tcp(1, "\1a\2bc"), tcp(4, "", syn), tcp(9, "\3abc")};
    const Octets vlan = "\1\1\1\1\1\1\1\1\1\1\1\1\1\1\x81\0\0\0\x08\0"s;
    const std::pair<int, Octets> links[] = {{0, "\0\0\0\2"s}, {1, ethernet(0x0800, "")},  {101, ""},
                                            {105, ""},        {252, "\0\1\0\0\0\0\0\0"s}, {113, vlan}};
    for (const auto &[link, prefix] : links) {
        std::vector<Recorded> frames;
        for (size_t i = 0; i < 3000; ++i) {
            Octets frame = prefix + packets[random() % std::size(packets)];
            for (size_t changes = random() % 4; changes > 0; --changes) {
                frame[random() % frame.size()] = static_cast<char>(random());
            }
            frames.emplace_back(frame.substr(0, 1 + random() % (2 * frame.size())), random() % 8 == 0);
        }
        for (const char *framing : {"segment", "skip:3", "length:1@0"}) {
            const Lines lines = all(link, frames, framing);
            EXPECT_TRUE(link != 105 || lines.size() == frames.size());
            for (const std::string &line : lines) {
                ASSERT_LE(line.size(), 70000) << link;
            }
        }
    }
}

} // namespace

} // namespace tlvmsg::tool
