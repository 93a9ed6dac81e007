// Frames into blocks, buffers, and the queue of what waits to be written.
#include "byte_queue.h"
#include "encode_behind.h"
#include "framing.h"
#include "place.h"

#include <tlvmsg/record.h>

#include <new>

using namespace tlvmsg::inspect;

struct tlvmsg_frame_queue {
    tlvmsg_framing framing;
    size_t most;
    ByteQueue bytes;
};

namespace {

bool refuse(tlvmsg_fault *fault, const tlvmsg_fault &found) {
    if (found.code == TLVMSG_OK) {
        return false;
    }
    set_result(fault, found);
    return true;
}

// How long the record's frame is. False, and a fault, where there is none.
bool measure(const tlvmsg_framing *framing, const tlvmsg_type *type, const void *record, size_t *size,
             tlvmsg_fault *fault) {
    size_t body = 0;
    if (refuse(fault, check(framing)) || !tlvmsg_size(type, record, &body, fault) ||
        refuse(fault, check_body(*framing, static_cast<int64_t>(body), static_cast<int64_t>(body), 0))) {
        return false;
    }
    *size = framing->header + body;
    return true;
}

// A frame that has been measured.
bool write(const tlvmsg_framing &framing, const tlvmsg_type *type, const void *record, uint8_t *out,
           size_t size, tlvmsg_fault *fault) {
    const size_t body = size - framing.header;
    if (!tlvmsg_encode(type, record, out + framing.header, body, nullptr, fault)) {
        return false;
    }
    write_header(framing, body, out);
    return true;
}

tlvmsg_fault full(const tlvmsg_type *type, size_t needed, size_t capacity) {
    return fault_at(whole(*type), TLVMSG_OUTPUT_FULL, 0, needed, capacity);
}

} // namespace

bool tlvmsg_frame_header(const tlvmsg_framing *framing, size_t size, uint8_t *out, tlvmsg_fault *fault) {
    const uint64_t bytes = size;
    const int64_t body = bytes < INT64_MAX ? static_cast<int64_t>(bytes) : INT64_MAX;
    if (refuse(fault, check(framing)) || refuse(fault, check_body(*framing, body, body, 0))) {
        return false;
    }
    if (out == nullptr && framing->header > 0) {
        return !refuse(fault, null_argument("out"));
    }
    write_header(*framing, size, out);
    set_success(fault);
    return true;
}

bool tlvmsg_frame_encode(const tlvmsg_framing *framing, const tlvmsg_type *type, const void *record,
                         uint8_t *out, size_t out_capacity, size_t *written, tlvmsg_fault *fault) {
    size_t size = 0;
    set_result(written, size_t{0});
    if (!measure(framing, type, record, &size, fault) ||
        (out == nullptr && out_capacity > 0 && refuse(fault, null_argument("out"))) ||
        (size > out_capacity && refuse(fault, full(type, size, out_capacity))) ||
        !write(*framing, type, record, out, size, fault)) {
        return false;
    }
    set_result(written, size);
    return true;
}

uint8_t *tlvmsg_frame_encode_alloc(const tlvmsg_framing *framing, const tlvmsg_type *type, const void *record,
                                   size_t *written, tlvmsg_fault *fault) {
    size_t size = 0;
    set_result(written, size_t{0});
    if (!measure(framing, type, record, &size, fault)) {
        return nullptr;
    }
    const size_t body = size - framing->header;
    uint8_t *const block = encode_behind(framing->header, *type, record, body, written, fault);
    if (block != nullptr) {
        write_header(*framing, body, block);
    }
    return block;
}

tlvmsg_frame_queue *tlvmsg_frame_queue_new(const tlvmsg_framing *framing, size_t most, tlvmsg_fault *fault) {
    if (refuse(fault, check(framing))) {
        return nullptr;
    }
    void *const block = allocate(sizeof(tlvmsg_frame_queue));
    if (block == nullptr) {
        set_result(fault, fault_in("queue", TLVMSG_OUT_OF_MEMORY, 0, sizeof(tlvmsg_frame_queue), 0));
        return nullptr;
    }
    set_success(fault);
    return new (block) tlvmsg_frame_queue{*framing, most != 0 ? most : size_t{TLVMSG_FRAMES_MOST}, {}};
}

void tlvmsg_frame_queue_free(tlvmsg_frame_queue *queue) {
    if (queue != nullptr) {
        release_block(queue->bytes.block);
        release_block(queue);
    }
}

uint8_t *tlvmsg_frame_queue_add(tlvmsg_frame_queue *queue, const tlvmsg_type *type, const void *record,
                                tlvmsg_fault *fault) {
    size_t size = 0;
    if (queue == nullptr) {
        set_result(fault, null_argument("queue"));
        return nullptr;
    }
    ByteQueue &bytes = queue->bytes;
    const size_t held = bytes.held();
    if (!measure(&queue->framing, type, record, &size, fault) ||
        (size > queue->most - held && refuse(fault, full(type, held + size, queue->most)))) {
        return nullptr;
    }
    if (!bytes.reserve(size)) {
        set_result(fault,
                   fault_at(whole(*type), TLVMSG_OUT_OF_MEMORY, 0, ByteQueue::wanted_for(held + size), 0));
        return nullptr;
    }
    uint8_t *const frame = bytes.block + bytes.end;
    if (!write(queue->framing, type, record, frame, size, fault)) {
        return nullptr;
    }
    bytes.end += size;
    return frame;
}

const uint8_t *tlvmsg_frame_queue_pending(const tlvmsg_frame_queue *queue, size_t *size) {
    const size_t held = queue != nullptr ? queue->bytes.held() : 0;
    set_result(size, held);
    return held > 0 ? queue->bytes.front() : nullptr;
}

bool tlvmsg_frame_queue_written(tlvmsg_frame_queue *queue, ptrdiff_t count) {
    const auto bytes = static_cast<size_t>(count);
    if (queue == nullptr || count < 0 || bytes > queue->bytes.held()) {
        return false;
    }
    queue->bytes.begin += bytes;
    return true;
}
