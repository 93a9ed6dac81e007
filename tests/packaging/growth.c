/*
 * growth.c [understood] - hands every function that takes a structure of the caller's one whose first reserved word is
 * zero, and one where it is not. The library refuses the second, unless the word has a meaning there. What comes out
 * has zeros.
 */
#include <tlvmsg/bounded/all.h>
#include <tlvmsg/dispatch.h>
#include <tlvmsg/forms.h>
#include <tlvmsg/frames.h>
#include <tlvmsg/schema.h>

#include <stdio.h>
#include <string.h>

#ifdef MEANING /* of headers that have one for it */
#define WORD meaning
#else
#define WORD reserved[0]
#endif

static bool understood;
static int failures;
static tlvmsg_fault fault;
static tlvmsg_text_fault text_fault;

static void expect(bool right, const char *what) {
    if (!right) {
        printf("%s\n", what);
        ++failures;
    }
}

static bool ignore(void *context, const char *text, size_t length) {
    (void)context, (void)text, (void)length;
    return true;
}

static void count(void *context, const tlvmsg_place *place, uint64_t value) {
    (void)place, (void)value;
    ++*(int *)context;
}

static const uint8_t *wire;
static size_t size;
static zel_led_control led;

/* ---- What goes in: WORD is 0, then 1 ------------------------------------------------------------------ */

#define LED tlvmsg_descriptor_zel_led_control()
#define TAKES(NAME, OPTIONS, CALL)                                                                           \
    static bool NAME(uintptr_t word) {                                                                       \
        const OPTIONS options = {.WORD = word};                                                              \
        return CALL;                                                                                         \
    }

static zel_led_control back;
static uint8_t frame[64];
static char *text;
static tlvmsg_guess *guesses;
static tlvmsg_verdict verdict;
static size_t found;

static bool walk(uintptr_t word) {
    const tlvmsg_visitor visitor = {.number = count, .WORD = word};
    int visited = 0;
    tlvmsg_walk(LED, &led, &visitor, &visited);
    fault.code = visited > 0 ? TLVMSG_OK : TLVMSG_RESERVED_WORD;
    return visited > 0;
}

static bool take(void *context, void *record, const tlvmsg_arrival *arrival) {
    (void)context, (void)record, (void)arrival;
    return true;
}

static bool refuse(void *context, const tlvmsg_arrival *arrival, const tlvmsg_fault *why) {
    (void)context, (void)arrival;
    fault = *why;
    return false;
}

static bool dispatch(uintptr_t word) {
    const tlvmsg_route route = {.key = 1, .type = tlvmsg_descriptor_zel_led_control, .handle = take};
    const tlvmsg_dispatch_options options = {
        .room = &back, .room_size = sizeof back, .refused = refuse, .WORD = word};
    return tlvmsg_dispatch(&route, 1, 1, wire, size, &options, NULL);
}

static bool check_route(uintptr_t word) {
    const tlvmsg_route route = {
        .key = 1, .type = tlvmsg_descriptor_zel_led_control, .handle = take, .WORD = word};
    return tlvmsg_check_routes(&route, 1, NULL, &fault);
}

static bool fits(const tlvmsg_limits *limits) {
    const tlvmsg_fit fit = tlvmsg_judge(LED, wire, size, limits, &verdict);
    fault = verdict.fault;
    return fit == TLVMSG_FITS;
}

static bool freed(bool done) {
    tlvmsg_free(text);
    tlvmsg_free(guesses);
    text = NULL;
    guesses = NULL;
    return done;
}

static bool loads(tlvmsg_schema_source source, const tlvmsg_schema_options *options) {
    source.path = "growth/a.tlv";
    source.text = "";
    tlvmsg_schema *schema;
    const bool loaded = tlvmsg_schema_load(&source, 1, options, &schema);
    if (!loaded && strcmp(tlvmsg_schema_faults(schema, NULL)->code, "reserved-word") == 0) {
        text_fault.code = TLVMSG_TEXT_RESERVED_WORD;
    }
    tlvmsg_schema_free(schema);
    return loaded;
}

TAKES(verify, tlvmsg_limits, tlvmsg_verify_zel_led_control(wire, size, &options, NULL, &fault))
TAKES(trace, tlvmsg_limits, tlvmsg_trace(LED, wire, size, &options, NULL, NULL, NULL, &fault))
TAKES(decode, tlvmsg_limits, tlvmsg_decode_zel_led_control(wire, size, &options, &back, NULL, &fault))
TAKES(judge, tlvmsg_limits, fits(&options))
TAKES(from_json, tlvmsg_limits, tlvmsg_from_json(LED, "{}", 2, &options, &back, &text_fault))
TAKES(to_json, tlvmsg_json_options, freed(tlvmsg_to_json(LED, &led, &options, &text, NULL, &text_fault)))
TAKES(untyped_to_json, tlvmsg_json_options,
      tlvmsg_untyped_to_json(NULL, wire, size, &options, ignore, NULL, NULL, &text_fault))
TAKES(to_text, tlvmsg_text_options, tlvmsg_to_text(LED, &led, &options, ignore, NULL, &text_fault))
TAKES(untyped_to_text, tlvmsg_text_options,
      tlvmsg_untyped_to_text(NULL, wire, size, &options, ignore, NULL, NULL, &text_fault))
