#include "compiler/model/layout.h"

#include <algorithm>

namespace tlvc {

namespace {

constexpr uint64_t enumeration_width = 4;

// Far above every size that matters, and low enough that no sum or product can wrap.
constexpr uint64_t limit = uint64_t{1} << 40;

uint64_t aligned(uint64_t offset, uint64_t alignment) {
    return (offset + alignment - 1) / alignment * alignment;
}

RecordLayout number(const DataModel &model, uint64_t width) {
    return {width, std::min(width, model.alignment), {}};
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
        const size_t field = fields_of(*type).at(step);
        offset += of(*type).offsets[field];
        type = type->fields[field].type;
    }
    return offset;
}

const Layouts::Names &Layouts::fields_of(const Type &record) {
    const auto [known, is_new] = fields_.try_emplace(&record);
    for (size_t i = 0; is_new && i < record.fields.size(); ++i) {
        const Field &field = record.fields[i];
        if (field.storage != Field::Storage::Alternatives) {
            known->second.emplace(field.name, i);
            continue;
        }
        for (const Alternative &each : field.type->alternatives) {
            known->second.emplace(each.name, i);
        }
    }
    return known->second;
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
        record.size = std::min(limit, record.offsets.back() + layout.size);
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
