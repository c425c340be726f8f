#include "appearance.h"

#include <cmath>

namespace velmo {

int Appearance::pixels(double points) const {
    return static_cast<int>(std::lround(points * scale));
}

}  // namespace velmo
