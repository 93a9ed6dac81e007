// Whatever a function of forms.h lacks is a fault and leaves nothing behind: memory, an argument, a willing sink.
#include "forms/failing_new.h"
#include "support/hex.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/forms.h>

#include <gtest/gtest.h>

namespace tlvmsg_test {

namespace {

// A name of 34 bytes, an element of no type with others in it, one byte too many.
const Bytes message = hex("03f0 0032 0002 0001 22 000a 0029 0004 0002 0022"
                          "61616161616161616161616161616161616161616161616161616161616161616161 00"
                          "07ff 000e 0004 0002 0007 0006 0004 00000001 ff");

bool swallow(void * /*context*/, const char * /*text*/, size_t /*length*/) { return true; }
bool refuse(void * /*context*/, const char * /*text*/, size_t /*length*/) { return false; }

enum class What { text, annotation, untyped_json, untyped_text, hex, diff, sample, partial };

bool tells(What what) { return what < What::hex; }

// Calls the function, and releases what it gives.
bool run(What what, const tlvmsg_type *type, const void *record, tlvmsg_sink sink, tlvmsg_text_fault *fault) {
    static const char text[] = "DEBUG 0000: 61\nDEBUG 0001: 62\n";
    static const char *const settings[] = {"name.count=200", "name[2]=7"};
    static const tlvmsg_sample_options options{TLVMSG_SAMPLE_RANDOM, 1, settings, 2, {}};
    static const uint64_t zero[4] = {};
    const uint8_t *in = message.data();
    const size_t size = message.size();
    tlvmsg_hex_message *messages = nullptr;
    tlvmsg_difference *differences = nullptr;
    uint64_t sample[4] = {};
    char *json = nullptr;
    size_t count = 0;
    bool done = false;
    switch (what) {
    case What::text:
        return tlvmsg_to_text(type, record, nullptr, sink, nullptr, fault);
    case What::annotation:
        return tlvmsg_annotate(nullptr, type, in, size, nullptr, sink, nullptr, nullptr, fault) &&
               tlvmsg_annotate(nullptr, nullptr, in, size, nullptr, sink, nullptr, nullptr, fault);
    case What::untyped_json:
        return tlvmsg_untyped_to_json(nullptr, in, size, nullptr, sink, nullptr, nullptr, fault);
    case What::untyped_text:
        return tlvmsg_untyped_to_text(nullptr, in, size, nullptr, sink, nullptr, nullptr, fault);
    case What::hex:
        done = tlvmsg_read_hex(text, sizeof text - 1, &messages, &count, fault) && count == 1;
        break;
    case What::diff:
        done = tlvmsg_diff(type, record, zero, &differences, &count, fault) && count == 1;
        break;
    case What::sample:
        done = tlvmsg_sample(type, &options, sample, fault);
        break;
    case What::partial:
        done = tlvmsg_partial_to_json(type, in, size, 0, &json, nullptr, nullptr, fault);
    }
    tlvmsg_free(json);
    tlvmsg_free(messages);
    tlvmsg_free(differences);
    tlvmsg_release(type, sample);
    return done;
}

constexpr What all[] = {What::text, What::annotation, What::untyped_json, What::untyped_text,
                        What::hex,  What::diff,       What::sample,       What::partial};

class Survival : public testing::Test {
protected:
    Survival() {
        osal_double_reset();
        EXPECT_TRUE(tlvmsg_decode(type_, message.data(), message.size(), nullptr, record_, nullptr, nullptr));
    }
    ~Survival() override {
        tlvmsg_release(type_, record_);
        osal_double_reset();
    }

    const tlvmsg_type *type_ = tlvmsg_type_find("if_name");
    uint64_t record_[4];
};

// Every allocation fails once, those of the C++ run time and those of the platform.
TEST_F(Survival, OfNoMemory) {
    for (const What what : all) {
        size_t failed = 0;
        for (const bool platform : {false, true}) {
            bool done = false;
            for (uint32_t nth = 1; !done; ++nth) {
                const size_t blocks = osal_double_blocks_out();
                tlvmsg_text_fault fault;
                osal_double_fail(platform ? nth : UINT32_MAX, 0);
                failing_new = platform ? 0 : nth;
                done = run(what, type_, record_, swallow, &fault);
                failing_new = 0;
                failed += done ? 0 : 1;
                ASSERT_EQ(fault.code, done ? TLVMSG_TEXT_OK : TLVMSG_TEXT_OUT_OF_MEMORY)
                    << static_cast<int>(what);
                EXPECT_EQ(osal_double_blocks_out(), blocks) << static_cast<int>(what);
            }
        }
        EXPECT_GT(failed, 2u) << static_cast<int>(what);
    }
}

TEST_F(Survival, OfSinksThatStopAndOfNone) {
    for (const What what : all) {
        tlvmsg_text_fault fault;
        EXPECT_EQ(run(what, type_, record_, refuse, &fault), !tells(what));
        EXPECT_EQ(fault.code, TLVMSG_TEXT_OK);
        EXPECT_EQ(run(what, type_, record_, nullptr, &fault), !tells(what));
        EXPECT_STREQ(fault.path, tells(what) ? "sink" : "");
    }
}

} // namespace

} // namespace tlvmsg_test
