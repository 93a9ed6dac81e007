prefix acme_
