#include "compiler/model/layout.h"

#include <algorithm>

namespace tlvc {

namespace {

constexpr uint64_t enumeration_width = 4;

uint64_t aligned(uint64_t offset, uint64_t alignment) {
    return (offset + alignment - 1) / alignment * alignment;
}

RecordLayout number(const DataModel &model, uint64_t width) {
    return {width, std::min(width, model.alignment), {}};
}

bool is_or_holds(const Field &field, const std::string &name) {
    return field.storage == Field::Storage::Alternatives
               ? std::ranges::find(field.type->alternatives, name, &Alternative::name) !=
                     field.type->alternatives.end()
               : field.name == name;
}

} // namespace

const RecordLayout &Layouts::of(const Type &type) {
    const auto known = known_.find(&type);
    return known != known_.end() ? known->second : known_[&type] = lay_out(type);
}

uint64_t Layouts::offset(const Type &record, const std::vector<std::string> &path) {
    uint64_t offset = 0;
    const Type *type = &record;
    for (const std::string &step : path) {
        const auto field =
            std::ranges::find_if(type->fields, [&](const Field &each) { return is_or_holds(each, step); });
        offset += of(*type).offsets[static_cast<size_t>(field - type->fields.begin())];
        type = field->type;
    }
    return offset;
}

RecordLayout Layouts::lay_out(const Type &type) {
    if (is_number(type)) {
        return number(model_, type.scalar != nullptr ? type.scalar->width : enumeration_width);
    }
    if (type.enclosing != nullptr) {
        return of(*type.enclosing);
    }
    RecordLayout record;
    for (const Field &field : type.fields) {
        const RecordLayout layout = of_field(type, field);
        record.offsets.push_back(aligned(record.size, layout.alignment));
        record.size = record.offsets.back() + layout.size;
        record.alignment = std::max(record.alignment, layout.alignment);
    }
    record.size = aligned(record.size, record.alignment);
    return record;
}

RecordLayout Layouts::of_field(const Type &owner, const Field &field) {
    switch (field.storage) {
    case Field::Storage::Plain:
        return of(*field.type);
    case Field::Storage::Array: {
        const RecordLayout &item = of(*field.type);
        return {owner.capacity * item.size, item.alignment, {}};
    }
    case Field::Storage::Pointer:
        return number(model_, model_.pointer);
    case Field::Storage::Alternatives: {
        RecordLayout shared;
        for (const Alternative &alternative : field.type->alternatives) {
            const RecordLayout &each = of(*alternative.type);
            shared.size = std::max(shared.size, each.size);
            shared.alignment = std::max(shared.alignment, each.alignment);
        }
        shared.size = aligned(shared.size, shared.alignment);
        return shared;
    }
    }
    return {};
}

} // namespace tlvc
