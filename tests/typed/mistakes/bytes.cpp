// Refused: no matching function|could not convert|deleted
#include <tlvmsg/common.hpp>

#include <array>
#include <string>

template <class Bytes>
bool is_name(Bytes &&bytes) {
    tlvmsg::owned<if_name> name;
    return tlvmsg::decode<if_name>(bytes) && tlvmsg::verify<if_name>(bytes) &&
           tlvmsg::assign(name->name, bytes);
}

bool bytes(const std::string &text, std::array<char, 3> characters, std::span<const std::byte> rest);

bool bytes(const std::string &text, std::array<char, 3> characters, std::span<const std::byte> rest) {
    static char room[8];
    [[maybe_unused]] static const char constant[] = {1, 2};
    bool all = is_name(text) && is_name(characters) && is_name(rest) && is_name(room) &&
               is_name(std::string_view("x"));
#if MISTAKE == 1
    all = all && tlvmsg::decode<if_name>("x");
#elif MISTAKE == 2
    all = all && tlvmsg::verify<if_name>(constant);
#elif MISTAKE == 3
    all = all && tlvmsg::decode<if_name>(text.c_str());
#elif MISTAKE == 4
    all = all && tlvmsg::decode<if_name>(nullptr);
#elif MISTAKE == 5
    tlvmsg::owned<if_name> name;
    all = all && tlvmsg::assign(name->name, text.c_str());
#elif MISTAKE == 6
    all = all && is_name(std::u16string(u"x"));
#endif
    return all;
}
