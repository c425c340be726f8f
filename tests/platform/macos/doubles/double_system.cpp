#include "platform/macos/doubles/double_system.h"

namespace velmo::macos::doubles {

DoubleSystem& system() {
    static DoubleSystem only;
    return only;
}

DoubleSystem& freshSystem() {
    system() = {};
    return system();
}

}  // namespace velmo::macos::doubles
