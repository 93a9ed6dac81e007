// Records to JSON and back: nothing is lost for any type, what is wrong is told by code and place, and no
// text and no lack of memory does harm.
#include "forms/failing_new.h"
#include "inspect/samples.h"
#include "support/osal_double/osal_double.h"

#include <tlvmsg/all.h>
#include <tlvmsg/forms.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace tlvmsg_test {

namespace {

class Record {
public:
    explicit Record(const tlvmsg_type *type)
        : type_(type), storage_(type->size / sizeof(uint64_t) + 1, UINT64_MAX) {
        std::memset(storage_.data(), 0, type->size);
    }
    ~Record() { tlvmsg_release(type_, data()); }
    Record(const Record &) = delete;
    Record &operator=(const Record &) = delete;

    void *data() { return storage_.data(); }
    bool read(const std::string &text, tlvmsg_text_fault *fault = nullptr,
              const tlvmsg_limits *limits = nullptr) {
        return tlvmsg_from_json(type_, text.data(), text.size(), limits, data(), fault);
    }
    bool is_zero() const {
        const auto *const bytes = reinterpret_cast<const uint8_t *>(storage_.data());
        return std::all_of(bytes, bytes + type_->size, [](uint8_t byte) { return byte == 0; });
    }

private:
    const tlvmsg_type *type_;
    std::vector<uint64_t> storage_; // aligned for every record
};

std::string written(const tlvmsg_type *type, const void *record, tlvmsg_json_options options = {}) {
    char *text = nullptr;
    size_t length = 0;
    tlvmsg_text_fault fault;
    EXPECT_TRUE(tlvmsg_to_json(type, record, &options, &text, &length, &fault)) << fault.message;
    std::string result(text, length);
    EXPECT_EQ(text[length], '\0');
    tlvmsg_free(text);
    return result;
}

std::string through(const tlvmsg_type *type, const std::string &text, tlvmsg_json_options options = {}) {
    Record record(type);
    tlvmsg_text_fault fault;
    EXPECT_TRUE(record.read(text, &fault)) << fault.path << ": " << fault.message;
    return written(type, record.data(), options);
}

std::string through(const char *type, const std::string &text, tlvmsg_json_options options = {}) {
    return through(tlvmsg_type_find(type), text, options);
}

// ---- Forms -------------------------------------------------------------------------------------------

class JsonOfFamily : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(Families, JsonOfFamily, testing::ValuesIn(families()),
                         [](const auto &family) { return family.param.empty() ? "scalars" : family.param; });

TEST_P(JsonOfFamily, SaysAllThatRecordsSay) {
    for_each_type_of(GetParam(), [](const tlvmsg_type &type) {
        for_each_sample(type, [&](uint64_t seed, Counts counts, uint32_t choice) {
            const Sample sample(type, seed, counts, choice);
            Record back(&type);
            tlvmsg_text_fault fault;
            const std::string text =
                written(&type, sample.record(), {static_cast<unsigned>(seed % 3), 0, {}});
            ASSERT_TRUE(back.read(text, &fault)) << type.name << fault.path << fault.message;
            ASSERT_TRUE(tlvmsg_equal(&type, sample.record(), back.data())) << type.name << text;
        });
    });
}

// What decoders tolerate leaves records with something absent, which have a form as well.
TEST_P(JsonOfFamily, KeepsWhatDecodingTolerates) {
    std::mt19937_64 random(1);
    for_each_type_of(GetParam(), [&](const tlvmsg_type &type) {
        for_each_valid(type, [&](const Bytes &valid) {
            const Bytes bytes = Mutator(type, valid).mutated(random);
            Record record(&type);
            Record back(&type);
            if (tlvmsg_decode(&type, bytes.data(), bytes.size(), nullptr, record.data(), nullptr, nullptr)) {
                const std::string text = written(&type, record.data());
                ASSERT_TRUE(back.read(text)) << type.name << text;
                ASSERT_TRUE(tlvmsg_equal(&type, record.data(), back.data())) << type.name << text;
            }
        });
    });
}

TEST(Json, HasOneFormForEachKind) {
    for (const auto &[type, text] : std::vector<std::pair<const char *, std::string>>{
             {"zel_led_control", R"({"slot":2,"port":0,"color":4294967295})"},
             {"stat_counters", R"({"counter_1":18446744073709551615,"counter_2":0})"},
             {"int32", "-2147483648"},
             {"int64", "-9223372036854775808"},
             {"zel_mac_addr_mac_array", R"({"hex":"00ff7e"})"},
             {"zel_mac_addr_mac_array", R"("\"\\c~")"},
             {"zel_vstring_vstring_array", R"("any length")"},
             {"ip_address", R"({"address":{"type":1,"ipv4":167772161},"length":32})"},
             {"ip_address", R"({"address":{"type":7},"length":0})"},
             {"if_name", R"({"name":{"count":5,"items":null}})"},
             {"zel_vlan_stat_bundle", R"({"vlan_counters":[]})"}}) {
        EXPECT_EQ(through(type, text), text);
    }
    for (const auto &[written, meant] : std::vector<std::pair<std::string, std::string>>{
             {"1.0", "1"},
             {"-12.50e+1", "-125"},
             {"1200e-02", "12"},
             {"-0.0", "0"},
             {"0e999", "0"},
             {"9223372036854775807000E-3", "9223372036854775807"}}) {
        EXPECT_EQ(through("int64", written), meant);
    }
    EXPECT_EQ(through("ip_address", R"({"length": 1, "address": {"ipv4": 5, "type": 1}})"),
              R"({"address":{"type":1,"ipv4":5},"length":1})");
    EXPECT_EQ(through("zel_mac_addr_mac_array", R"({"hex": "6A6b"})"), R"("jk")");
    EXPECT_EQ(through("zel_wrrq_cosmap", R"({"qmap": [1, 2]})", {2, 1, {}}),
              "{\n    \"qmap\": [\n      1,\n      2\n    ]\n  }");
    const std::string many = "[" + std::string(65534, ' ') + std::string("{}");
    EXPECT_EQ(through("zel_vlan_stat_bundle_vlan_counters_array", many + ",{}]").substr(0, 3), R"([{")");
}

TEST(Json, NamesValuesThatHaveOne) {
    static const tlvmsg_enumerator enumerators[] = {
        {"off", "", 0, 0}, {"all", "Every colour.", UINT32_MAX, 0}, {"dark", "", 0, 0}};
    tlvmsg_type colour = *tlvmsg_type_find("zel_led_color");
    colour.enumerators = enumerators;
    colour.enumerator_count = 3;
    EXPECT_EQ(through(&colour, "4294967295"), R"("all")");
    EXPECT_EQ(through(&colour, R"("dark")"), R"("off")");
    EXPECT_EQ(through(&colour, "7"), "7");
    for (const auto &[text, message] : std::vector<std::pair<std::string, std::string>>{
             {R"("dark\u0000")", R"(no value "dark\u0000", did you mean 'dark'?)"},
             {"4294967296", "found 4294967296, expected a whole number from 0 to 4294967295 or a name"}}) {
        tlvmsg_text_fault fault;
        EXPECT_FALSE(Record(&colour).read(text, &fault));
        EXPECT_EQ(fault.message, message);
    }
    EXPECT_EQ(tlvmsg_enumerator_by_value(&colour, 1), nullptr);
    EXPECT_EQ(tlvmsg_enumerator_by_value(&colour, uint64_t{1} << 32), nullptr);
}

// ---- Faults ------------------------------------------------------------------------------------------

struct Mistake {
    const char *type;
    std::string text;
    tlvmsg_text_code code;
    size_t column;
    const char *message;
};

TEST(Json, TellsMistakesWithPlaceAndRemedy) {
    const std::vector<Mistake> mistakes = {
        {"zel_led_control", R"({"slot": 65536})", TLVMSG_TEXT_WRONG_VALUE, 10,
         "$.slot: found 65536, expected a whole number from 0 to 65535"},
        {"zel_led_control", R"({"slot": -1})", TLVMSG_TEXT_WRONG_VALUE, 10,
         "$.slot: found -1, expected a whole number from 0 to 65535"},
        {"zel_led_control", R"({"port":1,"slot": 1.5})", TLVMSG_TEXT_WRONG_VALUE, 19,
         "$.slot: found 1.5, expected a whole number from 0 to 65535"},
        {"zel_led_control", R"({"slot": "2"})", TLVMSG_TEXT_WRONG_VALUE, 10,
         "$.slot: found \"2\", expected a whole number from 0 to 65535"},
        {"int8", "-129", TLVMSG_TEXT_WRONG_VALUE, 1,
         "$: found -129, expected a whole number from -128 to 127"},
        {"uint64", "18446744073709551616", TLVMSG_TEXT_WRONG_VALUE, 1,
         "$: found 18446744073709551616, expected a whole number from 0 to 18446744073709551615"},
        {"zel_led_control", R"({"slot":1, "colour": 1})", TLVMSG_TEXT_UNKNOWN_NAME, 12,
         "$: no member \"colour\", did you mean 'color'?"},
        {"zel_led_control", R"({"slot": 1, "slot": 2})", TLVMSG_TEXT_DUPLICATE_NAME, 13,
         "$: member \"slot\" is there twice"},
        {"zel_led_control", R"({"\u001b[2J": 1})", TLVMSG_TEXT_UNKNOWN_NAME, 2,
         "$: no member \"\\u001b[2J\""},
        {"zel_led_control", R"({"slot": 1e999})", TLVMSG_TEXT_WRONG_VALUE, 10,
         "$.slot: found 1e999, expected a whole number from 0 to 65535"},
        {"zel_led_control", std::string("{}\0{}", 5), TLVMSG_TEXT_SYNTAX, 3,
         "$: not JSON: found \"\\u0000\", expected the end"},
        {"zel_led_control", R"({"slot": 1 "port")", TLVMSG_TEXT_SYNTAX, 12,
         "$: not JSON: found '\"', expected ',' or '}'"},
        {"zel_led_control", R"({"slot": nul})", TLVMSG_TEXT_SYNTAX, 10,
         "$: not JSON: found \"nul\", expected a value"},
        {"zel_vstring_vstring_array", R"("\ud800")", TLVMSG_TEXT_SYNTAX, 2,
         "$: not JSON: found \"\\\\ud800\", expected a pair of surrogates"},
        {"int8", "-1.30e2", TLVMSG_TEXT_WRONG_VALUE, 1,
         "$: found -1.30e2, expected a whole number from -128 to 127"},
        {"zel_led_control", "[1]", TLVMSG_TEXT_WRONG_VALUE, 1, "$: found an array, expected an object"},
        {"analogbri_led_control_req_message", R"({"led_control": {"prt": 1}})", TLVMSG_TEXT_UNKNOWN_NAME, 18,
         "$.led_control: no member \"prt\", did you mean 'port'?"},
        {"if_name", R"({"name": {"count": 256, "items": null}})", TLVMSG_TEXT_WRONG_VALUE, 20,
         "$.name.count: found 256, expected a whole number from 0 to 255"},
        {"if_name", R"({"name": {"count": 2, "items": []}})", TLVMSG_TEXT_WRONG_VALUE, 32,
         "$.name.items: found an array, expected null"},
        {"if_name", R"({"name": {"count": 2, "hex": "00"}})", TLVMSG_TEXT_UNKNOWN_NAME, 23,
         "$.name: no member \"hex\""},
        {"if_name", R"({"name": {}})", TLVMSG_TEXT_WRONG_VALUE, 10,
         "$.name: found an object, expected text or {\"hex\": \"...\"}"},
        {"zel_mac_addr", R"({"mac": "seven b"})", TLVMSG_TEXT_TOO_MANY, 9, "$.mac: 7 bytes, at most 6 fit"},
        {"zel_mac_addr", R"({"mac": {"hex": "0g"}})", TLVMSG_TEXT_WRONG_VALUE, 17,
         "$.mac.hex: found \"0g\", expected pairs of hexadecimal digits"},
        {"zel_analogbri_tdm_conn_req", R"({"conn_pair": [{}, {}]})", TLVMSG_TEXT_TOO_MANY, 20,
         "$.conn_pair: 2 items or more, at most 1 fit"},
        {"ip_address", R"({"address": {"type": 2, "ipv4": 1}})", TLVMSG_TEXT_NOT_CHOSEN, 25,
         "$.address.ipv4: type is 2, which does not choose this; 1 does"},
        {"ip_address", R"({"address": {"ipv4": 1, "type": 2}})", TLVMSG_TEXT_NOT_CHOSEN, 14,
         "$.address.ipv4: type is 2, which does not choose this; 1 does"},
        {"ip_address", R"({"address": {"ipv4": 1}})", TLVMSG_TEXT_NOT_CHOSEN, 14,
         "$.address.ipv4: type is 0, which does not choose this; 1 does"},
        {"ip_address", R"({"address": {"ipv4": 1, "ipv6": {}}})", TLVMSG_TEXT_NOT_CHOSEN, 25,
         "$.address.ipv6: stands beside \"ipv4\""},
    };
    for (const Mistake &mistake : mistakes) {
        Record record(tlvmsg_type_find(mistake.type));
        tlvmsg_text_fault fault;
        ASSERT_FALSE(record.read("\n" + mistake.text, &fault)) << mistake.text;
        EXPECT_EQ(std::string(fault.path) + ": " + fault.message, mistake.message);
        EXPECT_STREQ(tlvmsg_text_code_name(fault.code), tlvmsg_text_code_name(mistake.code)) << mistake.text;
        EXPECT_EQ(fault.line, 2u);
        EXPECT_EQ(fault.column, mistake.column) << mistake.text;
        EXPECT_EQ(fault.offset, mistake.column) << mistake.text;
        EXPECT_TRUE(record.is_zero());
    }
    tlvmsg_text_fault fault;
    EXPECT_FALSE(Record(tlvmsg_type_find("zel_led_control")).read("{\"slot\"", &fault));
    EXPECT_EQ(fault.code, TLVMSG_TEXT_SYNTAX);
    EXPECT_EQ(fault.offset, 7u);
}

// ---- Bounds ------------------------------------------------------------------------------------------

TEST(Json, StopsAtTheTypesDepthAndAtTheLimit) {
    tlvmsg_text_fault fault;
    const std::string deep(5'000'000, '[');
    EXPECT_FALSE(Record(tlvmsg_type_find("zel_led_control")).read(deep, &fault));
    EXPECT_FALSE(Record(tlvmsg_type_find("zel_vlan_stat_bundle_vlan_counters_array")).read(deep, &fault));
    EXPECT_EQ(fault.offset, 1u);

    const tlvmsg_limits limits{4 * sizeof(zel_vlan_counters), false, {}};
    Record counters(tlvmsg_type_find("zel_vlan_stat_bundle_vlan_counters_array"));
    EXPECT_TRUE(counters.read("[{},{},{},{}]", &fault, &limits));
    tlvmsg_release(tlvmsg_type_find("zel_vlan_stat_bundle_vlan_counters_array"), counters.data());
    EXPECT_FALSE(counters.read("[{},{},{},{},{}]", &fault, &limits));
    EXPECT_EQ(fault.code, TLVMSG_TEXT_MEMORY_LIMIT);
    EXPECT_STREQ(fault.path, "$[4]");
    Record text(tlvmsg_type_find("if_name"));
    const tlvmsg_limits five{5, false, {}};
    EXPECT_TRUE(text.read(R"({"name": "four"})", &fault, &five));
    tlvmsg_release(tlvmsg_type_find("if_name"), text.data());
    EXPECT_FALSE(text.read(R"({"name": "fives"})", &fault, &five));
}

// Strings and numbers of all shapes are what another parser takes them for, blanks and digits take no memory.
TEST(Json, AgreesWithAnotherParser) {
    static const char *const in_strings[] = {
        "a",        "\"",      "\\",   "\\n",  "\\u",      "00e9",         "20Ac",
        "\\ud83d",  "\\uDE00", "\xC3", "\xA9", "\xE0\xA0", "\xED\xA0\x80", "\xF0\x9F\x98\x80",
        "\xF4\x90", "\x1f"};
    static const char *const in_numbers[] = {"-", "0", "1", "00", "999999999", ".", "e", "E", "+", "5"};
    std::mt19937_64 random(11);
    const auto made_of = [&](const auto &pieces) {
        std::string text;
        for (size_t left = random() % 6; left > 0; --left) {
            text += pieces[random() % std::size(pieces)];
        }
        return text;
    };
    const auto is_number = [](const std::string &text) {
        try {
            return !nlohmann::json::parse(text).is_null();
        } catch (const nlohmann::json::out_of_range &) { // which is none of the syntax
            return true;
        } catch (const nlohmann::json::parse_error &) {
            return false;
        }
    };
    for (int i = 0; i < 20000; ++i) {
        const std::string text = "\"" + made_of(in_strings) + "\"";
        const auto other = nlohmann::json::parse(text, nullptr, false);
        const tlvmsg_type *const type = tlvmsg_type_find("zel_vstring_vstring_array");
        Record record(type);
        ASSERT_EQ(record.read(text), !other.is_discarded()) << text;
        if (!other.is_discarded()) {
            const tlvmsg_items items = tlvmsg_items_of(type, record.data());
            EXPECT_EQ(std::string(items.first, items.first + items.readable), other.get<std::string>());
        }
        const std::string number = made_of(in_numbers);
        tlvmsg_text_fault fault;
        Record(tlvmsg_type_find("uint64")).read(number, &fault);
        ASSERT_NE(fault.code, is_number(number) ? TLVMSG_TEXT_SYNTAX : TLVMSG_TEXT_OK) << number;
    }
    for (const std::string &text : {std::string(1'000'000, ' ') + "1", "1." + std::string(1'000'000, '0'),
                                    std::string(1'000'000, '9')}) {
        static size_t allocated;
        allocated = 0;
        tlvmsg_text_fault fault;
        Record record(tlvmsg_type_find("uint64"));
        before_new = [](size_t size) { allocated += size; };
        record.read(text, &fault);
        before_new = nullptr;
        EXPECT_LT(allocated, 2000u) << fault.message;
    }
}

// Texts are cut, and pieces of them changed, doubled and moved: an answer, and nothing that stays allocated.
TEST_P(JsonOfFamily, SurvivesDamage) {
    static const char *const pieces[] = {"{",  "}",    "[", "]", ",",       ":",        "\"",
                                         "\\", "null", "-", "9", "\"hex\"", "\"count\""};
    std::mt19937_64 random(7);
    const auto below = [&](size_t limit) { return static_cast<size_t>(random() % limit); };
    osal_double_reset();
    for_each_type_of(GetParam(), [&](const tlvmsg_type &type) {
        const Sample sample(type, 3, Counts::Random, static_cast<uint32_t>(below(3)));
        const std::string valid = written(&type, sample.record());
        const size_t blocks = osal_double_blocks_out();
        for (int i = 0; i < 30; ++i) {
            std::string text = valid;
            text.replace(below(text.size()), below(4), pieces[below(std::size(pieces))]);
            if (random() % 2 == 0) {
                text.insert(below(text.size()), valid, below(valid.size()), below(40));
            }
            Record record(&type);
            tlvmsg_text_fault fault;
            if (record.read(text, &fault)) {
                EXPECT_EQ(fault.code, TLVMSG_TEXT_OK);
                EXPECT_TRUE(nlohmann::json::accept(text)) << text;
            } else {
                EXPECT_TRUE(fault.code != TLVMSG_TEXT_SYNTAX || !nlohmann::json::accept(text)) << text;
                EXPECT_TRUE(record.is_zero()) << type.name << text;
                EXPECT_EQ(osal_double_blocks_out(), blocks) << type.name << text;
                EXPECT_LE(fault.offset, text.size());
            }
        }
    });
    EXPECT_EQ(osal_double_faults(), 0u);
}

// ---- Bytes -------------------------------------------------------------------------------------------

TEST(JsonOfBytes, IsThatOfTheRecordInBetween) {
    const tlvmsg_type *const type = tlvmsg_type_find("if_name");
    const std::string eth0 = R"({"name":"eth0"})";
    const struct {
        std::string text;
        size_t allocation;
        tlvmsg_text_code code;
        const char *path;
    } texts[] = {{eth0, 0, TLVMSG_TEXT_OK, ""},
                 {eth0, 1, TLVMSG_TEXT_MEMORY_LIMIT, "$.name"},
                 {R"({"nane": "eth0"})", 0, TLVMSG_TEXT_UNKNOWN_NAME, "$"},
                 {R"({"name": {"count": 5, "items": null}})", 0, TLVMSG_TEXT_NOT_ENCODABLE, "$.name.count"}};
    for (const auto &[text, allocation, code, path] : texts) {
        uint8_t *bytes = nullptr;
        size_t size = 1;
        const tlvmsg_limits limits{allocation, false, {}};
        tlvmsg_text_fault fault;
        EXPECT_EQ(tlvmsg_bytes_from_json(type, text.data(), text.size(), &limits, &bytes, &size, &fault),
                  code == TLVMSG_TEXT_OK);
        EXPECT_EQ(fault.code, code) << fault.message;
        EXPECT_STREQ(fault.path, path);
        EXPECT_EQ(size > 0, code == TLVMSG_TEXT_OK);
        tlvmsg_free(bytes);
    }

    Record record(type);
    ASSERT_TRUE(record.read(eth0));
    size_t size = 0;
    uint8_t *const encoded = tlvmsg_encode_alloc(type, record.data(), &size, nullptr);
    Bytes bytes(encoded, encoded + size);
    tlvmsg_free(encoded);
    bytes.push_back(0);
    const struct {
        const tlvmsg_type *type;
        size_t length;
        tlvmsg_limits limits;
        tlvmsg_json_options options;
        tlvmsg_code code;
        const char *path;
    } calls[] = {{type, size + 1, {}, {}, TLVMSG_OK, ""},
                 {type, size, {0, true, {}}, {}, TLVMSG_OK, ""},
                 {type, size + 1, {0, true, {}}, {}, TLVMSG_TRAILING_BYTES, "if_name"},
                 {type, size - 1, {}, {}, TLVMSG_TRUNCATED, "if_name"},
                 {type, size, {1, false, {}}, {}, TLVMSG_ALLOCATION_LIMIT, "if_name.name"},
                 {nullptr, size, {}, {}, TLVMSG_NULL_ARGUMENT, "type"},
                 {type, size, {0, false, {1}}, {}, TLVMSG_RESERVED_WORD, "limits"},
                 {type, size, {}, {0, 0, {1}}, TLVMSG_RESERVED_WORD, "options"}};
    for (const auto &each : calls) {
        char *text = nullptr;
        size_t length = 1;
        size_t consumed = 1;
        tlvmsg_fault fault;
        EXPECT_EQ(tlvmsg_bytes_to_json(each.type, bytes.data(), each.length, &each.limits, &each.options,
                                       &text, &length, &consumed, &fault),
                  each.code == TLVMSG_OK);
        EXPECT_EQ(fault.code, each.code);
        EXPECT_STREQ(fault.path, each.path);
        EXPECT_EQ(std::string(text != nullptr ? text : "", length), each.code == TLVMSG_OK ? eth0 : "");
        EXPECT_EQ(consumed, each.code == TLVMSG_OK ? size : 0);
        tlvmsg_free(text);
    }
}

TEST(Json, NamesTheMissingArgument) {
    const tlvmsg_type *type = tlvmsg_type_find("uint16");
    uint16_t record = 1;
    char *text = nullptr;
    tlvmsg_text_fault fault;
    EXPECT_FALSE(tlvmsg_from_json(type, nullptr, 1, nullptr, &record, &fault));
    EXPECT_STREQ(fault.path, "text");
    EXPECT_EQ(record, 0u);
    EXPECT_FALSE(tlvmsg_from_json(type, nullptr, 0, nullptr, &record, &fault));
    EXPECT_EQ(fault.code, TLVMSG_TEXT_SYNTAX);
    EXPECT_FALSE(tlvmsg_from_json(nullptr, "1", 1, nullptr, &record, nullptr));
    EXPECT_FALSE(tlvmsg_to_json(type, nullptr, nullptr, &text, nullptr, &fault));
    EXPECT_STREQ(fault.path, "record");
}

} // namespace

} // namespace tlvmsg_test
