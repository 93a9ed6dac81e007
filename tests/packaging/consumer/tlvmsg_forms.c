/* What a C program needs of the library of forms: a record from JSON and back, without a word of C++. */
#include <string.h>
#include <tlvmsg/forms.h>

int main(void) {
    static const char text[] = "{\"slot\":2,\"port\":5,\"color\":3}";
    const tlvmsg_type *type = tlvmsg_type_find("zel_led_control");
    void *record = tlvmsg_allocate(type->size);
    char *written = NULL;
    const int same = tlvmsg_from_json(type, text, sizeof text - 1, NULL, record, NULL) &&
                     tlvmsg_to_json(type, record, NULL, &written, NULL, NULL) && strcmp(written, text) == 0;
    tlvmsg_free(written);
    tlvmsg_free(record);
    return same ? 0 : 1;
}
