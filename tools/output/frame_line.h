// What is known about an input, as JSON and as a heading.
#pragma once

#include "json_line.h"

#include "tools/input/input.h"

namespace tlvmsg::tool {

// An object to which more can be added. Of a frame {"frame":7,"time":1700000000.250000000,"source":"10.0.0.1",...},
// with the file before it where there are several; of any other input {"name":"led.bin"}.
JsonLine input_line(const Input &input, bool several);

// Seconds since 1970: "1700000000.250000000".
std::string time_text(const FrameFacts &facts);

// "x.pcap:7, 10.0.0.1:4000 > 10.0.0.2:4001 udp".
std::string frame_heading(const Input &input);

} // namespace tlvmsg::tool
