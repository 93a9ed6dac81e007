// Messages back to back: ways through the elements that the bytes consist of.
#include "forms/border/listed.h"
#include "forms/types/type_index.h"

#include <tlvmsg/forms/guess.h>

#include <algorithm>
#include <set>
#include <utility>

namespace tlvmsg::forms {

namespace {

// A message, or several of one shape, up to another place.
struct Step {
    size_t end;
    std::vector<const tlvmsg_type *> types;
    bool named; // by a key that only this message has
};

struct Place {
    size_t offset;
    size_t messages;         // at least, from here to the end; `none` when nothing leads there
    std::vector<Step> steps; // with which so few begin; if any of them is named, those that are
};

constexpr size_t none = SIZE_MAX - 1;

// Every message begins and ends where a top-level element does, and these follow from one another. So the places to
// consider are few, and each is looked at once.
class Division {
public:
    Division(const tlvmsg_type_set &set, Bytes bytes) {
        find_places(bytes);
        if (places_.back().offset == bytes.size()) {
            places_.back().messages = 0;
            for (size_t from = places_.size() - 1; from-- > 0;) {
                find_messages(set, bytes.subspan(places_[from].offset), places_[from]);
            }
        }
    }

    std::vector<Listed<tlvmsg_part>> parts() const {
        std::vector<Listed<tlvmsg_part>> parts;
        if (places_.front().messages != none) {
            for (size_t from = 0; from < places_.size() - 1;) {
                parts.push_back(part(from));
            }
        }
        return parts;
    }

private:
    void find_places(Bytes bytes) {
        places_.push_back({0, none, {}});
        for (size_t size = 0; bytes.size() >= header_size; bytes = bytes.subspan(size)) {
            size = header_size + number_at(bytes, tag_size);
            if (size > bytes.size()) {
                return;
            }
            places_.push_back({places_.back().offset + size, none, {}});
        }
    }

    void find_messages(const tlvmsg_type_set &set, Bytes rest, Place &from) const {
        set.follow_messages(rest, [&](Types alike, uint32_t matched, size_t size) {
            if (matched < alike.front()->member_count || !fits_strictly(alike.front(), rest.first(size))) {
                return;
            }
            const auto end = std::ranges::lower_bound(places_, from.offset + size, {}, &Place::offset);
            Keyed keyed = set.by_key(rest, alike);
            const bool named = !keyed.alone.empty();
            std::vector<const tlvmsg_type *> &types = named ? keyed.alone : keyed.others;
            if (!types.empty()) {
                add({static_cast<size_t>(end - places_.begin()), std::move(types), named}, end->messages + 1,
                    from);
            }
        });
    }

    static void add(Step step, size_t messages, Place &from) {
        const bool named = !from.steps.empty() && from.steps.front().named;
        const auto worth = std::pair(messages, !step.named); // smaller is better
        const auto others = std::pair(from.messages, !named);
        if (worth < others) {
            from.messages = messages;
            from.steps.clear();
        }
        if (worth <= others) {
            from.steps.push_back(std::move(step));
        }
    }

    // From a place that all shortest divisions have in common to the next one. They all have as many messages up to
    // a place, so those that differ go on side by side until one place is left.
    Listed<tlvmsg_part> part(size_t &from) const {
        Listed<tlvmsg_part> part{};
        for (const Step &step : places_[from].steps) {
            part.types.insert(part.types.end(), step.types.begin(), step.types.end());
        }
        std::sort(part.types.begin(), part.types.end(), name_before);
        part.entry.offset = places_[from].offset;
        std::set<size_t> reached{from};
        do {
            std::set<size_t> next;
            for (const size_t place : reached) {
                for (const Step &step : places_[place].steps) {
                    next.insert(step.end);
                }
            }
            reached.swap(next);
        } while (reached.size() > 1);
        from = *reached.begin();
        part.entry.size = places_[from].offset - part.entry.offset;
        return part;
    }

    std::vector<Place> places_;
};

// Whether a message of so many bytes may begin with these, going by its first element's header, as far as it is there.
bool may_begin(const tlvmsg_type_set &set, Bytes bytes, size_t size) {
    if (size < header_size || bytes.size() < tag_size) {
        return size >= header_size;
    }
    const bool has_length = bytes.size() >= header_size;
    return set.has_message_like(bytes) && (!has_length || number_at(bytes, tag_size) <= size - header_size);
}

} // namespace

} // namespace tlvmsg::forms

bool tlvmsg_divide(const tlvmsg_type_set *set, const uint8_t *in, size_t in_len, tlvmsg_part **parts,
                   size_t *count, tlvmsg_text_fault *fault) {
    using namespace tlvmsg::forms;
    Call call(fault);
    return hand_out_list(call, in, in_len, parts, "parts", count,
                         [&](Bytes bytes) { return Division(tlvmsg_type_set::chosen(set), bytes).parts(); });
}

bool tlvmsg_fits_messages(void *context, const uint8_t *body, size_t there, size_t size) {
    using namespace tlvmsg::forms;
    const auto *const set = static_cast<const tlvmsg_type_set *>(context);
    bool fits = false;
    Call(nullptr).reads("body", body, there).run([&] {
        fits = may_begin(tlvmsg_type_set::chosen(set), {body, there}, size);
    });
    if (!fits || there < size) {
        return fits;
    }
    tlvmsg_part *parts = nullptr;
    size_t count = 0;
    tlvmsg_divide(set, body, size, &parts, &count, nullptr);
    tlvmsg_free(parts);
    return count > 0;
}
