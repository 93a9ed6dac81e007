// Which types bytes are of: the right one is found however the bytes were cut or damaged, and programs are never told
// one that is not certain.
#include "inspect/samples.h"

#include <tlvmsg/forms.h>
#include <tlvmsg/record.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace tlvmsg_test {

namespace {

using Names = std::vector<std::string>;

// A guess or a part, with its names.
template <class Entry>
struct Found : Entry {
    explicit Found(const Entry &entry) : Entry(entry) {
        for (size_t i = 0; i < entry.type_count; ++i) {
            names.emplace_back(entry.types[i]->name);
        }
    }
    bool has(const tlvmsg_type &type) const { return std::count(names.begin(), names.end(), type.name) > 0; }

    Names names;
};

using Guesses = std::vector<Found<tlvmsg_guess>>;
using Parts = std::vector<Found<tlvmsg_part>>;

Guesses guesses(const Bytes &bytes, size_t most = 3) {
    const tlvmsg_guess_options options{most, true, {}};
    tlvmsg_guess *list = nullptr;
    size_t count = 0;
    EXPECT_TRUE(tlvmsg_guess_types(nullptr, bytes.data(), bytes.size(), &options, &list, &count, nullptr));
    Guesses found(list, list + count);
    tlvmsg_free(list);
    return found;
}

Parts divided(const Bytes &bytes, const tlvmsg_type_set *set = nullptr) {
    tlvmsg_part *list = nullptr;
    size_t count = 0;
    EXPECT_TRUE(tlvmsg_divide(set, bytes.data(), bytes.size(), &list, &count, nullptr));
    Parts found(list, list + count);
    tlvmsg_free(list);
    return found;
}

Bytes sample(const tlvmsg_type &type, uint64_t seed = 1) {
    return Sample(type, seed, Counts::Random, static_cast<uint32_t>(seed)).encoded();
}

void for_each_message(const std::function<void(const tlvmsg_type &)> &visit) {
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        if (tlvmsg_type_at(i)->kind == TLVMSG_MESSAGE) {
            visit(*tlvmsg_type_at(i));
        }
    }
}

// How many members two messages begin with in common.
uint32_t common_members(const tlvmsg_type &a, const tlvmsg_type &b) {
    uint32_t common = 0;
    while (common < a.member_count && common < b.member_count &&
           a.members[common].type == b.members[common].type) {
        ++common;
    }
    return common;
}

// Behind the first tag that only messages of the same members have there; the end where there is none.
size_t behind_distinguishing_tag(const tlvmsg_type &message, const Bytes &bytes) {
    uint32_t member = 0;
    for_each_message([&](const tlvmsg_type &other) {
        const uint32_t common = common_members(message, other);
        if (common < message.member_count || common < other.member_count) {
            member = std::max(member, common);
        }
    });
    size_t at = 0;
    for (uint32_t i = 0; i < member && at < bytes.size(); ++i) {
        at += 4 + (size_t{bytes[at + 2]} << 8 | bytes[at + 3]);
    }
    return std::min(at + 2, bytes.size());
}

// Among the first three; and, if it is certain, with none beside it that has other members.
::testing::AssertionResult is_found(const tlvmsg_type &message, const Bytes &bytes, bool certain) {
    const Guesses found = guesses(bytes);
    for (size_t i = 0; i < std::min<size_t>(found.size(), 3); ++i) {
        if (found[i].has(message) && found[i].offset == 0) {
            const auto is_alike = [&](const std::string &name) {
                const tlvmsg_type &other = *tlvmsg_type_find(name.c_str());
                return common_members(message, other) == std::max(message.member_count, other.member_count);
            };
            return ::testing::AssertionResult(
                       !certain || std::all_of(found[i].names.begin(), found[i].names.end(), is_alike))
                   << message.name << " is one of many";
        }
    }
    return ::testing::AssertionFailure() << message.name << " is not found";
}

TEST(Guess, NamesWhatIsFlawlessFirst) {
    size_t tried = 0;
    for (size_t i = 0; i < tlvmsg_type_count(); ++i) {
        const tlvmsg_type &type = *tlvmsg_type_at(i);
        for (uint64_t seed = 1; seed <= 3 && type.kind != TLVMSG_UNION; ++seed) {
            const Bytes bytes = sample(type, seed);
            tlvmsg_verdict verdict;
            tlvmsg_judge(&type, bytes.data(), bytes.size(), nullptr, &verdict);
            if (verdict.fit != TLVMSG_FITS || verdict.extent.deviations > 0) {
                EXPECT_NE(type.kind, TLVMSG_MESSAGE) << type.name;
                continue; // decoders of char do not take what their encoders write
            }
            ++tried;
            const Guesses found = guesses(bytes, 0);
            const auto right =
                std::find_if(found.begin(), found.end(), [&](const auto &each) { return each.has(type); });
            ASSERT_NE(right, found.end()) << type.name;
            EXPECT_EQ(right->understood, bytes.size()) << type.name;
            EXPECT_TRUE(type.kind != TLVMSG_MESSAGE || right == found.begin()) << type.name;
        }
    }
    EXPECT_GT(tried, 4000u);
}

