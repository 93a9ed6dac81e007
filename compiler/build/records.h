// Works out the records: which fields each type's record has, and where it holds each member.
//
// A record is not the members one by one. A count lives in the record of the array behind it and a selector
// in that of its union; a union may live in the record of the structure around it.
#pragma once

#include "compiler/model/model.h"

namespace tlvc {

void find_records(Schema &schema);

} // namespace tlvc
