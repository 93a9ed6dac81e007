// The measured records through other serializers: "row/ROW/encode/PEER" and "row/ROW/decode/PEER". Each does
// the same work: from the plain record to bytes in the caller's buffer; from bytes to every field of the
// plain record, with the block for the bundle's items from the same allocator.
#pragma once

namespace tlvmsg_bench {

void register_peers();

} // namespace tlvmsg_bench
