#include "schema_library/descriptors.h"

#include "base/visible.h"
#include "compiler/model/attributes.h"
#include "compiler/model/layout.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

namespace tlvmsg::schema {

namespace {

static_assert(tlvc::kinds == TLVMSG_UNION + 1, "the compiler has the kinds of descriptors");

uint32_t flags_of(const tlvc::Attributes &attributes) {
    uint32_t flags = 0;
    for (const tlvc::Attribute *each : attributes) {
        flags |= each->flag;
    }
    return flags;
}

// The structure that has the union's fields.
const tlvc::Type &record_of(const tlvc::Type &type) { return type.enclosing ? *type.enclosing : type; }

} // namespace

// Fills the descriptors, each of which has its place before any refers to it.
class Descriptors::Builder {
public:
    Builder(const tlvc::Schema &schema, Descriptors &result) : result_(result) {
        for (const tlvc::Type &type : schema.types) {
            descriptors_[&type] = &result.types_.emplace_back();
        }
    }

    void build() {
        for (const auto &[type, descriptor] : descriptors_) {
            fill(*type, *descriptor);
            result_.all_.push_back(descriptor);
        }
    }

private:
    void fill(const tlvc::Type &type, tlvmsg_type &descriptor) {
        const tlvc::RecordLayout &layout = layouts_.of(type);
        descriptor.name = type.name.c_str();
        descriptor.family = type.family != nullptr ? type.family->name.c_str() : "";
        descriptor.section = type.section != nullptr ? text(type.section->doc) : "";
        descriptor.doc = text(type.doc);
        descriptor.kind = static_cast<tlvmsg_kind>(type.kind);
        descriptor.tag = type.tag;
        descriptor.flags = tlvc::is_signed(type) ? TLVMSG_SIGNED : type.key ? TLVMSG_HAS_KEY : 0;
        descriptor.key = type.key.value_or(0);
        descriptor.size = static_cast<uint32_t>(layout.size);
        descriptor.alignment = static_cast<uint32_t>(layout.alignment);
        descriptor.min_encoded = static_cast<uint32_t>(type.min_size);
        descriptor.max_encoded = static_cast<uint32_t>(type.max_size);
        descriptor.fingerprint = type.fingerprint;
        fill_enumerators(type, descriptor);
        fill_members(type, descriptor);
        if (tlvc::is_array(type)) {
            descriptor.element = descriptors_.at(type.element);
            descriptor.capacity = type.capacity;
            descriptor.count_width = type.count->scalar->width;
            descriptor.items_offset = static_cast<uint32_t>(layout.offsets.back());
        }
        if (type.kind == tlvc::Kind::Union) {
            fill_union(type, descriptor);
        }
    }

    void fill_enumerators(const tlvc::Type &type, tlvmsg_type &descriptor) {
        auto &table = result_.enumerators_.emplace_back();
        for (const tlvc::Enumerator &each : type.enumerators) {
            table.push_back({each.name.c_str(), text(each.doc), each.value, 0});
        }
        descriptor.enumerators = table.empty() ? nullptr : table.data();
        descriptor.enumerator_count = static_cast<uint32_t>(table.size());
    }

    void fill_members(const tlvc::Type &type, tlvmsg_type &descriptor) {
        auto &table = result_.members_.emplace_back();
        for (const tlvc::Member &member : type.members) {
            uint32_t flags = flags_of(member.attributes);
            if (member.lives_in_next()) {
                flags |= TLVMSG_SHARED_WITH_NEXT;
            }
            table.push_back({keep(tlvc::joined(member.path)), text(member.doc), descriptors_.at(member.type),
                             offset_of(type, member.path), flags});
        }
        descriptor.members = table.empty() ? nullptr : table.data();
        descriptor.member_count = static_cast<uint32_t>(table.size());
    }

    void fill_union(const tlvc::Type &type, tlvmsg_type &descriptor) {
        const tlvc::Type &record = record_of(type);
        auto &table = result_.alternatives_.emplace_back();
        for (const tlvc::Alternative &each : type.alternatives) {
            table.push_back({each.name.c_str(), descriptors_.at(each.type), each.values.data(),
                             static_cast<uint32_t>(each.values.size()), offset_of_alternatives(record, type),
                             flags_of(each.attributes), 0});
        }
        descriptor.alternatives = table.data();
        descriptor.alternative_count = static_cast<uint32_t>(table.size());
        descriptor.selector = descriptors_.at(type.selector);
        descriptor.selector_name = type.selector_name.c_str();
        descriptor.selector_offset = offset_of(record, {type.selector_name});
    }

    uint32_t offset_of(const tlvc::Type &record, const std::vector<std::string> &path) {
        return static_cast<uint32_t>(layouts_.offset(record, path));
    }

    uint32_t offset_of_alternatives(const tlvc::Type &record, const tlvc::Type &type) {
        const auto field =
            std::find_if(record.fields.begin(), record.fields.end(), [&](const tlvc::Field &each) {
                return each.storage == tlvc::Field::Storage::Alternatives && each.type == &type;
            });
        return static_cast<uint32_t>(
            layouts_.of(record).offsets[static_cast<size_t>(field - record.fields.begin())]);
    }

    const char *keep(std::string text) { return result_.texts_.emplace_back(std::move(text)).c_str(); }
    const char *text(const tlvc::Doc &lines) {
        return keep(base::visible(fmt::format("{}", fmt::join(lines, " "))));
    }

    Descriptors &result_;
    std::map<const tlvc::Type *, tlvmsg_type *> descriptors_;
    tlvc::Layouts layouts_{tlvc::native};
};

Descriptors::Descriptors(const tlvc::Schema &schema) { Builder(schema, *this).build(); }

} // namespace tlvmsg::schema
