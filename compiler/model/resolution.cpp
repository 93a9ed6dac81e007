#include "compiler/model/resolution.h"

#include <utility>

namespace tlvc {

bool Resolution::is_newer(Span place, Span than) const {
    const auto age = [this](Span span) { return std::pair(program.units[span.file].age, span.begin); };
    return age(place) > age(than);
}

} // namespace tlvc
