// Reads three messages and writes them again, by functions of BOUNDED or EXACT; without either it is an empty program.
// No type is looked up, so that what is linked statically has these three alone.
#include <stddef.h>
#include <stdint.h>

#define EACH(X)                                                                                              \
    X(analogbri_led_control_req_message)                                                                     \
    X(ether_dot3_stats_update_message)                                                                       \
    X(zel_tib_vlan_stats_message)

#if defined BOUNDED
#include <tlvmsg/bounded/ethernet.h>
#include <tlvmsg/bounded/voice.h>

#define ANSWER(T)                                                                                            \
    {                                                                                                        \
        T record;                                                                                            \
        if (tlvmsg_decode_##T(in, size, NULL, &record, NULL, NULL)) {                                        \
            tlvmsg_encode_##T(&record, out, sizeof out, &written, NULL);                                     \
            tlvmsg_release_##T(&record);                                                                     \
        }                                                                                                    \
    }
#elif defined EXACT
#include <tlvmsg/ethernet.h>
#include <tlvmsg/voice.h>

#define ANSWER(T)                                                                                            \
    {                                                                                                        \
        T record;                                                                                            \
        if (decode_tlv_##T(in, &record) && get_tlv_##T##_size(&record) <= sizeof out) {                      \
            written += (size_t)(encode_tlv_##T(&record, out) - out);                                         \
        }                                                                                                    \
    }
#else
#define ANSWER(T)
#endif

static uint8_t out[8192];

int main(int argc, char **argv) {
    const uint8_t *in = (const uint8_t *)argv[0];
    size_t size = (size_t)argc, written = 0;
    EACH(ANSWER)
    return (int)(written + out[0] + in[0] + size);
}
