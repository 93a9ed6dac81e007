// Whatever a function of forms.h lacks is a fault and leaves nothing behind: memory, an argument, a willing sink. And
// whoever changes its input meanwhile does no harm.
#include "forms/failing_new.h"
#include "support/guarded.h"
#include "support/hex.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/forms.h>
#include <tlvmsg/voice.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <string_view>
#include <thread>

namespace tlvmsg_test {

namespace {

// A name of 34 bytes, an element of no type with others in it, one byte too many.
const Bytes message = hex("03f0 0032 0002 0001 22 000a 0029 0004 0002 0022"
                          "61616161616161616161616161616161616161616161616161616161616161616161 00"
                          "07ff 000e 0004 0002 0007 0006 0004 00000001 ff");

Bytes bytes_of(std::string_view text) { return {text.begin(), text.end()}; }

const Bytes dump = bytes_of("DEBUG 0000: 61\nDEBUG 0001: 62\n");
const Bytes json_text = bytes_of(R"({"name": "\u00e4 name that is longer than a string without memory"})");
const Bytes wrong_json =
    bytes_of(R"({"name": {"hex": "7g", "some other member that is not there at all": 1}})");

bool swallow(void * /*context*/, const char * /*text*/, size_t /*length*/) { return true; }
bool refuse(void * /*context*/, const char * /*text*/, size_t /*length*/) { return false; }

enum class What {
    text,
    annotation,
    untyped_json,
    untyped_text,
    hex,
    json,
    to_json,
    diff,
    sample,
    partial,
    guess,
    divide,
    type_set,
    types_to_json,
    bytes_to_json,
    bytes_from_json
};

bool tells(What what) { return what < What::hex; }

const Bytes &usual_input(What what) {
    return what == What::hex                                     ? dump
           : what == What::json || what == What::bytes_from_json ? json_text
                                                                 : message;
}

// Calls the function, and releases what it gives.
bool run(What what, const tlvmsg_type *type, const void *record, const uint8_t *in, size_t size,
         tlvmsg_sink sink, tlvmsg_text_fault *fault) {
    static const char *const settings[] = {"name.count=200", "name[2]=7"};
    static const tlvmsg_sample_options options{TLVMSG_SAMPLE_RANDOM, 1, settings, 2, {}};
    static const uint64_t zero[4] = {};
    static const tlvmsg_guess_options search{2, true, {}};
    const char *const text = reinterpret_cast<const char *>(in);
    tlvmsg_hex_message *messages = nullptr;
    tlvmsg_difference *differences = nullptr;
    uint64_t sample[4] = {1};
    tlvmsg_guess *guesses = nullptr;
    tlvmsg_part *parts = nullptr;
    char *json = nullptr;
    uint8_t *bytes = nullptr;
    tlvmsg_fault refused;
    const bool leaves_count = what == What::sample || what == What::type_set || what == What::bytes_to_json;
    size_t count = leaves_count ? 0 : 1;
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
        done = tlvmsg_read_hex(text, size, &messages, &count, fault);
        break;
    case What::json:
        done = tlvmsg_from_json(type, text, size, nullptr, sample, fault);
        count = 0;
        break;
    case What::to_json:
        done = tlvmsg_to_json(type, record, nullptr, &json, &count, fault);
        break;
    case What::diff:
        done = tlvmsg_diff(type, record, zero, &differences, &count, fault);
        if (done) { // and once more with paths that are too long for a string without memory
            static const analogbri_led_control_req_message dark{}, red{{}, {}, {2, 5, 3}};
            tlvmsg_free(differences);
            done = tlvmsg_diff(tlvmsg_type_find("analogbri_led_control_req_message"), &dark, &red,
                               &differences, &count, fault);
        }
        break;
    case What::sample:
        done = tlvmsg_sample(type, &options, sample, fault);
        break;
    case What::partial:
        done = tlvmsg_partial_to_json(type, in, size, 0, &json, &count, nullptr, fault);
        break;
    case What::guess:
        done = tlvmsg_guess_types(nullptr, in, size, &search, &guesses, &count, fault);
        break;
    case What::divide:
        done = tlvmsg_divide(nullptr, in, size, &parts, &count, fault);
        break;
    case What::type_set: {
        tlvmsg_type_set *const set = tlvmsg_type_set_new(&type, 1, fault);
        done = set != nullptr;
        tlvmsg_type_set_free(set);
        break;
    }
    case What::types_to_json:
        done = tlvmsg_type_to_json(type, nullptr, &json, &count, fault);
        break;
    case What::bytes_to_json:
        done = tlvmsg_bytes_to_json(type, in, size, nullptr, nullptr, &json, nullptr, nullptr, &refused);
        *fault = {};
        fault->code = refused.code == TLVMSG_OUT_OF_MEMORY ? TLVMSG_TEXT_OUT_OF_MEMORY : TLVMSG_TEXT_OK;
        break;
    case What::bytes_from_json:
        done = tlvmsg_bytes_from_json(type, text, size, nullptr, &bytes, &count, fault);
    }
    const bool has_record = what == What::json || what == What::sample;
    EXPECT_TRUE(done || (json == nullptr && bytes == nullptr && guesses == nullptr && parts == nullptr &&
                         messages == nullptr && differences == nullptr && count == 0))
        << static_cast<int>(what);
    EXPECT_TRUE(done || !has_record || std::count(sample, sample + 2, 0) == 2) << "of 16 bytes";
    tlvmsg_free(bytes);
    tlvmsg_free(json);
    tlvmsg_free(guesses);
    tlvmsg_free(parts);
    tlvmsg_free(messages);
    tlvmsg_free(differences);
    if (has_record) {
        tlvmsg_release(type, sample);
    }
    return done;
}

constexpr What all[] = {What::text,     What::annotation,    What::untyped_json,  What::untyped_text,
                        What::hex,      What::json,          What::to_json,       What::diff,
                        What::sample,   What::partial,       What::guess,         What::divide,
                        What::type_set, What::types_to_json, What::bytes_to_json, What::bytes_from_json};

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

