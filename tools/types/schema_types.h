/*
 * Types of schema files that nobody compiled into a library: descriptors made when the program runs, for records
 * as this machine's C compiler would lay them out. Whatever works from descriptors takes them like built-in ones.
 */
#pragma once

#include <tlvmsg/types.h>

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tlvc {
struct Schema;
}

namespace tlvmsg::tool {

class SchemaTypes {
public:
    // Takes the types of these files, or of all in these directories, and of what they import. Throws Failure: exit_io for a file that cannot be read, and
    // exit_usage, once its faults are on standard error, for one that is no schema.
    explicit SchemaTypes(const std::vector<std::string> &files,
                         const std::vector<std::string> &import_path = {});
    ~SchemaTypes();
    SchemaTypes(const SchemaTypes &) = delete;
    SchemaTypes &operator=(const SchemaTypes &) = delete;

    // By name, the scalars among them; they live as long as this does.
    const std::vector<const tlvmsg_type *> &all() const { return by_name_; }

private:
    class Builder;

    std::unique_ptr<const tlvc::Schema> schema_;
    std::deque<std::string> texts_; // what descriptors' names refer to
    std::deque<tlvmsg_type> types_;
    std::deque<std::vector<tlvmsg_member>> members_;
    std::deque<std::vector<tlvmsg_alternative>> alternatives_;
    std::deque<std::vector<tlvmsg_enumerator>> enumerators_;
    std::vector<const tlvmsg_type *> by_name_;
};

} // namespace tlvmsg::tool
