// Results that are lists of entries with lists of types: one block each.
#pragma once

#include "forms/border/block.h"
#include "forms/border/call.h"
#include "forms/border/input.h"

#include <tlvmsg/types.h>

#include <algorithm>
#include <vector>

namespace tlvmsg::forms {

template <class Entry>
struct Listed {
    Entry entry; // that is to point to the types
    std::vector<const tlvmsg_type *> types;
};

// Null for none.
template <class Entry>
Entry *block_of(const std::vector<Listed<Entry>> &listed) {
    if (listed.empty()) {
        return nullptr;
    }
    size_t size = listed.size() * sizeof(Entry);
    for (const Listed<Entry> &each : listed) {
        size += each.types.size() * sizeof(const tlvmsg_type *);
    }
    auto *const entries = static_cast<Entry *>(new_block(size));
    auto **types = reinterpret_cast<const tlvmsg_type **>(entries + listed.size());
    for (size_t i = 0; i < listed.size(); ++i) {
        entries[i] = listed[i].entry;
        entries[i].types = types;
        entries[i].type_count = listed[i].types.size();
        types = std::copy(listed[i].types.begin(), listed[i].types.end(), types);
    }
    return entries;
}

// Hands out what `work` lists about a copy of the input.
template <class Entry, class Work>
bool hand_out_list(Call &call, const uint8_t *in, size_t in_len, Entry **entries, const char *name,
                   size_t *count, Work work) {
    return call.hands_out(name, entries).hands_out("count", count).reads("in", in, in_len).run([&] {
        const std::vector<Listed<Entry>> listed = work(copy_of(in, in_len));
        *entries = block_of(listed);
        *count = listed.size();
    });
}

} // namespace tlvmsg::forms
