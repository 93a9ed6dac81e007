// What bytes may be: candidates by their tags, ordered by how much of the bytes they explain.
#include "forms/border/listed.h"
#include "forms/types/type_index.h"

#include <tlvmsg/forms/guess.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <tuple>
#include <utility>

namespace tlvmsg::forms {

namespace {

// A message before its parts, and what has a tag of its own before what many begin like.
int rank(const tlvmsg_type *type) {
    constexpr tlvmsg_kind order[] = {TLVMSG_MESSAGE, TLVMSG_STRUCTURE, TLVMSG_ENUMERATION};
    const auto *const found = std::find(std::begin(order), std::end(order), type->kind);
    return static_cast<int>(found - order) + (type->kind == TLVMSG_SCALAR ? 1 : 0);
}

using Guess = Listed<tlvmsg_guess>;

struct Candidate : Guess {
    bool named = false; // by a key that only this message has
};

bool takes_all(const tlvmsg_guess &guess) { return guess.verdict.fit == TLVMSG_FITS && guess.offset == 0; }

// Smaller is better.
auto worth(const Candidate &guess) {
    const tlvmsg_verdict &verdict = guess.entry.verdict;
    return std::tuple(SIZE_MAX - guess.entry.understood, !takes_all(guess.entry), !guess.named,
                      rank(verdict.type), verdict.fit == TLVMSG_FITS_NOT, guess.entry.offset,
                      verdict.extent.deviations);
}

// All that a verdict says but for members' names.
auto identity(const Candidate &guess) {
    const tlvmsg_verdict &verdict = guess.entry.verdict;
    return std::tuple(worth(guess), verdict.extent.consumed, verdict.fault.code, verdict.fault.offset,
                      verdict.fault.allowed);
}

using Identity = decltype(identity({}));

class Guesser {
public:
    Guesser(const tlvmsg_type_set &set, Bytes bytes, const tlvmsg_guess_options &options)
        : set_(set), bytes_(bytes), options_(options) {}

    // Best first, and no more of those that do not take all bytes than wanted.
    std::vector<Guess> best() {
        find();
        std::vector<Candidate> guesses;
        for (auto &[identity, guess] : found_) {
            guesses.push_back(std::move(guess));
        }
        std::stable_sort(guesses.begin(), guesses.end(), [](const Candidate &a, const Candidate &b) {
            return std::tuple(worth(a), b.types.size()) < std::tuple(worth(b), a.types.size());
        });
        size_t left = options_.most;
        std::erase_if(guesses, [&](const Candidate &each) {
            const bool wanted = takes_all(each.entry) || left > 0;
            left -= wanted && !takes_all(each.entry) ? 1 : 0;
            return !wanted;
        });
        for (Candidate &each : guesses) {
            std::sort(each.types.begin(), each.types.end(), name_before);
            each.entry = of_type(each.types.front(), each.entry.offset);
        }
        return {guesses.begin(), guesses.end()};
    }

private:
    void find() {
        for (const tlvmsg_type *const &element : set_.beginning_like(bytes_)) {
            add({&element, 1}, 0);
        }
        add_messages(0);
        if (options_.search) {
            search();
        }
    }

    // Other offsets, and of these where most is understood. Only there messages are judged, since decoders may look
    // far ahead.
    void search() {
        std::vector<std::pair<size_t, size_t>>
            places; // what is not understood, and the offset: smaller is better
        for (size_t at = 0; at < bytes_.size();) {
            const size_t sense = most_understood(bytes_.subspan(at));
            const bool by_chance = sense <= header_size;
            if (at > 0 && !by_chance) {
                places.emplace_back(SIZE_MAX - sense, at);
            }
            at += by_chance ? 1 : sense;
        }
        std::sort(places.begin(), places.end());
        for (size_t i = 0; i < std::min(places.size(), options_.most); ++i) {
            add_messages(places[i].second);
        }
    }

    // How many bytes are understood by the message type that takes the most of them.
    size_t most_understood(Bytes bytes) const {
        size_t most = 0;
        set_.follow_messages(bytes, [&](Types alike, uint32_t /*matched*/, size_t /*end*/) {
            most = std::max(most, understood(alike.front(), bytes));
        });
        return most;
    }

    void add_messages(size_t offset) {
        set_.follow_messages(bytes_.subspan(offset), [&](Types alike, uint32_t matched, size_t /*end*/) {
            const auto next = [&](const tlvmsg_type *type) {
                return type->member_count == matched ? nullptr : type->members[matched].type;
            };
            while (!alike.empty()) { // those that miss the same
                const auto same = std::partition_point(alike.begin(), alike.end(), [&](const auto *type) {
                    return next(type) == next(alike.front());
                });
                add_by_keys({alike.begin(), same}, offset);
                alike = {same, alike.end()};
            }
        });
    }

    // Without those whose key the bytes do not have; the message that their key names is a guess of its own.
    void add_by_keys(Types types, size_t offset) {
        std::vector<const tlvmsg_type *> others;
        for (const tlvmsg_type *const &type : types) {
            const Key key = set_.key_in(bytes_.subspan(offset), type);
            if (key == Key::alone) {
                add({&type, 1}, offset, true);
            } else if (key != Key::other) {
                others.push_back(type);
            }
        }
        if (!others.empty()) {
            add(others, offset);
        }
    }

    // A guess for all of these types: the same is to be said of each.
    void add(Types types, size_t offset, bool named = false) {
        const Candidate guess{{of_type(types.front(), offset), {}}, named};
        std::vector<const tlvmsg_type *> &all =
            found_.try_emplace(identity(guess), guess).first->second.types;
        all.insert(all.end(), types.begin(), types.end());
    }

    tlvmsg_guess of_type(const tlvmsg_type *type, size_t offset) const {
        const Bytes rest = bytes_.subspan(offset);
        tlvmsg_guess guess{};
        guess.offset = offset;
        guess.understood = understood(type, rest);
        tlvmsg_judge(type, rest.data(), rest.size(), nullptr, &guess.verdict);
        return guess;
    }

    const tlvmsg_type_set &set_;
    Bytes bytes_;
    tlvmsg_guess_options options_;
    std::map<Identity, Candidate> found_;
};

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_guess_types(const tlvmsg_type_set *set, const uint8_t *in, size_t in_len,
                        const tlvmsg_guess_options *options, tlvmsg_guess **guesses, size_t *count,
                        tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    Call call(fault);
    return hand_out_list(
        call.takes("options", options), in, in_len, guesses, "guesses", count, [&](Bytes bytes) {
            const tlvmsg_guess_options wanted = options != nullptr ? *options : tlvmsg_guess_options{};
            return Guesser(tlvmsg_type_set::chosen(set), bytes, wanted).best();
        });
}
