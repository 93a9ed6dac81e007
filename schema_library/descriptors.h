// Descriptors of the types of a schema, for records as this machine's C compiler would lay them out. Whatever works from
// descriptors takes them like those that were compiled.
#pragma once

#include <tlvmsg/types.h>

#include <deque>
#include <string>
#include <vector>

namespace tlvc {
struct Schema;
}

namespace tlvmsg::schema {

class Descriptors {
public:
    // Refers to the schema's texts.
    explicit Descriptors(const tlvc::Schema &schema);
    Descriptors(const Descriptors &) = delete;
    Descriptors &operator=(const Descriptors &) = delete;

    // The scalars among them; they live as long as this does.
    const std::vector<const tlvmsg_type *> &all() const { return all_; }

private:
    class Builder;

    std::deque<std::string> texts_; // what descriptors' names refer to
    std::deque<tlvmsg_type> types_;
    std::deque<std::vector<tlvmsg_member>> members_;
    std::deque<std::vector<tlvmsg_alternative>> alternatives_;
    std::deque<std::vector<tlvmsg_enumerator>> enumerators_;
    std::vector<const tlvmsg_type *> all_;
};

} // namespace tlvmsg::schema
