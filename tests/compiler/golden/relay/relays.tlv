//! What a relay is and does.

/// State of a relay.
enum relay_state = 2001 {
    open   = 0
    /// Until told otherwise.
    closed = 1
}

array relay_states_array of relay_state[4]
array relay_levels_array of uint16[3]

bytes relay_label_array[6]

dynamic bytes relay_note_array counted by uint32
dynamic array relay_history_array of relay_state counted by uint8

union relay_detail_union by relay_state state {
    closed: uint32       since
      2, 3: relay_state  before @end_by_length
}

/// Everything about one relay.
struct relay = 2002 {
    char                 letter
    relay_states_array   states
    relay_levels_array   levels
    relay_label_array    label
    /// Characters, however many are kept.
    uint32               count
    relay_note_array     note
    uint8                count
    relay_history_array  history @zero_count
    /// Whether it is closed.
    relay_state          state
    relay_detail_union   detail
}

union relay_own_union by relay_state state in relay_port {
    0: uint8  slot
}

struct relay_port = 2003 {
    relay_state      state
    relay_own_union  own
}

/// Relays of two ports.
message relay_message key 7 { relay first  relay second  relay_port port }
