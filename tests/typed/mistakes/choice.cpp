// Refused: does not choose|several values|no matching function
#include <tlvmsg/cellular.hpp>

void choose(tlvmsg::owned<cwan_ipc_type_union> &body);

void choose(tlvmsg::owned<cwan_ipc_type_union> &body) {
    tlvmsg::choose<&cwan_ipc_type_union::value, 28>(body) = 1;
#if MISTAKE == 1
    tlvmsg::choose<&cwan_ipc_type_union::value, 4>(body) = 1;
#elif MISTAKE == 2
    tlvmsg::choose<&cwan_ipc_type_union::value>(body) = 1;
#elif MISTAKE == 3
    tlvmsg::choose<&ip_address_type_union::ipv4>(ip_address().address) = 1;
#endif
}