TEST(Guess, FindsEveryMessageThatWasCut) {
    size_t tried = 0;
    for_each_message([&](const tlvmsg_type &message) {
        const Bytes whole = sample(message);
        const size_t certain = behind_distinguishing_tag(message, whole);
        std::set<size_t> sizes{certain, certain + 1, certain + 2, certain + 3};
        for (size_t size = 2; size < whole.size(); size += 1 + whole.size() / 16) {
            sizes.insert(size);
        }
        for (const size_t size : sizes) {
            if (size < whole.size()) {
                const Bytes cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size));
                EXPECT_TRUE(is_found(message, cut, size >= certain));
                ++tried;
            }
        }
    });
    EXPECT_GT(tried, 6000u);
}

TEST(Guess, FindsEveryMessageWithADamagedByte) {
    size_t tried = 0;
    std::mt19937_64 random(1);
    for_each_message([&](const tlvmsg_type &message) {
        const Bytes whole = sample(message);
        for (size_t at = behind_distinguishing_tag(message, whole); at < whole.size();
             at += 1 + whole.size() / 64) {
            Bytes damaged = whole;
            damaged[at] ^= static_cast<uint8_t>(1 + random() % 255);
            EXPECT_TRUE(is_found(message, damaged, true)) << "byte " << at;
            ++tried;
        }
    });
    EXPECT_GT(tried, 5000u);
}

TEST(Guess, FindsMessagesBehindAHeaderAndBehindOneAnother) {
    for_each_message([](const tlvmsg_type &message) {
        const Bytes bytes = sample(message);
        const Guesses behind = guesses(hex("FF FF FF FF FF FF 02 00 00 00 00 01 88 B5") + bytes);
        ASSERT_FALSE(behind.empty()) << message.name;
        EXPECT_EQ(behind[0].offset, 14u) << message.name;
        EXPECT_TRUE(behind[0].has(message)) << message.name;
        const Guesses twice = guesses(bytes + bytes);
        EXPECT_TRUE(std::any_of(twice.begin(), twice.end(), [&](const auto &each) {
            return each.offset == bytes.size() && each.has(message);
        })) << message.name;
    });
}

TEST(Guess, TellsNothingOfNothing) {
    EXPECT_TRUE(guesses({}).empty());
    EXPECT_TRUE(guesses(hex("00")).empty());
    EXPECT_TRUE(guesses(hex("FF FF 00 00 00")).empty());
    EXPECT_TRUE(guesses(hex("00 04 00 03 01 02 03"), 0).empty());
    EXPECT_EQ(guesses(hex("00 04 00 03 01 02 03"), 1)[0].verdict.fault.code, TLVMSG_WRONG_LENGTH);
    EXPECT_EQ(guesses(hex("00 02 00 01 FF"))[0].names, (Names{"char", "uint8"}));
    tlvmsg_part *parts = nullptr;
    size_t count = 1;
    tlvmsg_text_fault fault;
    EXPECT_FALSE(tlvmsg_divide(nullptr, nullptr, 1, &parts, &count, &fault));
    EXPECT_STREQ(fault.path, "in");
}

// What most types would have at the place comes first, and what is wrong with them is told for each.
TEST(Guess, DoesNotJoinTypesThatMissDifferentThings) {
    Bytes bytes = sample(*tlvmsg_type_find("analogbri_led_control_req_message"));
    bytes[49] = 0; // of the tag of `interface`
    const Guesses found = guesses(bytes);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_TRUE(found[0].has(*tlvmsg_type_find("analogbri_led_control_req_message"))); // by what is behind
    for (const auto &each : found) {
        EXPECT_TRUE(each.verdict.fault.allowed == 1039 ||
                    !each.has(*tlvmsg_type_find("analogbri_led_control_req_message")));
    }
}

// By headers further in, where the first one is broken or bytes are missing.
TEST(Guess, FindsMessagesWhoseBeginningIsDamaged) {
    size_t tried = 0;
    size_t missed = 0;
    std::mt19937_64 random(1);
    for_each_message([&](const tlvmsg_type &message) {
        const Bytes whole = sample(message);
        for (size_t kind = 0; kind < 3; ++kind) {
            Bytes bytes = whole;
            const auto at = static_cast<ptrdiff_t>(random() % (whole.size() - 4));
            if (kind == 0) {
                bytes[static_cast<size_t>(at) % 4] ^= static_cast<uint8_t>(1 << random() % 8);
            } else {
                bytes.erase(bytes.begin() + at, bytes.begin() + at + (kind == 1 ? 1 : 4));
            }
            ++tried;
            missed += is_found(message, bytes, false) ? 0 : 1;
        }
    });
    EXPECT_GT(tried, 1000u);
    EXPECT_LT(missed, tried / 10);
}

