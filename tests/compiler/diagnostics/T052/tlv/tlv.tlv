prefix tlvmsg_
