# One CHOICE(UNION, RECORD, NAME) for each alternative that the headers in bounded/ declare.
s/^TLVMSG_CHOOSE[^(]*(\([^,]*, [^,]*, )[^,]*, ([^,]*).*/CHOICE\1\2)/p
