// What is wanted of the members of a sample, asked for by path.
#pragma once

#include "forms/border/text_fault.h"

#include <tlvmsg/types.h>

#include <optional>

namespace tlvmsg::forms {

// "path=value", or a path alone.
struct Setting {
    std::string_view path;
    std::optional<std::string_view> value;
    bool used = false;
};

// What is wrong with one is thrown as a fault of the text.
class Settings {
public:
    // A line each.
    explicit Settings(std::string_view text);

    // The last one about this member; null for none.
    const Setting *of(const std::string &path);

    // Which alternative of a union the last one is about that is about any; null for none.
    const tlvmsg_alternative *alternative(const tlvmsg_type *type, const std::string &path) const;

    // How many items an array needs for those that are named.
    uint64_t items(const tlvmsg_type *array, const std::string &path) const;

    // The value, which is JSON, or written more simply.
    void read(const Setting &setting, const tlvmsg_type *type, void *field) const;
    uint64_t read_count(const Setting &setting, const tlvmsg_type *array) const;

    // Throws unless each setting was about a member that there is.
    void check() const;

private:
    [[noreturn]] void fail(tlvmsg_text_code code, std::string_view place, const std::string &path,
                           const std::string &message) const;

    std::string_view text_;
    std::vector<Setting> settings_;
    std::vector<std::string> members_; // that were asked for
};

} // namespace tlvmsg::forms
