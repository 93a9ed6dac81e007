// Refused: does not choose|several values|incomplete type|undefined template|no matching function
#include <tlvmsg/cellular.hpp>

void choose(cwan_ipc &ipc, const ip_address &constant, tlvmsg::owned<ip_address_type_union> &address);

void choose(cwan_ipc &ipc, [[maybe_unused]] const ip_address &constant,
            tlvmsg::owned<ip_address_type_union> &address) {
    tlvmsg::choose<&cwan_ipc_type_union::value, 28>(ipc.body) = 1;
    tlvmsg::choose<&ip_address_type_union::ipv4>(address) = 1;
#if MISTAKE == 1
    tlvmsg::choose<&cwan_ipc_type_union::value, 4>(ipc.body) = 1;
#elif MISTAKE == 2
    tlvmsg::choose<&cwan_ipc_type_union::value>(ipc.body) = 1;
#elif MISTAKE == 3
    tlvmsg::choose<&ip_address_type_union::ipv4, 2>(address) = 1;
#elif MISTAKE == 4
    tlvmsg::choose<&ip_address_type_union::type>(address) = 1;
#elif MISTAKE == 5
    tlvmsg::choose<&ip_address_type_union::ipv4>(constant.address) = 1;
#elif MISTAKE == 6
    tlvmsg::choose<&ip_address_type_union::ipv4>(ipc.body) = 1;
#endif
}