    bool run(What what, tlvmsg_sink sink, tlvmsg_text_fault *fault) {
        const Bytes &in = usual_input(what);
        return tlvmsg_test::run(what, type_, record_, in.data(), in.size(), sink, fault);
    }

    const tlvmsg_type *type_ = tlvmsg_type_find("if_name");
    uint64_t record_[4];
};

// Every allocation fails once, those of the C++ run time and those of the platform, also where a text is wrong.
TEST_F(Survival, OfNoMemory) {
    const auto check = [&](What what, const Bytes &in, tlvmsg_text_code at_last) {
        SCOPED_TRACE(static_cast<int>(what));
        size_t failed = 0;
        for (const bool platform : {false, true}) {
            tlvmsg_text_fault fault{};
            for (uint32_t nth = 1; nth == 1 || fault.code == TLVMSG_TEXT_OUT_OF_MEMORY; ++nth) {
                const size_t blocks = osal_double_blocks_out();
                osal_double_fail(platform ? nth : UINT32_MAX, 0);
                failing_new = platform ? 0 : nth;
                const bool done =
                    tlvmsg_test::run(what, type_, record_, in.data(), in.size(), swallow, &fault);
                failing_new = 0;
                failed += fault.code == TLVMSG_TEXT_OUT_OF_MEMORY ? 1 : 0;
                EXPECT_EQ(done, fault.code == TLVMSG_TEXT_OK);
                EXPECT_EQ(osal_double_blocks_out(), blocks);
            }
            EXPECT_EQ(fault.code, at_last);
        }
        EXPECT_GT(failed, at_last == TLVMSG_TEXT_OK ? 2u : 1u);
    };
    for (const What what : all) {
        check(what, usual_input(what), TLVMSG_TEXT_OK);
    }
    check(What::json, wrong_json, TLVMSG_TEXT_WRONG_VALUE);
}

TEST_F(Survival, OfSinksThatStopAndOfNone) {
    for (const What what : all) {
        tlvmsg_text_fault fault;
        EXPECT_EQ(run(what, refuse, &fault), !tells(what));
        EXPECT_EQ(fault.code, TLVMSG_TEXT_OK);
        EXPECT_EQ(run(what, nullptr, &fault), !tells(what));
        EXPECT_STREQ(fault.path, tells(what) ? "sink" : "");
    }
}

// ---- Input that changes ------------------------------------------------------------------------------

// Bytes before a page that nobody may touch, in one of two states.
class Changing {
public:
    Changing(const Bytes &first, const Bytes &second) : states_{first, second}, in(first.size()) {
        states_[1].resize(first.size(), ' ');
    }
    void become(size_t state) {
        for (size_t i = 0; i < in.size(); ++i) {
            __atomic_store_n(in.data() + i, states_[state][i], __ATOMIC_RELAXED);
        }
    }

private:
    Bytes states_[2];

public:
    GuardedBuffer in;
};

Changing *changing;
size_t allocations_until_change;

void count_down(size_t /*size*/) {
    if (allocations_until_change > 0 && --allocations_until_change == 0) {
        changing->become(1);
    }
}

// Counts, lengths and quotation marks that suddenly lead far behind the end. They change at each allocation in turn,
// which is between any two looks at the same byte that matter, and while another thread is at them.
TEST_F(Survival, OfInputThatChanges) {
    const Bytes states[][2] = {
        {message, hex("03f0 ffff 0002 ffff ff 000a ffff 0004 0002 ff22"
                      "ff6161616161616161616161616161616161616161616161616161616161616161ff ff")},
        {hex("000a 0008 0004 0002 0002 6161"), hex("000a 0008 0004 0002 ff00 6161")},
        {hex("07ff 000e 0004 0002 0007 0006 0004 00000001"), hex("07ff ffff 0004 ffff 0007 0006 ffff")},
        {hex("07ff 000c 000a 0008 0004 0002 0002 6161"), hex("07ff 000c 000a 0008 0006 0002 ffff ff61")},
        {dump, bytes_of("type  x\n0 (61 62) × 9999999\n")},
        {bytes_of("b'\\x61\\x62' {0x12}"), bytes_of("b'   \\ {{{{{{{")},
        {json_text, bytes_of(R"({"name": "\ud83d\ude00\\\\\\\\\\\\\\\\\\\\\\\\\\)")}};
    for (const auto &[first, second] : states) {
        Changing input(first, second);
        changing = &input;
        const auto call = [&](What what) {
            tlvmsg_text_fault fault{};
            tlvmsg_test::run(what, type_, record_, input.in.data(), input.in.size(), swallow, &fault);
            EXPECT_NE(fault.code, TLVMSG_TEXT_OUT_OF_MEMORY) << static_cast<int>(what);
        };
        for (const What what : all) {
            size_t nth = 0;
            do {
                input.become(0);
                allocations_until_change = ++nth;
                before_new = count_down;
                call(what);
                before_new = nullptr;
            } while (allocations_until_change == 0);
        }
        std::atomic<bool> done = false;
        std::thread other([&] {
            for (size_t turn = 0; !done; ++turn) {
                input.become(turn % 2);
            }
        });
        for (int turn = 0; turn < 500; ++turn) {
            for (const What what : all) {
                call(what);
                tlvmsg_judge(type_, input.in.data(), input.in.size(), nullptr, nullptr);
            }
        }
        done = true;
        other.join();
    }
}

} // namespace

} // namespace tlvmsg_test
