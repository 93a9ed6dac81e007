/*
 * What people know about the messages of a capture, a line each:
 *
 *     udp/9000=zel_led_control        the type on a port
 *     ethertype/0x88B5=ifid           the type behind an Ethernet type; ip/89=TYPE behind IP
 *     msg_type=17=zel_led_control     the type of messages whose session header says so
 *     # a comment
 *
 * The same lines serve `tlv decode --type-of`, its --types FILE and the dissector of `tlv wireshark`. The message
 * type knows more than the port, and is asked first; of two lines about the same, the later holds.
 */
#pragma once

#include "tools/input/packets.h"

#include <tlvmsg/types.h>

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace tlvmsg::tool {

class TypeRules {
public:
    // Throws Failure(exit_usage) that says what is allowed.
    void add(std::string_view line);

    // All lines of a file. Throws base::IoError, too.
    void add_file(const std::string &path);

    // Null when nothing is known.
    const tlvmsg_type *type_for(const FrameFacts &facts, std::span<const uint8_t> payload) const;

private:
    std::map<std::pair<std::string, uint64_t>, const tlvmsg_type *> rules_; // by what stands before the type
};

} // namespace tlvmsg::tool
