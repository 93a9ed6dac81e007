// Frames out of what comes of a stream.
#include "byte_queue.h"
#include "framing.h"
#include "place.h"

#include <new>

using namespace tlvmsg::inspect;

struct tlvmsg_frames {
    // What stands at the front, as far as it has come.
    struct Frame {
        tlvmsg_fault fault; // why it is refused
        size_t size;        // until its header is there, that of the header
        bool has_header, is_whole;
    };

    tlvmsg_framing framing; // whose `most` is what may be kept
    ByteQueue bytes;        // that have not been taken
    uint64_t position = 0;  // in the stream, of the first of them
    uint64_t passed = 0;
    uint64_t skipping = 0; // bytes of a refused frame that have not come
    size_t offered = 0;    // room
    size_t given = 0;      // bytes of the frame given last, before the first; until a refusal or room
    bool ended = false;
    tlvmsg_fits fits = nullptr; // of a search
    void *context = nullptr;
    size_t ask_at = 0; // how many bytes of a body are to be there before `fits` is asked again

    Frame front() const;
    tlvmsg_fault refusal() const;
    bool may_become_one(const Frame &frame);
    void take(size_t count);
    void pass_over(size_t count);
    Frame find();
};

tlvmsg_frames::Frame tlvmsg_frames::front() const {
    const size_t held = bytes.held();
    Frame frame{{}, framing.header, held >= framing.header, false};
    if (frame.has_header) {
        const int64_t length = read_length(framing, bytes.front());
        const int64_t body = length + framing.adjust;
        frame.fault = check_body(framing, body, length, position);
        if (frame.fault.code != TLVMSG_OK) {
            return frame;
        }
        frame.size += static_cast<size_t>(body);
        frame.is_whole = held >= frame.size;
    }
    if (ended && held > 0 && !frame.is_whole) {
        frame.fault = fault_in("frame", TLVMSG_TRUNCATED, position, held, frame.size);
    }
    return frame;
}

// Why there is no going on; a search and a skip do so.
tlvmsg_fault tlvmsg_frames::refusal() const {
    return fits == nullptr && skipping == 0 ? front().fault : tlvmsg_fault{};
}

void tlvmsg_frames::take(size_t count) {
    bytes.begin += count;
    position += count;
    given = ask_at = 0;
}

void tlvmsg_frames::pass_over(size_t count) {
    take(count);
    passed += count;
}

// Asks the program; of a body that comes in pieces as often as what is there has doubled.
bool tlvmsg_frames::may_become_one(const Frame &frame) {
    if (frame.fault.code != TLVMSG_OK || !frame.has_header) {
        return frame.fault.code == TLVMSG_OK;
    }
    const size_t size = frame.size - framing.header;
    const size_t there = frame.is_whole ? size : bytes.held() - framing.header;
    if (there < ask_at && !frame.is_whole) {
        return true;
    }
    ask_at = 2 * there + 16;
    return fits(context, bytes.front() + framing.header, there, size);
}

tlvmsg_frames::Frame tlvmsg_frames::find() {
    if (skipping > 0) {
        const auto count = static_cast<size_t>(skipping < bytes.held() ? skipping : bytes.held());
        skipping -= count;
        pass_over(count);
    }
    Frame frame = front();
    while (fits != nullptr && bytes.held() > 0 && !may_become_one(frame)) {
        pass_over(1);
        frame = front();
    }
    return frame;
}

namespace {

constexpr size_t state_size = TLVMSG_FRAMES_STATE;

// Why there can be no frames of a stream in that buffer, if any.
tlvmsg_fault check_stream(const tlvmsg_framing *framing, const void *buffer, size_t buffer_size) {
    const tlvmsg_fault fault = check(framing);
    if (fault.code != TLVMSG_OK) {
        return fault;
    }
    if (framing->width == 0) {
        return fault_in("width", TLVMSG_WRONG_FRAMING, 0, 0, 4);
    }
    const int64_t body = framing->most != 0 ? body_size(*framing).most : 1;
    const uint64_t least = uint64_t{state_size} + framing->header + static_cast<uint64_t>(body);
    return buffer != nullptr && buffer_size < least
               ? fault_in("buffer", TLVMSG_OUTPUT_FULL, 0, least, buffer_size)
               : tlvmsg_fault{};
}

// What a buffer has beside the state, as far as frames of that framing can use it.
ByteQueue queue_in(uint8_t *buffer, size_t size, const tlvmsg_framing &framing) {
    const uint64_t used = ByteQueue::wanted_for(uint64_t{framing.header} + framing.most);
    const size_t there = size - state_size;
    return {buffer + state_size, there < used ? there : static_cast<size_t>(used), 0, 0, true};
}

} // namespace