// Of two messages of which one bit makes the other, each names the other.
TEST(Guess, NamesAnotherMessageWhereOneDifferenceMakesIt) {
    size_t told = 0;
    for_each_message([&](const tlvmsg_type &message) {
        const Bytes bytes = sample(message);
        for (const auto &each : guesses(bytes, 0)) {
            if (each.other == nullptr || each.offset != 0) {
                continue;
            }
            Bytes changed = bytes;
            bool fits = false;
            for (size_t bit = 0; bit < 16 && !fits; ++bit) {
                changed = bytes;
                changed[each.other_offset + bit / 8] ^= static_cast<uint8_t>(1 << bit % 8);
                fits =
                    tlvmsg_judge(each.other, changed.data(), changed.size(), nullptr, nullptr) == TLVMSG_FITS;
            }
            EXPECT_TRUE(fits) << message.name;
            ++told;
        }
    });
    EXPECT_GT(told, 0u);
}

// ---- Divisions ----

// What resynchronising asks: no beginning of messages is refused, and of other bytes only what says so by its first header.
TEST(Divide, FitsBodiesOfMessagesAsFarAsTheyHaveCome) {
    const tlvmsg_type *const led = tlvmsg_type_find("analogbri_led_control_req_message");
    const tlvmsg_type *const fan = tlvmsg_type_find("zel_led_control");
    tlvmsg_type_set *const none = tlvmsg_type_set_new(&fan, 1, nullptr);
    Bytes body = sample(*led);
    const Bytes more = sample(*tlvmsg_type_find("zel_tib_vlan_stats_message"));
    body.insert(body.end(), more.begin(), more.end());
    for (size_t there = 0; there <= body.size(); ++there) {
        EXPECT_TRUE(tlvmsg_fits_messages(nullptr, body.data(), there, body.size())) << there;
        const Bytes whole(body.begin(), body.begin() + static_cast<ptrdiff_t>(there));
        EXPECT_EQ(tlvmsg_fits_messages(nullptr, body.data(), there, there), !divided(whole).empty());
        EXPECT_EQ(tlvmsg_fits_messages(none, body.data(), there, body.size()), there < 2);
    }
    EXPECT_FALSE(tlvmsg_fits_messages(nullptr, body.data() + 1, 4, 100) ||
                 tlvmsg_fits_messages(nullptr, body.data(), 4, 47) ||
                 tlvmsg_fits_messages(nullptr, body.data(), 0, 3) ||
                 tlvmsg_fits_messages(nullptr, nullptr, 4, 4));
    tlvmsg_type_set_free(none);
}

TEST(Divide, TellsHowMessagesLieBackToBack) {
    for_each_message([](const tlvmsg_type &message) {
        const Bytes bytes = sample(message);
        const Parts once = divided(bytes);
        ASSERT_EQ(once.size(), 1u) << message.name;
        EXPECT_EQ(once[0].size, bytes.size());
        EXPECT_TRUE(once[0].has(message)) << message.name;
        const Parts twice = divided(bytes + bytes);
        ASSERT_EQ(twice.size(), 2u) << message.name;
        EXPECT_EQ(twice[1].offset, bytes.size());
        EXPECT_EQ(twice[0].names, once[0].names);
        EXPECT_EQ(twice[1].names, once[0].names);
    });
}

TEST(Divide, TakesNoMessageThatIsNotWhole) {
    for_each_message([](const tlvmsg_type &message) {
        const Bytes whole = sample(message);
        std::set<size_t> ends{0};
        for (size_t at = 0; at < whole.size();) {
            ends.insert(at += 4 + (size_t{whole[at + 2]} << 8 | whole[at + 3]));
        }
        for (size_t size = 0; size < whole.size(); size += 1 + whole.size() / 64) {
            const Bytes cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size));
            EXPECT_TRUE(ends.count(size) == 1 || divided(cut).empty()) << message.name << " " << size;
        }
        EXPECT_TRUE(divided(whole + hex("00")).empty()) << message.name;
        EXPECT_TRUE(divided(whole + hex("00 04 00 02 00 01")).empty())
            << message.name << " and a bare number";
    });
}

