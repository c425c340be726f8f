#include "hidden_items/closed_interval.h"

#include <cstdlib>

namespace velmo {

ClosedInterval::ClosedInterval(double lower, double upper) : lower_(lower), upper_(upper) {
    if (!(lower <= upper))
        std::abort();
}

}  // namespace velmo