tlvmsg_frames *tlvmsg_frames_new(const tlvmsg_framing *framing, void *buffer, size_t buffer_size,
                                 tlvmsg_fault *fault) {
    constexpr size_t alignment = alignof(tlvmsg_frames);
    static_assert(sizeof(tlvmsg_frames) + alignment <= state_size, "a buffer may lie anywhere");
    tlvmsg_fault found = check_stream(framing, buffer, buffer_size);
    auto *block = static_cast<uint8_t *>(buffer);
    if (found.code == TLVMSG_OK && buffer == nullptr) {
        block = static_cast<uint8_t *>(allocate(sizeof(tlvmsg_frames)));
        if (block == nullptr) {
            found = fault_in("frames", TLVMSG_OUT_OF_MEMORY, 0, sizeof(tlvmsg_frames), 0);
        }
    }
    set_result(fault, found);
    if (found.code != TLVMSG_OK) {
        return nullptr;
    }
    tlvmsg_framing known = *framing;
    known.most = static_cast<uint32_t>(body_size(known).most);
    ByteQueue bytes{nullptr, 0, 0, 0, false};
    if (buffer != nullptr) {
        bytes = queue_in(block, buffer_size, known);
        const size_t room = bytes.size - known.header;
        known.most = room < known.most ? static_cast<uint32_t>(room) : known.most;
        block += (alignment - reinterpret_cast<uintptr_t>(block) % alignment) % alignment;
    }
    return new (block) tlvmsg_frames{known, bytes};
}

void tlvmsg_frames_free(tlvmsg_frames *frames) {
    if (frames != nullptr && !frames->bytes.is_callers) {
        release_block(frames->bytes.block);
        release_block(frames);
    }
}

uint8_t *tlvmsg_frames_room(tlvmsg_frames *frames, size_t *size, tlvmsg_fault *fault) {
    set_result(size, size_t{0});
    if (frames == nullptr || size == nullptr) {
        set_result(fault, null_argument(frames == nullptr ? "frames" : "size"));
        return nullptr;
    }
    ByteQueue &bytes = frames->bytes;
    const size_t held = bytes.held();
    const size_t wanted = frames->front().size; // no more than that, however often this is called in between
    const size_t more = held < 2048 ? 2048 : held; // nor much more than has come, whatever a length says
    const size_t count = held >= wanted ? 1 : wanted - held < more ? wanted - held : more;
    tlvmsg_fault found = frames->refusal();
    if (found.code == TLVMSG_OK && held >= wanted && held == bytes.size) {
        found = fault_in("frames", TLVMSG_OUTPUT_FULL, frames->position, held + 1, bytes.size);
    } else if (found.code == TLVMSG_OK && !bytes.reserve(count)) {
        found = fault_in("frames", TLVMSG_OUT_OF_MEMORY, frames->position,
                         ByteQueue::wanted_for(held + count), 0);
    }
    set_result(fault, found);
    if (found.code != TLVMSG_OK) {
        return nullptr;
    }
    frames->given = 0;
    *size = frames->offered = bytes.size - bytes.end;
    return bytes.block + bytes.end;
}

bool tlvmsg_frames_filled(tlvmsg_frames *frames, ptrdiff_t count) {
    const auto bytes = static_cast<size_t>(count);
    if (frames == nullptr || count <= 0 || bytes > frames->offered) {
        return false;
    }
    frames->bytes.end += bytes;
    frames->offered -= bytes;
    return true;
}

void tlvmsg_frames_end(tlvmsg_frames *frames) {
    if (frames != nullptr) {
        frames->ended = true;
    }
}

bool tlvmsg_frames_next(tlvmsg_frames *frames, const uint8_t **body, size_t *size, tlvmsg_fault *fault) {
    set_result(body, static_cast<const uint8_t *>(nullptr));
    set_result(size, size_t{0});
    if (frames == nullptr || body == nullptr || size == nullptr) {
        set_result(fault, null_argument(frames == nullptr ? "frames" : body == nullptr ? "body" : "size"));
        return false;
    }
    const tlvmsg_frames::Frame frame = frames->find();
    set_result(fault, frame.fault);
    if (!frame.is_whole) {
        frames->given = frame.fault.code == TLVMSG_OK ? frames->given : 0;
        return false;
    }
    *body = frames->bytes.front() + frames->framing.header;
    *size = frame.size - frames->framing.header;
    frames->take(frame.size);
    frames->given = frame.size;
    frames->fits = nullptr;
    return true;
}

void tlvmsg_frames_skip(tlvmsg_frames *frames) {
    const tlvmsg_fault fault = frames != nullptr ? frames->refusal() : tlvmsg_fault{};
    if (fault.code != TLVMSG_OK) {
        const uint64_t header = fault.code == TLVMSG_TRUNCATED ? 0 : frames->framing.header;
        frames->skipping = header + (fault.code == TLVMSG_FRAME_TOO_SHORT ? 0 : fault.found);
        frames->find();
    }
}

void tlvmsg_frames_resync(tlvmsg_frames *frames, tlvmsg_fits fits, void *context) {
    if (frames == nullptr || fits == nullptr) {
        return;
    }
    const bool is_refused = frames->given == 0 && frames->refusal().code != TLVMSG_OK;
    frames->bytes.begin -= frames->given;
    frames->position -= frames->given;
    frames->pass_over(is_refused || frames->given > 0 ? 1 : 0);
    frames->skipping = 0;
    frames->ask_at = 0;
    frames->fits = fits;
    frames->context = context;
}

void tlvmsg_frames_reset(tlvmsg_frames *frames) {
    if (frames != nullptr) {
        frames->pass_over(frames->bytes.held());
        frames->skipping = 0;
        frames->fits = nullptr;
        frames->ended = false;
    }
}

uint64_t tlvmsg_frames_passed(tlvmsg_frames *frames) {
    const uint64_t passed = frames != nullptr ? frames->passed : 0;
    if (passed != 0) {
        frames->passed = 0;
    }
    return passed;
}
