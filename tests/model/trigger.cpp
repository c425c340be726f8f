#include "model/trigger.h"

namespace velmo {

namespace {

constexpr bool isInOrder() {
    for (std::size_t i = 0; i < triggers.size(); ++i) {
        if (static_cast<std::size_t>(triggers[i].trigger) != i)
            return false;
    }
    return true;
}

static_assert(isInOrder());

}  // namespace

std::string_view nameOf(Trigger trigger) {
    return triggers[static_cast<std::size_t>(trigger)].name;
}

}  // namespace velmo
