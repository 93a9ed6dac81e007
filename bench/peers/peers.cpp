#include "peers.h"

namespace tlvmsg_bench {

void register_protobuf();
void register_nanopb();
void register_flatbuffers();
void register_capnproto();
void register_msgpack();

void register_peers() {
    register_protobuf();
    register_nanopb();
    register_flatbuffers();
    register_capnproto();
    register_msgpack();
}

} // namespace tlvmsg_bench
