#pragma once

#include "macos/foundation/ns_object.h"

namespace velmo::macos {

/// An object that tells when it goes.
class CountedObject : public ClassOf<CountedObject, "VelmoCountedObject", NSObject> {
public:
    static CountedObject create();

    /// How many there are.
    static int liveCount();

    std::uint64_t retainCount() const { return send<std::uint64_t, "retainCount">(); }
};

}  // namespace velmo::macos
