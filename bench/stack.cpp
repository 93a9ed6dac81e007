// How many bytes of stack each function takes, whatever the type is: the most of all types, each with a flawless message
// and with damaged ones. The platform's memory is a pool of the program's, which takes next to none.
#include "corpus.h"

#include <tlvmsg/inspect.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <pthread.h>
#include <vector>

namespace {

using tlvmsg_bench::Corpus;
using tlvmsg_bench::Sample;

alignas(16) uint8_t pool[size_t{1} << 24];
size_t taken = 0;

// What a body does to the stack of a thread that is painted beforehand.
size_t stack_of(const std::function<void()> &body) {
    constexpr size_t size = size_t{1} << 18;
    constexpr uint8_t paint = 0x5A;
    std::vector<uint8_t> stack(size, paint);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, stack.data(), size);
    pthread_t thread;
    const auto run = [](void *function) -> void * {
        (*static_cast<const std::function<void()> *>(function))();
        return nullptr;
    };
    if (pthread_create(&thread, &attributes, run, const_cast<std::function<void()> *>(&body)) == 0) {
        pthread_join(thread, nullptr);
    }
    pthread_attr_destroy(&attributes);
    const auto touched = std::find_if(stack.begin(), stack.end(), [](uint8_t byte) { return byte != paint; });
    return static_cast<size_t>(stack.end() - touched);
}

void ignore(void *, const tlvmsg_piece *) {}
void ignore(void *, const tlvmsg_place *, uint64_t) {}

// One byte less than there are.
size_t cut(const Sample &sample) { return sample.wire_size > 0 ? sample.wire_size - 1 : 0; }

struct Call {
    const char *name;
    void (*run)(const Sample &sample);
};

tlvmsg_fault fault;
tlvmsg_extent extent;
size_t size;

const Call calls[] = {
    {"(none)", [](const Sample &) {}},
    {"get_tlv_T_size", [](const Sample &s) { s.codec.size(s.record); }},
    {"encode_tlv_T", [](const Sample &s) { s.codec.encode(s.record, s.out); }},
    {"decode_tlv_T", [](const Sample &s) { s.codec.decode(s.wire, s.decoded); }},
    {"tlvmsg_decode",
     [](const Sample &s) { tlvmsg_decode(s.type, s.wire, s.wire_size, nullptr, s.decoded, &size, &fault); }},
    {"tlvmsg_decode, damaged",
     [](const Sample &s) { tlvmsg_decode(s.type, s.wire, cut(s), nullptr, s.decoded, &size, &fault); }},
    {"tlvmsg_verify",
     [](const Sample &s) { tlvmsg_verify(s.type, s.wire, s.wire_size, nullptr, &extent, &fault); }},
    {"tlvmsg_verify, damaged",
     [](const Sample &s) { tlvmsg_verify(s.type, s.wire, cut(s), nullptr, &extent, &fault); }},
    {"tlvmsg_trace",
     [](const Sample &s) {
         tlvmsg_trace(s.type, s.wire, s.wire_size, nullptr, ignore, nullptr, &extent, &fault);
     }},
    {"tlvmsg_encode",
     [](const Sample &s) { tlvmsg_encode(s.type, s.record, s.out, s.wire_size, &size, &fault); }},
    {"tlvmsg_encode, no room",
     [](const Sample &s) { tlvmsg_encode(s.type, s.record, s.out, cut(s), &size, &fault); }},
    {"tlvmsg_encode_alloc", [](const Sample &s) { tlvmsg_encode_alloc(s.type, s.record, &size, &fault); }},
    {"tlvmsg_size", [](const Sample &s) { tlvmsg_size(s.type, s.record, &size, &fault); }},
    {"tlvmsg_copy", [](const Sample &s) { tlvmsg_copy(s.type, s.decoded, s.record, &fault); }},
    {"tlvmsg_equal", [](const Sample &s) { tlvmsg_equal(s.type, s.record, s.record); }},
    {"tlvmsg_release",
     [](const Sample &s) {
         tlvmsg_copy(s.type, s.decoded, s.record, nullptr);
         tlvmsg_release(s.type, s.decoded);
     }},
    {"tlvmsg_walk",
     [](const Sample &s) {
         static const tlvmsg_visitor visitor = {nullptr, nullptr, ignore, nullptr, {}};
         tlvmsg_walk(s.type, s.record, &visitor, nullptr);
     }},
    {"tlvmsg_fault_text",
     [](const Sample &) {
         static char line[TLVMSG_FAULT_TEXT];
         tlvmsg_fault_text(&fault, line, sizeof line);
     }},
    {"tlvmsg_type_find", [](const Sample &s) { tlvmsg_type_find(s.type->name); }},
};

} // namespace

extern "C" void *OSALmalloc(uint32_t, uint32_t bytes) {
    void *const block = pool + taken;
    taken += (size_t{bytes} + 15) / 16 * 16;
    return taken <= sizeof pool ? block : nullptr;
}
extern "C" void OSALfree(uint32_t, void *) {}

int main() {
    const Corpus corpus;
    size_t none = 0;
    for (const Call &call : calls) {
        const auto body = [&] {
            for (const Sample &sample : corpus.samples()) {
                taken = 0;
                call.run(sample);
            }
        };
        body(); // lets the dynamic linker find what is called
        const size_t bytes = stack_of(body);
        none = none == 0 ? bytes : none;
        std::printf("%-24s %6zu bytes of stack\n", call.name, bytes - none);
    }
}
