prefix acme_
prefix acme_more_
