// What can be read of broken encodings: of whole ones everything, of cut ones what is in front of the cut.
#include "inspect/samples.h"

#include <tlvmsg/forms.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>

namespace tlvmsg_test {

namespace {

using Json = nlohmann::ordered_json;

Json parsed(char *text) {
    Json json = Json::parse(text);
    tlvmsg_free(text);
    return json;
}

Json partial(const tlvmsg_type *type, const Bytes &bytes, tlvmsg_fault &stopped) {
    char *text = nullptr;
    size_t length = 0;
    EXPECT_TRUE(
        tlvmsg_partial_to_json(type, bytes.data(), bytes.size(), 0, &text, &length, &stopped, nullptr));
    EXPECT_EQ(std::strlen(text), length);
    return parsed(text);
}

// Whether nothing in the part is otherwise in the whole.
bool is_part(const Json &part, const Json &whole) {
    if (part.is_null()) {
        return true;
    }
    if (part.is_object() && whole.is_object()) {
        return std::all_of(part.items().begin(), part.items().end(), [&](const auto &member) {
            return whole.contains(member.key()) && is_part(member.value(), whole[member.key()]);
        });
    }
    if (part.is_array() && whole.is_array() && part.size() <= whole.size()) {
        return std::equal(part.begin(), part.end(), whole.begin(), is_part);
    }
    // A count is read before the items, and of bytes there are none yet.
    return part == whole || (part.dump() == R"("")" && (whole.is_string() || whole.contains("hex")));
}

void check(const tlvmsg_type *type, const Sample &sample) {
    const Bytes bytes = sample.encoded();
    char *text = nullptr;
    ASSERT_TRUE(tlvmsg_to_json(type, sample.record(), nullptr, &text, nullptr, nullptr));
    const Json whole = parsed(text);
    tlvmsg_fault stopped;
    EXPECT_EQ(partial(type, bytes, stopped), whole) << type->name;
    EXPECT_EQ(stopped.code, TLVMSG_OK);
    for (size_t size = 0; size < bytes.size(); size += bytes.size() / 16 + 1) {
        const Bytes cut(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(size));
        const Json part = partial(type, cut, stopped);
        EXPECT_TRUE(is_part(part, whole)) << type->name << " cut to " << size << ": " << part;
        EXPECT_LE(stopped.offset, size);
    }
}

TEST(Partial, OfEveryTypeIsTheWholeAndOfEveryCutAPart) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type *const type = tlvmsg_type_at(i);
        // A union alone lacks its selector, and a char is written under another tag than it is read.
        const bool whole = type->kind != TLVMSG_UNION && type->name != std::string("char");
        for (uint32_t choice = 0; whole && choice < choices(*type); ++choice) {
            check(type, Sample(*type, i, Counts::One, choice));
        }
    }
}

// Structures and arrays that the cut goes through are shown up to there.
TEST(Partial, OfWhatIsCutShowsWhatIsLeft) {
    struct Cut {
        const char *type;
        const char *whole;
        size_t missing;
        std::string left;
        size_t offset; // where decoding stops
    };
    const std::vector<Cut> cuts = {
        {"zel_led_control", R"({"slot":2,"port":5,"color":3})", 1, R"({"slot":2,"port":5})", 0},
        {"zel_led_control", R"({"slot":2,"port":5,"color":3})", 17, R"({"slot":2})", 0},
        {"zel_wrrq_cosmap", R"({"qmap":[1,2,3]})", 1, R"({"qmap":[1,2]})", 0},
        {"if_name", R"({"name":"eth0"})", 2, "null", 0},
        {"ip_address", R"({"address":{"type":1,"ipv4":5},"length":32})", 8,
         R"({"address":{"type":1,"ipv4":5}})", 0},
        {"analogbri_led_control_req_message", R"({"led_control":{"slot":2,"port":5}})", 9,
         R"({"session":{"value_1":0,"value_2":0,"value_3":0,"value_4":0,"msg_type":0},)"
         R"("interface":{"value_1":0,"value_2":0,"value_3":0,"value_4":0,"value_5":0},)"
         R"("led_control":{"slot":2,"port":5}})",
         92}};
    for (const Cut &cut : cuts) {
        const tlvmsg_type *type = tlvmsg_type_find(cut.type);
        std::vector<uint64_t> record(type->size / sizeof(uint64_t) + 1);
        ASSERT_TRUE(
            tlvmsg_from_json(type, cut.whole, std::strlen(cut.whole), nullptr, record.data(), nullptr));
        Bytes bytes(1000);
        size_t size = 0;
        ASSERT_TRUE(tlvmsg_encode(type, record.data(), bytes.data(), bytes.size(), &size, nullptr));
        tlvmsg_release(type, record.data());
        bytes.resize(size - cut.missing);
        tlvmsg_fault stopped;
        EXPECT_EQ(partial(type, bytes, stopped).dump(), cut.left);
        EXPECT_EQ(stopped.code, TLVMSG_TRUNCATED);
        EXPECT_EQ(stopped.offset, cut.offset);
    }
}

} // namespace

} // namespace tlvmsg_test
