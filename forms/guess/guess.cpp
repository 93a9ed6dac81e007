// What bytes may be: candidates by their tags, ordered by how much of the bytes they explain.
#include "forms/border/listed.h"
#include "forms/types/type_index.h"

#include <tlvmsg/forms/guess.h>

#include <algorithm>
#include <bit>
#include <iterator>
#include <map>
#include <optional>
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

// Headers of messages' members, wherever in the bytes they stand.
class Alignment {
public:
    using Worth =
        std::pair<size_t, size_t>; // smaller is better: what is not found of the bytes, and of the message

    Alignment(Types messages, Bytes bytes) : bytes_(bytes) {
        for (const tlvmsg_type *const message : messages) {
            for (uint32_t i = 0; i < message->member_count; ++i) {
                places_.try_emplace(tlvmsg_type_tag_read(message->members[i].type));
            }
        }
        for (size_t at = 0; at + header_size <= bytes.size(); ++at) {
            if (const auto places = places_.find(number_at(bytes, at));
                places != places_.end() && places->second.size() < most_places) {
                places->second.push_back(at);
            }
        }
    }

    // Goes through its members, and takes for each the next header that has the tag and a length.
    Worth of(const tlvmsg_type *message) {
        size_t found = 0;
        size_t missing = 0;
        size_t at = 0;
        size_t claimed = 0; // up to where bytes are counted
        for (uint32_t i = 0; i < message->member_count; ++i) {
            const tlvmsg_type *const member = message->members[i].type;
            const std::vector<size_t> &places = places_.find(tlvmsg_type_tag_read(member))->second;
            const bool expected = claimed + tag_size <= bytes_.size() &&
                                  number_at(bytes_, claimed) == tlvmsg_type_tag_read(member);
            const auto first = std::lower_bound(places.begin(), places.end(), at);
            const auto last = first + std::min(most_looked_at, places.end() - first);
            const auto place =
                expected ? first
                         : std::find_if(first, last, [&](size_t each) { return may_stand(member, each); });
            if (!expected && place == last) {
                missing += member->min_encoded;
                continue;
            }
            const size_t begin = expected ? claimed : *place; // where it belongs its length may be broken
            const Bytes rest = bytes_.subspan(begin);
            const size_t size = may_stand(member, begin) ? size_by_header(member, rest) : member->min_encoded;
            const size_t end = begin + std::min(size, rest.size());
            const size_t own = end - std::max(begin, std::min(claimed, end));
            found += expected ? own : std::min(own, sense(member, begin));
            claimed = std::max(claimed, end);
            at = std::max(begin + header_size, end - std::min(end, most_lost));
        }
        return {SIZE_MAX - found, missing};
    }

private:
    static constexpr size_t most_places = 1 << 14;
    static constexpr std::ptrdiff_t most_looked_at = 64;
    static constexpr size_t most_lost = 8; // bytes of an element, so that the next one begins before its end

    // How much of what stands there the member understands: a header by chance may claim thousands of bytes.
    size_t sense(const tlvmsg_type *member, size_t at) {
        const auto [known, added] = senses_.try_emplace({member, at});
        if (added) {
            known->second = understood(member, bytes_.subspan(at));
        }
        return known->second;
    }

    bool may_stand(const tlvmsg_type *member, size_t at) const {
        if (at + header_size > bytes_.size()) {
            return false;
        }
        const size_t size = header_size + number_at(bytes_, at + tag_size);
        const bool fixed = member->min_encoded == member->max_encoded;
        return fixed ? size == member->min_encoded
                     : size >= member->min_encoded && size <= bytes_.size() - at;
    }

    Bytes bytes_;
    std::map<uint16_t, std::vector<size_t>> places_;
    std::map<std::pair<const tlvmsg_type *, size_t>, size_t> senses_;
};

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
            const size_t understood = each.entry.understood;
            each.entry = of_type(each.types.front(), each.entry.offset);
            each.entry.understood = understood;
            if (takes_all(each.entry) && each.types.front()->kind == TLVMSG_MESSAGE) {
                find_other(each.entry);
            }
        }
        return {guesses.begin(), guesses.end()};
    }

private:
    void find() {
        for (const tlvmsg_type *const &element : set_.beginning_like(bytes_)) {
            add({&element, 1}, 0);
        }
        add_messages(0);
        add_aligned();
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

    // Where no type understands all from the start on, a header there may be broken, or bytes be missing: then messages
    // are told by headers of their members further in.
    void add_aligned() {
        size_t most = 0;
        for (const auto &[identity, guess] : found_) {
            most = std::max(most, guess.entry.understood);
        }
        if (most + 2 * header_size >= bytes_.size()) { // at most the last header is cut
            return;
        }
        Alignment alignment(set_.messages, bytes_);
        std::map<Alignment::Worth, std::vector<const tlvmsg_type *>> best;
        for (const tlvmsg_type *const type : set_.messages) {
            const Alignment::Worth worth = alignment.of(type);
            if (SIZE_MAX - worth.first > most) {
                best[worth].push_back(type);
                if (best.size() > std::max<size_t>(options_.most, 1)) {
                    best.erase(std::prev(best.end()));
                }
            }
        }
        for (const auto &[worth, types] : best) {
            for (const tlvmsg_type *const &type : types) {
                Candidate guess{{of_type(type, 0), {}}};
                guess.entry.understood = SIZE_MAX - worth.first;
                found_.try_emplace(identity(guess), guess).first->second.types.push_back(type);
            }
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

    // The message that its key names is a guess of its own.
    void add_by_keys(Types types, size_t offset) {
        const Keyed keyed = set_.by_key(bytes_.subspan(offset), types);
        for (const tlvmsg_type *const &type : keyed.alone) {
            add({&type, 1}, offset, true);
        }
        if (!keyed.others.empty()) {
            add(keyed.others, offset);
        }
    }

    // The only member in which messages differ.
    static std::optional<uint32_t> difference(const tlvmsg_type *a, const tlvmsg_type *b) {
        std::optional<uint32_t> found;
        for (uint32_t i = 0; i < a->member_count && a->member_count == b->member_count; ++i) {
            if (a->members[i].type != b->members[i].type) {
                if (found) {
                    return std::nullopt;
                }
                found = i;
            }
        }
        return found;
    }

    // Another message that the bytes are but for one tag: where that is likely, as one bit makes the difference, or
    // this message has deviations.
    void find_other(tlvmsg_guess &guess) const {
        for (const tlvmsg_type *const other : set_.messages) {
            const std::optional<uint32_t> member = difference(guess.verdict.type, other);
            if (!member) {
                continue;
            }
            const uint16_t own = tlvmsg_type_tag_read(guess.verdict.type->members[*member].type);
            const uint16_t tag = tlvmsg_type_tag_read(other->members[*member].type);
            const bool bit = std::has_single_bit(static_cast<unsigned>(own ^ tag));
            const size_t at = place_of(*member);
            if (own == tag || (!bit && guess.verdict.extent.deviations == 0) ||
                at + tag_size > bytes_.size()) {
                continue;
            }
            std::vector<uint8_t> changed(bytes_.begin(), bytes_.end());
            changed[at] = static_cast<uint8_t>(tag >> 8);
            changed[at + 1] = static_cast<uint8_t>(tag);
            if (fits_strictly(other, changed)) {
                guess.other = other;
                guess.other_offset = at;
                return;
            }
        }
    }

    // Of the so manyth element.
    size_t place_of(uint32_t count) const {
        size_t at = 0;
        while (count-- > 0 && at + header_size <= bytes_.size()) {
            at += header_size + number_at(bytes_, at + tag_size);
        }
        return at;
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
