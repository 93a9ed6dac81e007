/*
 * The message in a captured frame.
 *
 * In Ethernet, Linux cooked and raw IP frames it begins behind the UDP or TCP header, or behind the innermost
 * header before one that is not known; IP's length ends it. In exported PDUs it begins behind their tags. In
 * frames of all other link types it is the whole frame. Fragments and TCP segments are not put together.
 */
#pragma once

#include <cstdint>
#include <span>

namespace tlvmsg::tool {

// `link_type` as in capture files. Empty when the headers do not fit into the frame.
std::span<const uint8_t> payload_of(int link_type, std::span<const uint8_t> frame);

} // namespace tlvmsg::tool
