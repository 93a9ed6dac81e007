// What a C++ program needs of the bounded library: descriptors, and records with blocks of their own.
#include <tlvmsg/common.hpp>

#include <cstdio>

int main() {
    tlvmsg::owned<if_name> name;
    if (!tlvmsg::assign(name->name, "eth0")) {
        return 1;
    }
    const auto bytes = tlvmsg::encode(name);
    const auto back = tlvmsg::decode<if_name>(*bytes, tlvmsg::strict);
    const auto text = tlvmsg::decode<if_name>(std::span(*bytes).first(7)).fault.text();
    std::fprintf(stdout, "%s\n", text.c_str());
    return back && *back == name && &tlvmsg::traits<if_name>::type() == tlvmsg_type_find("if_name") ? 0 : 1;
}