TEST(Divide, FindsNothingInForeignBytes) {
    const Bytes dns =
        hex("12 34 01 00 00 01 00 00 00 00 00 00 07 65 78 61 6D 70 6C 65 03 63 6F 6D 00 00 01 00 01");
    const Bytes tls =
        hex("16 03 01 00 2F 01 00 00 2B 03 03") + repeated(32, hex("A7")) + hex("00 00 02 13 01 01 00");
    const std::string request = "GET / HTTP/1.1\r\nHost: example.com\r\n\r\n";
    const Bytes http(request.begin(), request.end());
    for (const Bytes &foreign :
         {Bytes{}, dns, tls, http, repeated(100, hex("00")), repeated(100, hex("FF"))}) {
        EXPECT_TRUE(divided(foreign).empty()) << foreign;
    }
    std::mt19937_64 random(1);
    for (int i = 0; i < 20'000; ++i) {
        Bytes bytes(static_cast<size_t>(random() % 1500));
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<uint8_t>(random()); });
        EXPECT_TRUE(divided(bytes).empty()) << bytes;
    }
}

// Messages of structures a, b and c. Two that lie back to back may be divided at more than one place.
TEST(Divide, NamesAllThatMayBeginWhereDivisionsDisagree) {
    std::vector<tlvmsg_member> members;
    std::vector<Bytes> bytes;
    for (const char *name : {"ifid", "zel_led_control", "zel_mac_addr"}) {
        members.push_back({name, "", tlvmsg_type_find(name), 0, 0});
        bytes.push_back(sample(*members.back().type));
    }
    const auto message = [&](const char *name, size_t first, uint32_t count) {
        tlvmsg_type type = *tlvmsg_type_find("analogbri_led_control_req_message");
        type.name = name;
        type.operations = nullptr;
        type.members = &members[first];
        type.member_count = count;
        return type;
    };
    const tlvmsg_type types[] = {message("a", 0, 1), message("ab", 0, 2), message("bc", 1, 2),
                                 message("c", 2, 1), message("c_too", 2, 1)};
    const tlvmsg_type *const pointers[] = {&types[0], &types[1], &types[2], &types[3], &types[4]};
    tlvmsg_type_set *const set = tlvmsg_type_set_new(pointers, std::size(pointers), nullptr);
    ASSERT_NE(set, nullptr);
    const auto &[a, b, c] = std::tie(bytes[0], bytes[1], bytes[2]);
    const auto expect = [&](const Bytes &whole, const std::vector<std::pair<Bytes, Names>> &expected) {
        const Parts parts = divided(whole, set);
        ASSERT_EQ(parts.size(), expected.size());
        for (size_t i = 0; i < parts.size(); ++i) {
            EXPECT_EQ(parts[i].size, expected[i].first.size());
            EXPECT_EQ(parts[i].names, expected[i].second);
        }
    };
    expect(a + b, {{a + b, {"ab"}}});
    expect(a + b + c, {{a + b + c, {"a", "ab"}}}); // ab and c, or a and bc
    expect(a + a + b + c + c, {{a, {"a"}}, {a + b + c, {"a", "ab"}}, {c, {"c", "c_too"}}});
    expect(b, {});
    tlvmsg_type_set_free(set);
}

// Messages of a session header alone.
TEST(Divide, GoesByTheKeysThatMessagesHave) {
    const tlvmsg_member header{"session", "", tlvmsg_type_find("app_sess_hdr"), 0, 0};
    std::vector<tlvmsg_type> types(6, *tlvmsg_type_find("analogbri_led_control_req_message"));
    std::vector<const tlvmsg_type *> pointers;
    for (size_t i = 0; i < types.size(); ++i) {
        constexpr const char *names[] = {"a", "b", "plain", "plain_too", "x", "y"};
        constexpr uint32_t keys[] = {17, 18, 0, 0, 19, 19};
        types[i].name = names[i];
        types[i].members = &header;
        types[i].member_count = 1;
        types[i].operations = nullptr;
        types[i].key = keys[i];
        types[i].flags = keys[i] == 0 ? 0 : TLVMSG_HAS_KEY;
        pointers.push_back(&types[i]);
    }
    tlvmsg_type_set *const set = tlvmsg_type_set_new(pointers.data(), pointers.size(), nullptr);
    ASSERT_NE(set, nullptr);
    const Bytes bytes = sample(*header.type);
    const Bytes keyless(bytes.begin(), bytes.end() - 4);
    const std::map<std::string, Names> expected{{"00 00 00 11", {"a"}},
                                                {"00 00 00 12", {"b"}},
                                                {"00 00 00 13", {"plain", "plain_too", "x", "y"}},
                                                {"00 01 00 11", {"plain", "plain_too"}}};
    for (const auto &[key, names] : expected) {
        const Parts parts = divided(keyless + hex("00 00 00 12") + keyless + hex(key), set);
        ASSERT_EQ(parts.size(), 2u);
        EXPECT_EQ(parts[0].names, Names{"b"});
        EXPECT_EQ(parts[1].names, names) << key;
    }
    tlvmsg_type_set_free(set);
}

} // namespace

} // namespace tlvmsg_test
