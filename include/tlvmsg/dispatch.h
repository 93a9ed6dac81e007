/*
 * dispatch.h - from bytes to the function that takes the message: which message they are, decoded, handled, released.
 *
 * A message does not say which it is. Programs know it by a number, the key, from what surrounds the message or from
 * its session header, and state once which type and function belong to which key:
 *
 *     static bool take_led(void *peer, const analogbri_led_control_req_message *request) {
 *         printf("colour %u of module %s\n", request->led_control.color, (const char *)peer); // colour 3 of module 2
 *         return true;
 *     }
 *     static bool refuse(void *peer, const tlvmsg_arrival *arrival, const tlvmsg_fault *fault) {
 *         char line[TLVMSG_FAULT_TEXT];
 *         tlvmsg_fault_text(fault, line, sizeof line);
 *         puts(line); // error[truncated]: ...led_control: needs 28 bytes, 27 are left at byte 92
 *         return false;
 *     }
 *
 *     #define ROUTES(ROUTE) \
 *         ROUTE(17, analogbri_led_control_req_message, take_led)
 *     TLVMSG_ROUTES(routes, ROUTES)
 *
 *     static bool receive(const uint8_t *packet, size_t size) {
 *         char peer[] = "2";
 *         union routes_room room;
 *         const tlvmsg_dispatch_options options = {.room = &room, .room_size = sizeof room, .refused = refuse};
 *         uint32_t key;
 *         return tlvmsg_session_key(packet, size, &key) &&
 *                tlvmsg_dispatch(routes, routes_count, key, packet, size, &options, peer);
 *     }
 *
 * In C++ there is tlvmsg::dispatcher, in <tlvmsg/tlvmsg_dispatch.hpp>.
 */
#ifndef TLVMSG_DISPATCH_H
#define TLVMSG_DISPATCH_H

#include <tlvmsg/typed.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

/* ---- Which message --------------------------------------------------------------------------------------- */

/*
 * True if the bytes begin with a session header that has a message type; `*key`, which may be null, becomes that number,
 * as tlvmsg_decode would find it. Otherwise false, and `*key` is 0: bytes of the 44 messages of the library, and of
 * whichever of yours, that do not begin with one have to be known by something else. What follows the session header is
 * not looked at.
 *
 * tlvmsg_key_field (types.h) tells where messages of a type have this number, tlvmsg_type_by_key which message has a
 * number as its key.
 *
 * Nothing lies around a message's members, so the first ones can be decoded alone, each by the operations of its own
 * type, before anybody knows the message. `consumed` says where the next one begins:
 *
 *     app_sess_hdr session;
 *     ifid interface;
 *     size_t end;
 *     if (tlvmsg_decode_app_sess_hdr(packet, packet_len, NULL, &session, &end, NULL) &&
 *         tlvmsg_decode_ifid(packet + end, packet_len - end, NULL, &interface, NULL, NULL)) {
 *         printf("type %u, interface %u\n", session.msg_type, interface.value_1); // type 17, interface 0
 *     }
 */
bool tlvmsg_session_key(const uint8_t *bytes, size_t size, uint32_t *key);

/* ---- To whom --------------------------------------------------------------------------------------------- */

/* What came. Later versions may add members at its end: programs are handed pointers, and make none. */
typedef struct tlvmsg_arrival {
    uint64_t key;
    const uint8_t *bytes;
    size_t size;
    const tlvmsg_type *type; /* null when no route has the key */
} tlvmsg_arrival;

/*
 * The function for the messages of a key. `handle` is called with the record, whose blocks are released when it returns,
 * and its result is that of tlvmsg_dispatch. The record and all that it points to are gone then: who keeps something of
 * it copies that by tlvmsg_copy, or takes the whole record over: assigns it, makes the one that was handed in zero, and
 * releases its own later. `handle` must return, as tracers must.
 */
typedef struct tlvmsg_route {
    uint64_t key;
    const tlvmsg_type *(*type)(void); /* tlvmsg_descriptor_X */
    size_t record_size; /* of the program's record, compared with the library's; 0: not compared */
    bool (*handle)(void *context, void *record, const tlvmsg_arrival *arrival);
    uintptr_t reserved[2];
} tlvmsg_route;

