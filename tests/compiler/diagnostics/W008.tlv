// tlvc: W002 because nothing but programs of others use it
/// A state.
enum state = 40001

enum mode = 40002  // tlvc: W002, W003 because programs of others use it
enum kind = 40003  // tlvc: W002
enum way = 40004  // tlvc: W003, W02 because it is plain

/// A port.
struct port = 40005 {
    // tlvc: W002 because it is used
    state  present
}
// tlvc: W006 because the next line is about nothing
