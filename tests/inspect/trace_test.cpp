// Every byte of an input, explained.
#include "support/hex.h"

#include <tlvmsg/inspect.h>

#include <gtest/gtest.h>

#include <sstream>

namespace tlvmsg_test {

namespace {

const char *const kinds[] = {"header", "value", "count", "bytes", "terminator", "skipped", "deviation"};

void print(void *context, const tlvmsg_piece *piece) {
    auto &out = *static_cast<std::ostringstream *>(context);
    char path[TLVMSG_MAX_PATH];
    tlvmsg_place_path(piece->place, path, sizeof path);
    out << piece->offset << "+" << piece->size << " " << kinds[piece->kind] << " " << path << " " << std::hex
        << piece->value << std::dec;
    if (piece->fault != nullptr) {
        out << " " << tlvmsg_code_name(piece->fault->code) << " " << piece->fault->path;
    }
    out << "\n";
}

std::string traced(const char *type, const Bytes &bytes) {
    std::ostringstream lines;
    tlvmsg_fault fault;
    tlvmsg_trace(tlvmsg_type_find(type), bytes.data(), bytes.size(), nullptr, print, &lines, nullptr, &fault);
    return lines.str() + tlvmsg_code_name(fault.code);
}

TEST(Trace, ExplainsEveryByte) {
    EXPECT_EQ(traced("zel_mac_addr", hex("04 12 00 0D  00 0A 00 09  00 04 00 02 00 02  AA BB 00")),
              "0+4 header zel_mac_addr 412000d\n"
              "4+4 header zel_mac_addr.mac a0009\n"
              "8+4 header zel_mac_addr.mac.count 40002\n"
              "12+2 count zel_mac_addr.mac.count 2\n"
              "14+2 bytes zel_mac_addr.mac 0\n"
              "16+1 terminator zel_mac_addr.mac 0\n"
              "ok");
    EXPECT_EQ(traced("zel_bri_show_contr_resp_reg_array", hex("00 0A 00 0A  00 04 00 02 00 02  00 01 FF FE")),
              "0+4 header zel_bri_show_contr_resp_reg_array a000a\n"
              "4+4 header zel_bri_show_contr_resp_reg_array.count 40002\n"
              "8+2 count zel_bri_show_contr_resp_reg_array.count 2\n"
              "10+2 value zel_bri_show_contr_resp_reg_array[0] 1\n"
              "12+2 value zel_bri_show_contr_resp_reg_array[1] fffe\n"
              "ok");
}

TEST(Trace, ExplainsWhatDecodersPassOver) {
    EXPECT_EQ(traced("zel_led_control", hex("05 4D 00 18  00 04 00 02 00 01  00 04 00 02 00 02  05 52 00 08  "
                                            "00 07 00 04 00 00 00 03")),
              "0+4 header zel_led_control 54d0018\n"
              "4+4 header zel_led_control.slot 40002\n"
              "8+2 value zel_led_control.slot 1\n"
              "10+4 header zel_led_control.port 40002\n"
              "14+2 value zel_led_control.port 2\n"
              "16+4 header zel_led_control.color 5520008\n"
              "20+0 deviation zel_led_control 0 wrong-tag zel_led_control.color\n"
              "20+8 skipped zel_led_control 0\n"
              "ok");
}

} // namespace

} // namespace tlvmsg_test
