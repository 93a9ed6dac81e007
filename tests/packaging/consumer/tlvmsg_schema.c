/* What a C program needs for types that it loads: a schema that imports the library's, whose directory may be told. */
#include <string.h>
#include <tlvmsg/forms.h>
#include <tlvmsg/schema.h>

int main(int argc, char **argv) {
    static const char text[] = "import \"voice/analogbri.tlv\"\nmessage acme_led { zel_led_control led }";
    const tlvmsg_schema_source source = {
        "acme/led.tlv", argc > 1 ? text : "message a { b c }", argc > 1 ? sizeof text - 1 : 17, {0}};
    const tlvmsg_schema_options options = {NULL, 0, argc > 1 ? argv[1] : NULL, false, {0}};
    tlvmsg_schema *schema;
    size_t count;
    const bool done = tlvmsg_schema_load(&source, 1, &options, &schema);
    const bool found = tlvmsg_type_set_find(tlvmsg_schema_types(schema), "acme_led") != NULL;
    tlvmsg_schema_faults(schema, &count);
    tlvmsg_schema_free(schema);
    return done == (argc > 1) && found == done && count == (done ? 0 : 1) ? 0 : 1;
}
