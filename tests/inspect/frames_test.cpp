// Frames: any framing, any stream, cut anywhere, against a model that sees the whole stream at once.
#include "support/guarded.h"
#include "support/hex.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/bounded/common.h>
#include <tlvmsg/frames.h>
#include <tlvmsg/record.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace tlvmsg_test {

namespace {

constexpr uint8_t first_byte = 0xF5;

// Of bodies that begin with one byte and end with another; null where bytes that are not there are asked for.
bool fits(void *context, const uint8_t *body, size_t there, size_t size) {
    EXPECT_LE(there, size);
    EXPECT_NE(context, nullptr);
    return size > 1 && (there == 0 || body[0] == first_byte) && (there < size || body[size - 1] == 7);
}

struct Random {
    std::mt19937 engine;
    size_t below(size_t most) { return engine() % most; }
};

auto members(const tlvmsg_framing &of) {
    return std::tuple(of.header, of.length_at, of.most, of.adjust, of.width, of.little);
}

tlvmsg_framing random_framing(Random &random) {
    for (;;) {
        tlvmsg_framing framing{};
        framing.width = static_cast<uint8_t>(random.below(5));
        framing.length_at = static_cast<uint32_t>(random.below(4));
        framing.header = static_cast<uint32_t>(random.below(8));
        framing.most = static_cast<uint32_t>(random.below(3) == 0 ? 0 : random.below(40));
        framing.little = random.below(2) != 0;
        framing.adjust = static_cast<int32_t>(random.below(2) != 0 ? 0 : random.below(20)) - 10;
        char text[TLVMSG_FRAMING_TEXT];
        if (tlvmsg_framing_to_text(&framing, text, sizeof text) > 0 && framing.width != 0) {
            tlvmsg_framing again{};
            EXPECT_TRUE(tlvmsg_framing_from_text(text, &again, nullptr)) << text;
            EXPECT_EQ(members(again), members(framing)) << text;
            return framing;
        }
    }
}

Bytes random_stream(const tlvmsg_framing &framing, Random &random) {
    Bytes stream;
    while (random.below(12) != 0) {
        Bytes frame(framing.header + random.below(30), static_cast<uint8_t>(random.below(3)));
        const size_t size = frame.size() - framing.header;
        if (tlvmsg_frame_header(&framing, size, frame.data(), nullptr) && size > 0) {
            frame[framing.header] = random.below(3) != 0 ? first_byte : 1;
            frame.back() = 7;
        }
        stream.insert(stream.end(), frame.begin(), frame.end() - static_cast<ptrdiff_t>(random.below(9) / 8));
        stream.insert(stream.end(), random.below(9) / 8, static_cast<uint8_t>(random.below(256)));
    }
    return stream;
}

enum Action { skip, search, stop };

struct Outcome {
    std::vector<std::string> lines; // bodies and faults
    uint64_t passed = 0;
};

std::string line_of(const tlvmsg_fault &fault) {
    char line[TLVMSG_FAULT_TEXT];
    tlvmsg_fault_text(&fault, line, sizeof line);
    return line;
}

// The whole stream at once, in 64 bits. What is refused is answered by `action`, and so is a whole frame of one byte.
Outcome model(const tlvmsg_framing &framing, const Bytes &stream, Action action) {
    Outcome outcome;
    const int64_t header = framing.header, adjust = framing.adjust;
    const int64_t most = std::min<int64_t>(framing.most != 0 ? framing.most : 1 << 20,
                                           (int64_t{1} << 8 * framing.width) - 1 + adjust);
    bool searching = false;
    for (size_t at = 0; at < stream.size();) {
        const auto left = static_cast<int64_t>(stream.size() - at);
        int64_t length = left < header ? -adjust : 0;
        for (size_t i = 0; i < framing.width && left >= header; ++i) {
            length =
                length * 256 + stream[at + framing.length_at + (framing.little ? framing.width - 1 - i : i)];
        }
        const int64_t body = length + adjust;
        int64_t skipped = 0;
        tlvmsg_fault fault{TLVMSG_OK, at, 0, 0, "frame", {}};
        const auto refuse = [&](tlvmsg_code code, int64_t found, int64_t allowed, int64_t skips) {
            fault.code = code;
            fault.found = static_cast<uint64_t>(found);
            fault.allowed = static_cast<uint64_t>(allowed);
            skipped = std::min(skips, left);
        };
        if (body < 0) {
            refuse(TLVMSG_FRAME_TOO_SHORT, length, -adjust, header);
        } else if (body > most && left >= header) {
            refuse(TLVMSG_FRAME_TOO_LONG, body, most, header + body);
        } else if (left < header + body) {
            refuse(TLVMSG_TRUNCATED, left, header + body, left);
        }
        const bool is_frame = fault.code == TLVMSG_OK;
        const auto size = static_cast<size_t>(body);
        const uint8_t *const begin = stream.data() + at + header;
        if (searching && !(is_frame && fits(&outcome, begin, size, size))) {
            skipped = 1;
        } else if (is_frame) {
            outcome.lines.emplace_back(begin, begin + size);
            searching = size == 1 && action == search;
            skipped = searching ? 1 : 0;
            at += searching ? 0 : static_cast<size_t>(header) + size;
        } else {
            outcome.lines.push_back(line_of(fault));
            if (action == stop) {
                break;
            }
            searching = action == search;
            skipped = searching ? 1 : skipped;
        }
        outcome.passed += static_cast<uint64_t>(skipped);
        at += static_cast<size_t>(skipped);
    }
    return outcome;
}

// The same, in pieces, in a buffer that ends at a page that may not be touched, or in the pool.
Outcome in_pieces(const tlvmsg_framing &framing, const Bytes &stream, Action action, Random &random) {
    Outcome outcome;
    const GuardedBuffer buffer(TLVMSG_FRAMES_STATE + framing.header + framing.most + random.below(9));
    void *const own = framing.most != 0 && random.below(2) != 0 ? buffer.data() : nullptr;
    tlvmsg_frames *const frames = tlvmsg_frames_new(&framing, own, buffer.size(), nullptr);
    size_t came = 0;
    for (bool ended = false;;) {
        tlvmsg_fault fault;
        const uint8_t *body;
        size_t size;
        while (tlvmsg_frames_next(frames, &body, &size, &fault)) {
            outcome.lines.emplace_back(body, body + size);
            if (size == 1 && action == search) {
                tlvmsg_frames_resync(frames, fits, &outcome);
            }
        }
        if (fault.code != TLVMSG_OK) {
            outcome.lines.push_back(line_of(fault));
            EXPECT_EQ(tlvmsg_frames_room(frames, &size, &fault), nullptr);
            EXPECT_EQ(outcome.lines.back(), line_of(fault));
            if (action == stop) {
                break;
            }
            action == skip ? tlvmsg_frames_skip(frames) : tlvmsg_frames_resync(frames, fits, &outcome);
        } else if (ended) {
            break;
        } else if (came == stream.size()) {
            tlvmsg_frames_end(frames);
            ended = true;
        } else {
            uint8_t *const room = tlvmsg_frames_room(frames, &size, &fault);
            const size_t count = std::min({size, stream.size() - came, 1 + random.below(12)});
            EXPECT_GT(count, 0) << line_of(fault);
            std::copy_n(stream.begin() + static_cast<ptrdiff_t>(came), count, room);
            EXPECT_FALSE(tlvmsg_frames_filled(frames, static_cast<ptrdiff_t>(size) + 1));
            EXPECT_TRUE(tlvmsg_frames_filled(frames, static_cast<ptrdiff_t>(count)));
            came += count;
        }
    }
    outcome.passed = tlvmsg_frames_passed(frames);
    tlvmsg_frames_free(frames);
    return outcome;
}

TEST(Frames, AreThoseOfTheWholeStreamHoweverItIsCut) {
    Random random;
    size_t bodies = 0, faults = 0, passed = 0;
    osal_double_reset();
    for (size_t i = 0; i < 30000; ++i) {
        const tlvmsg_framing framing = random_framing(random);
        const Bytes stream = random_stream(framing, random);
        const auto action = static_cast<Action>(random.below(3));
        const Outcome expected = model(framing, stream, action),
                      found = in_pieces(framing, stream, action, random);
        char text[TLVMSG_FRAMING_TEXT];
        tlvmsg_framing_to_text(&framing, text, sizeof text);
        ASSERT_EQ(found.lines, expected.lines) << i << ' ' << text << ' ' << action;
        ASSERT_EQ(found.passed, expected.passed) << i << ' ' << text << ' ' << action;
        for (const std::string &line : found.lines) {
            ++(line.starts_with("error") ? faults : bodies);
        }
        passed += found.passed;
    }
    EXPECT_TRUE(bodies > 10000 && faults > 10000 && passed > 10000)
        << bodies << ' ' << faults << ' ' << passed;
    EXPECT_EQ(osal_double_blocks_out() + osal_double_faults(), 0);
}

TEST(Frames, TakeNoMoreMemoryThanTheyMayAndLoseNothingWithoutIt) {
    tlvmsg_framing framing{4, 0, 0, 0, 4, false, {}};
    tlvmsg_fault fault;
    size_t size = 0;
    const uint8_t *body;
    osal_double_reset();
    tlvmsg_frames *frames = tlvmsg_frames_new(&framing, nullptr, 0, nullptr);
    const auto feed = [&](size_t count, uint8_t byte) {
        std::fill_n(tlvmsg_frames_room(frames, &size, nullptr), count, byte);
        EXPECT_TRUE(tlvmsg_frames_filled(frames, static_cast<ptrdiff_t>(count)));
        return tlvmsg_frames_next(frames, &body, &size, &fault);
    };
    EXPECT_FALSE(feed(2, 0) || feed(1, 0x20) || feed(1, 0) || feed(4092, 1));
    osal_double_fail(1, 1);
    EXPECT_EQ(tlvmsg_frames_room(frames, &size, &fault), nullptr);
    EXPECT_EQ(line_of(fault), "error[out-of-memory]: frames: no memory for 16384 bytes at byte 0");
    osal_double_fail(0, 0);
    EXPECT_TRUE(feed(4100, 1));
    EXPECT_EQ(std::count(body, body + size, 1), 8192);
    EXPECT_FALSE(feed(8, 0xFF));
    EXPECT_EQ(line_of(fault),
              "error[frame-too-long]: frame: a message of 4294967295 bytes, where 1048576 are "
              "allowed at byte 8196");
    tlvmsg_frames_reset(frames);
    EXPECT_EQ(tlvmsg_frames_passed(frames) + tlvmsg_frames_passed(frames), 8);
    while (uint8_t *const room = tlvmsg_frames_room(frames, &size, &fault)) {
        std::fill_n(room, size, 0); // frames that nobody takes
        ASSERT_TRUE(tlvmsg_frames_filled(frames, static_cast<ptrdiff_t>(size)));
    }
    EXPECT_EQ(fault.code, TLVMSG_OUTPUT_FULL);
    for (const ptrdiff_t none : {PTRDIFF_MIN, ptrdiff_t{-1}, ptrdiff_t{0}, ptrdiff_t{1}, PTRDIFF_MAX}) {
        EXPECT_FALSE(tlvmsg_frames_filled(frames, none) || tlvmsg_frames_filled(nullptr, none));
    }
    tlvmsg_frames_free(frames);

    uint8_t buffer[TLVMSG_FRAMES_STATE + 104];
    EXPECT_EQ(tlvmsg_frames_new(&framing, buffer, 260, &fault), nullptr);
    EXPECT_EQ(line_of(fault), "error[output-full]: buffer: needs 261 bytes, the output has 260 at byte 0");
    frames = tlvmsg_frames_new(&framing, buffer, sizeof buffer, nullptr);
    EXPECT_FALSE(feed(3, 0) || feed(1, 101));
    EXPECT_EQ(fault.allowed, 100);
    framing.most = 100;
    tlvmsg_frames_free(tlvmsg_frames_new(&framing, buffer, SIZE_MAX, &fault));
    EXPECT_EQ(fault.code, TLVMSG_OK);
    EXPECT_EQ(osal_double_allocations(), 4); // none of them for the buffer
    EXPECT_EQ(osal_double_blocks_out() + osal_double_faults(), 0);
}

TEST(Framing, IsReadFromTextAndSaysWhatMayStandWhere) {
    const std::pair<const char *, const char *> cases[] = {
        {"segment", "segment"},
        {"skip:65535", "skip:65535"},
        {"length:2@0+2", "length:2@0"},
        {"length:4@65531,most=1073741824,adjust=-65535,little",
         "length:4@65531,little,inclusive,most=1073741824"},
        {"length:1@2+7,adjust=7,most=0", "length:1@2+7,adjust=7"},
        {"", "segment, skip:N or length:WIDTH@OFFSET: may stand here, at byte 0"},
        {"segments", "the end: may stand here, at byte 7"},
        {"length:99999999999999999999@0", "a number from 1 to 4: may stand here, at byte 7"},
        {"length:2@-1", "a number from 0 to 65533: may stand here, at byte 9"},
        {"length:2@1+2", "a number from 3 to 65535: may stand here, at byte 11"},
        {"length:2@1x", "+HEADER, a comma or the end: may stand here, at byte 10"},
        {"length:2@1,little,little",
         "little, inclusive or adjust=N, most=N, each once: may stand here, at byte 18"},
        {"length:2@1,inclusive,adjust=1",
         "little, inclusive or adjust=N, most=N, each once: may stand here, at byte 21"},
        {"length:2@1,adjust=-2147483649",
         "a number from -2147483648 to 2147483647: may stand here, at byte 18"},
        {"length:1@0,adjust=-256", "-adjust: 256 is not allowed, up to 255 is"},
        {"length:1@0,adjust=9,most=8", "adjust: 9 is not allowed, up to 8 is"},
    };
    for (const auto &[text, expected] : cases) {
        tlvmsg_framing framing;
        tlvmsg_fault fault;
        char line[TLVMSG_FAULT_TEXT];
        if (tlvmsg_framing_from_text(text, &framing, &fault)) {
            EXPECT_EQ(tlvmsg_framing_to_text(&framing, line, sizeof line), std::strlen(expected));
        } else {
            EXPECT_EQ(framing.header + framing.width, 0u);
            tlvmsg_fault_message(&fault, line, sizeof line);
        }
        EXPECT_STREQ(line, expected) << text;
    }
}

TEST(Framing, ThatCannotBeIsTakenByNoFunction) {
    const std::pair<tlvmsg_framing, const char *> cases[] = {
        {{65536, 0, 0, 0, 0, false, {}}, "header"},
        {{1, 0, 0, 0, 2, false, {}}, "width"},
        {{9, 0, 0, 0, 255, true, {}}, "width"},
        {{4, UINT32_MAX, 0, 0, 2, false, {}}, "length_at"},
        {{4, 0, UINT32_MAX, 0, 4, false, {}}, "most"},
        {{4, 1, 0, 0, 0, false, {}}, "length_at"},
        {{4, 0, 1, 0, 0, false, {}}, "most"},
        {{4, 0, 0, 1, 0, false, {}}, "adjust"},
        {{4, 0, 0, INT32_MIN, 3, false, {}}, "-adjust"},
        {{4, 0, 0, 0, 0, true, {}}, "little"},
        {{4, 0, 0, INT32_MAX, 4, false, {}}, "adjust"},
        {{4, 0, 0, 0, 2, false, {0, 0, 0, 1}}, "framing"},
    };
    for (const auto &[framing, member] : cases) {
        tlvmsg_fault fault{};
        uint8_t out[64];
        EXPECT_FALSE(tlvmsg_frame_header(&framing, 0, out, &fault));
        EXPECT_STREQ(fault.path, member);
        EXPECT_TRUE(tlvmsg_frames_new(&framing, nullptr, 0, &fault) == nullptr &&
                    tlvmsg_frame_queue_new(&framing, 0, &fault) == nullptr &&
                    tlvmsg_framing_to_text(&framing, nullptr, 0) == 0);
    }
    const tlvmsg_framing endless{}; // no length in a stream
    EXPECT_EQ(tlvmsg_frames_new(&endless, nullptr, 0, nullptr), nullptr);
}

TEST(FrameQueue, KeepsWhatWasNotWrittenAndNoMoreThanItMay) {
    const tlvmsg_type *const type = tlvmsg_descriptor_ifid();
    const tlvmsg_framing framing{3, 1, 0, -3, 1, true, {}};
    const ifid record{};
    tlvmsg_fault fault;
    uint8_t expected[64];
    size_t size = 0, left = 0, added = 0;
    osal_double_reset();
    ASSERT_TRUE(tlvmsg_frame_encode(&framing, type, &record, expected, SIZE_MAX, &size, nullptr));
    EXPECT_EQ(expected[1], size);
    uint8_t *const block = tlvmsg_frame_encode_alloc(&framing, type, &record, &left, nullptr);
    EXPECT_TRUE(left == size && std::memcmp(block, expected, size) == 0);
    tlvmsg_free(block);
    EXPECT_FALSE(tlvmsg_frame_encode(&framing, type, &record, expected, size - 1, &left, &fault));
    EXPECT_EQ(line_of(fault), "error[output-full]: ifid: needs 47 bytes, the output has 46 at byte 0");
    EXPECT_FALSE(tlvmsg_frame_encode(&framing, type, &record, nullptr, 64, nullptr, nullptr) ||
                 tlvmsg_frame_header(&framing, SIZE_MAX, expected, nullptr));
    EXPECT_FALSE(tlvmsg_frame_header(&framing, 253, expected, &fault));
    EXPECT_EQ(fault.allowed, 252);

    Random random;
    tlvmsg_frame_queue *const queue = tlvmsg_frame_queue_new(&framing, 10000, nullptr);
    std::string written;
    for (size_t i = 0; i < 20000; ++i) {
        osal_double_fail(random.below(2) != 0 ? 1 : 0, 1);
        if (uint8_t *const frame = tlvmsg_frame_queue_add(queue, type, &record, &fault)) {
            frame[0] = static_cast<uint8_t>(added++);
        }
        const uint8_t *const pending = tlvmsg_frame_queue_pending(queue, &left);
        EXPECT_LE(left, 10000);
        const size_t count = random.below(i % 2000 < 1000 ? 30 : 60) % (left + 1);
        written.append(pending, pending + count);
        EXPECT_FALSE(tlvmsg_frame_queue_written(queue, static_cast<ptrdiff_t>(left) + 1) ||
                     tlvmsg_frame_queue_written(queue, -1));
        EXPECT_TRUE(tlvmsg_frame_queue_written(queue, static_cast<ptrdiff_t>(count)));
    }
    for (size_t i = 0; i < written.size(); ++i) {
        const size_t wanted = i % size == 0 ? i / size % 256 : expected[i % size];
        ASSERT_EQ(static_cast<uint8_t>(written[i]), wanted) << i;
    }
    osal_double_fail(0, 0);
    while (tlvmsg_frame_queue_add(queue, type, &record, &fault) != nullptr) {
    }
    EXPECT_EQ(fault.code, TLVMSG_OUTPUT_FULL);
    tlvmsg_frame_queue_free(queue);
    EXPECT_EQ(osal_double_blocks_out() + osal_double_faults(), 0);
}

} // namespace

} // namespace tlvmsg_test
