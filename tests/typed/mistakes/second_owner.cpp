// Refused: deleted
#include <tlvmsg/common.hpp>

tlvmsg::owned<if_name> keep(tlvmsg::owned<if_name> &name) {
#ifdef MISTAKE
    return name;
#else
    return static_cast<tlvmsg::owned<if_name> &&>(name);
#endif
}
