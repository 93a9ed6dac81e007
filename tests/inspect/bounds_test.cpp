// What bounds the bounded library itself: stack, and input that changes meanwhile. (tlvc bounds nesting and paths.)
#include "support/guarded.h"
#include "support/hex.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/inspect.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <pthread.h>
#include <thread>

namespace tlvmsg_test {

namespace {

size_t depth_of(const tlvmsg_type &type) {
    size_t inside = type.element != nullptr ? depth_of(*type.element) : 0;
    for (uint32_t i = 0; i < type.member_count; ++i) {
        inside = std::max(inside, depth_of(*type.members[i].type));
    }
    for (uint32_t i = 0; i < type.alternative_count; ++i) {
        inside = std::max(inside, depth_of(*type.alternatives[i].type));
    }
    return inside + 1;
}

// Runs everything for the most deeply nested types.
void *work(void *) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        if (depth_of(type) < 8) {
            continue;
        }
        alignas(8) static uint8_t record[1 << 16];
        static uint8_t wire[1 << 16];
        std::memset(record, 0, sizeof record);
        size_t size = 0;
        tlvmsg_fault fault;
        tlvmsg_extent extent;
        tlvmsg_encode(&type, record, wire, sizeof wire, &size, &fault);
        tlvmsg_verify(&type, wire, size, nullptr, &extent, &fault);
        tlvmsg_decode(&type, wire, size / 2, nullptr, record, nullptr, &fault);
        tlvmsg_decode(&type, wire, size, nullptr, record, nullptr, &fault);
        tlvmsg_equal(&type, record, record);
        tlvmsg_release(&type, record);
    }
    return nullptr;
}

#if defined(__SANITIZE_ADDRESS__)
#define INSTRUMENTED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define INSTRUMENTED 1
#endif
#endif

// Paints a thread's stack and looks how far the paint is gone.
TEST(Bounds, OfTheStackHold) {
#ifdef INSTRUMENTED
    GTEST_SKIP() << "sanitizers need a stack of their own";
#endif
    constexpr size_t size = size_t{256} * 1024;
    constexpr uint8_t paint = 0x5A;
    const auto used_by = [](void *(*body)(void *)) {
        GuardedBuffer stack(size);
        std::memset(stack.data(), paint, size);
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        pthread_attr_setstack(&attributes, stack.data(), size);
        pthread_t thread;
        EXPECT_EQ(pthread_create(&thread, &attributes, body, nullptr), 0);
        pthread_join(thread, nullptr);
        pthread_attr_destroy(&attributes);
        return static_cast<size_t>(
            stack.end() - std::find_if(stack.begin(), stack.end(), [](uint8_t b) { return b != paint; }));
    };
    const size_t idle = used_by([](void *) -> void * { return nullptr; });
    const size_t busy = used_by(work);
    EXPECT_GT(busy, idle);
    EXPECT_LT(busy - idle, size_t{TLVMSG_MAX_STACK});
    RecordProperty("bytes_of_stack", static_cast<int>(busy - idle));
}

// Whatever the count is at the moment when it is fetched, that is what is checked, allocated and stored.
TEST(Bounds, HoldWhileTheInputChanges) {
    const Bytes array = hex("00 0A 00 0D  00 04 00 02 00 06  01 02 03 04 05 06 00");
    constexpr size_t count_at = 8;
    for (const char *const name : {"zel_mac_addr_mac_array", "if_name_name_array"}) {
        GuardedBuffer in(array.size());
        std::copy(array.begin(), array.end(), in.begin());
        std::atomic<bool> done = false;
        std::thread other([&] {
            for (unsigned turn = 0; !done; ++turn) {
                __atomic_store_n(in.data() + count_at, static_cast<uint8_t>(turn / 16 % 2), __ATOMIC_RELAXED);
                __atomic_store_n(in.data() + count_at + 1, static_cast<uint8_t>(turn % 16), __ATOMIC_RELAXED);
            }
        });
        const tlvmsg_type *type = tlvmsg_type_find(name);
        GuardedBuffer record(type->size);
        for (int turn = 0; turn < 200000; ++turn) {
            if (tlvmsg_decode(type, in.data(), in.size(), nullptr, record.data(), nullptr, nullptr)) {
                size_t size = 0;
                EXPECT_TRUE(tlvmsg_size(type, record.data(), &size, nullptr));
                EXPECT_LE(size, in.size() + 1); // all bytes are there, the terminator perhaps not
                tlvmsg_release(type, record.data());
            }
        }
        done = true;
        other.join();
        EXPECT_EQ(osal_double_faults(), 0u);
    }
}

} // namespace

} // namespace tlvmsg_test