TAKES(annotate, tlvmsg_text_options,
      tlvmsg_annotate(NULL, NULL, wire, size, &options, ignore, NULL, NULL, &text_fault))
TAKES(sample, tlvmsg_sample_options, tlvmsg_sample(LED, &options, &back, &text_fault))
TAKES(guess, tlvmsg_guess_options,
      freed(tlvmsg_guess_types(NULL, wire, size, &options, &guesses, &found, &text_fault)))

TAKES(encode_frame, tlvmsg_framing,
      tlvmsg_frame_encode(&options, LED, &led, frame, sizeof frame, NULL, &fault))

TAKES(load_source, tlvmsg_schema_source, loads(options, NULL))
TAKES(load_options, tlvmsg_schema_options, loads((tlvmsg_schema_source){0}, &options))

static const struct {
    const char *name;
    bool (*call)(uintptr_t word);
    bool of_forms; /* whose structures keep to the headers of this library */
} calls[] = {{"walk", walk, false},
             {"verify", verify, false},
             {"trace", trace, false},
             {"decode", decode, false},
             {"dispatch", dispatch, false},
             {"check_route", check_route, false},
             {"judge", judge, false},
             {"encode_frame", encode_frame, false},
             {"from_json", from_json, true},
             {"to_json", to_json, true},
             {"untyped_to_json", untyped_to_json, true},
             {"to_text", to_text, true},
             {"untyped_to_text", untyped_to_text, true},
             {"annotate", annotate, true},
             {"sample", sample, true},
             {"guess", guess, true},
             {"load_source", load_source, true},
             {"load_options", load_options, true}};

static void check_what_goes_in(void) {
    for (size_t i = 0; i < sizeof calls / sizeof *calls; ++i) {
        expect(calls[i].call(0), calls[i].name);
        fault.code = TLVMSG_OK;
        text_fault.code = TLVMSG_TEXT_OK;
        const bool refused =
            !calls[i].call(1) && (calls[i].of_forms ? text_fault.code == TLVMSG_TEXT_RESERVED_WORD
                                                    : fault.code == TLVMSG_RESERVED_WORD);
        expect(refused != (understood && !calls[i].of_forms), calls[i].name);
    }
}

/* ---- What comes out: whatever was there before, WORD is 0 --------------------------------------------- */

static void check_what_comes_out(void) {
    const tlvmsg_type *const type = LED;
    struct {
        tlvmsg_extent extent;
        tlvmsg_fault fault;
        tlvmsg_verdict verdict;
        tlvmsg_text_fault text_fault;
    } out;
    memset(&out, 0xFF, sizeof out);
    expect(tlvmsg_verify(type, wire, size, NULL, &out.extent, NULL) && out.extent.WORD == 0, "extent");
    memset(&out, 0xFF, sizeof out);
    expect(!tlvmsg_verify(type, wire, 20, NULL, &out.extent, &out.fault) && out.extent.WORD == 0 &&
               out.fault.WORD == 0,
           "fault");
    memset(&out, 0xFF, sizeof out);
    tlvmsg_judge(type, wire, size, NULL, &out.verdict);
    expect(out.verdict.WORD == 0 && out.verdict.extent.WORD == 0, "verdict");
    expect(!tlvmsg_from_json(type, "[", 1, NULL, &back, &out.text_fault) && out.text_fault.WORD == 0,
           "text fault");
    memset(&out, 0xFF, sizeof out);
    expect(!tlvmsg_from_json(NULL, "{}", 2, NULL, &back, &out.text_fault) && out.text_fault.WORD == 0,
           "text fault of a null argument");

    expect(tlvmsg_guess_types(NULL, wire, size, NULL, &guesses, &found, NULL) && found > 0 &&
               guesses[0].WORD == 0,
           "guess");
    tlvmsg_free(guesses);
    analogbri_led_control_req_message message;
    memset(&message, 0, sizeof message);
    size_t message_size;
    uint8_t *const bytes =
        tlvmsg_encode_alloc_analogbri_led_control_req_message(&message, &message_size, NULL);
    tlvmsg_part *parts;
    expect(tlvmsg_divide(NULL, bytes, message_size, &parts, &found, NULL) && found > 0 && parts[0].WORD == 0,
           "part");
    tlvmsg_free(parts);
    tlvmsg_free(bytes);
    const zel_led_control other = {.color = 9};
    tlvmsg_difference *differences;
    expect(tlvmsg_diff(type, &led, &other, &differences, &found, NULL) && found == 1 &&
               differences[0].WORD == 0,
           "difference");
    tlvmsg_free(differences);
    tlvmsg_hex_message *messages;
    expect(tlvmsg_read_hex("054D 0018", 9, &messages, &found, NULL) && found == 1 && messages[0].WORD == 0,
           "hex message");
    tlvmsg_free(messages);
}

int main(int argc, char **argv) {
    understood = argc > 1 && strcmp(argv[1], "understood") == 0;
    uint8_t *const encoded = tlvmsg_encode_alloc_zel_led_control(&led, &size, NULL);
    wire = encoded;
    check_what_goes_in();
    if (!understood) {
        check_what_comes_out();
    }
    tlvmsg_free(encoded);
    return failures > 0;
}
