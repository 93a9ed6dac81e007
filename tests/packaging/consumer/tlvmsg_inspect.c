/* What a program needs of the bounded library alone: the schema as data, and its own codecs. */
#include <string.h>
#include <tlvmsg/inspect.h>

int main(void) {
    const tlvmsg_type *type = tlvmsg_type_find("zel_led_control");
    uint8_t record[64], wire[64];
    size_t written, consumed;
    memset(record, 0, sizeof record);
    return type != NULL && type->size <= sizeof record &&
                   tlvmsg_encode(type, record, wire, sizeof wire, &written, NULL) && written == 28 &&
                   tlvmsg_decode(type, wire, written, NULL, record, &consumed, NULL) && consumed == written &&
                   !tlvmsg_verify(type, wire, written - 1, NULL, NULL, NULL)
               ? 0
               : 1;
}