typedef struct tlvmsg_dispatch_options {
    /* For one record at a time: as large and as aligned as the largest needs. Up to 7 bytes are lost where it is not
     * aligned. A handler that dispatches what a message holds hands in other room. */
    void *room;
    size_t room_size;
    const tlvmsg_limits *limits; /* null for the default */
    /* Called for a key without a route, and for what is not handed to its handler. Their results are that of
     * tlvmsg_dispatch; null gives false. */
    bool (*unknown)(void *context, const tlvmsg_arrival *arrival);
    bool (*refused)(void *context, const tlvmsg_arrival *arrival, const tlvmsg_fault *fault);
    uintptr_t reserved[4];
} tlvmsg_dispatch_options;

/*
 * Finds the route of that key by halving, decodes the bytes into the options' room, hands the record to the route's
 * handler, and releases what decoding has allocated; nothing else is allocated. `context` is handed on. The result is
 * that of the one function that was called, false if there was none.
 *
 * Faults: those of tlvmsg_decode; TLVMSG_ROOM_TOO_SMALL; TLVMSG_RECORD_SIZE where the program has another record than
 * the library; TLVMSG_NULL_ARGUMENT for a route without a type or a handler; TLVMSG_RESERVED_WORD for a route or the
 * options. Paths are "room", "route" or "options" then. Null options, and null routes unless there are 0, give false.
 *
 * Where routes are not sorted, one that is not found by halving is refused with the fault of tlvmsg_check_routes, rather
 * than unknown; of several with the key one is taken. Any thread may dispatch with the same routes, into its own room.
 */
bool tlvmsg_dispatch(const tlvmsg_route *routes, size_t count, uint64_t key, const uint8_t *bytes,
                     size_t size, const tlvmsg_dispatch_options *options, void *context);

/*
 * Whether tlvmsg_dispatch finds each of these routes and can call it; for programs that make routes while they run.
 * `*room`, which may be null as `fault` may, becomes the size of the largest record, 0 on failure. Faults, of the first
 * route that is wrong: TLVMSG_NOT_SORTED and TLVMSG_KEY_TAKEN, with the path "routes[1] and routes[2]"; TLVMSG_RECORD_SIZE,
 * TLVMSG_NULL_ARGUMENT and TLVMSG_RESERVED_WORD, with the path "routes[2]".
 */
bool tlvmsg_check_routes(const tlvmsg_route *routes, size_t count, size_t *room, tlvmsg_fault *fault);

/*
 * Defines NAME, an array of NAME_count routes, and `union NAME_room`, large and aligned enough for each of their records.
 * LIST is a macro that calls its argument with each key, message and function, by ascending keys, none twice. Functions
 * take the context and a pointer to the message's record, which the compiler checks, and no two are the same one.
 */
#define TLVMSG_ROUTES(NAME, LIST)                                                                            \
    LIST(TLVMSG_ROUTE_CALL)                                                                                  \
    static const tlvmsg_route NAME[] = {LIST(TLVMSG_ROUTE)};                                                 \
    enum { NAME##_count = sizeof NAME / sizeof *NAME };                                                      \
    union NAME##_room {                                                                                      \
        LIST(TLVMSG_ROUTE_ROOM)                                                                              \
    };

#define TLVMSG_ROUTE_CALL(KEY, X, FUNCTION)                                                                  \
    static bool FUNCTION##_of_route(void *context, void *record, const tlvmsg_arrival *arrival) {            \
        (void)arrival;                                                                                       \
        return FUNCTION(context, (struct X *)record);                                                        \
    }
#define TLVMSG_ROUTE(KEY, X, FUNCTION)                                                                       \
    {KEY, tlvmsg_descriptor_##X, sizeof(struct X), FUNCTION##_of_route, {0, 0}},
#define TLVMSG_ROUTE_ROOM(KEY, X, FUNCTION) struct X FUNCTION;

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
