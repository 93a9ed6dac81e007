// Records whose fields are set and told by name.
#pragma once

#include "vector_file.h"

#include <deque>
#include <string>
#include <vector>

namespace tlvmsg_test {

// Where the bytes of dynamic byte arrays are kept. The exact encoder sends the record's own bytes from the
// pointer field onward; its decoder leaves a block that the pointer designates.
enum class DynamicBytes { InRecord, InBlock };

class NamedRecord {
public:
    // All zero, with room behind it for the bytes of a dynamic array at its end.
    NamedRecord(const tlvmsg_type &type, DynamicBytes dynamic_bytes);
    NamedRecord(const NamedRecord &) = delete;
    NamedRecord &operator=(const NamedRecord &) = delete;

    // Setting items or bytes of an array sets its count too; a count that is set itself has the last word.
    // Throws VectorFault for a field that the type has not, and a value that the field cannot hold.
    void assign(const std::vector<Assignment> &assignments);

    const uint8_t *data() const { return storage_.data(); }
    uint8_t *data() { return storage_.data(); }

private:
    class Assigner;

    const tlvmsg_type &type_;
    DynamicBytes dynamic_bytes_;
    std::vector<uint8_t> storage_;
    std::deque<std::vector<uint8_t>> blocks_; // that pointers of the record designate
};

// Every field of a record, a line each; of unions the chosen alternative only.
std::string fields_of(const tlvmsg_type &type, const uint8_t *record);

} // namespace tlvmsg_test
