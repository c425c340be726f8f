#pragma once

#include "ns_string.h"

#include <vector>

namespace velmo::macos {

class NSArray : public ClassOf<NSArray, "NSArray", NSObject> {
public:
    NSUInteger count() const { return send<NSUInteger, "count">(); }
    Object objectAtIndex(NSUInteger index) const { return send<Object, "objectAtIndex:">(index); }

    /// Those that are of the class, in their order.
    template <typename Handle>
    std::vector<Handle> all() const {
        std::vector<Handle> found;
        for (NSUInteger index = 0; index < count(); ++index) {
            if (auto object = as<Handle>(objectAtIndex(index)))
                found.push_back(std::move(object));
        }
        return found;
    }
};

class NSMutableArray : public ClassOf<NSMutableArray, "NSMutableArray", NSArray> {
public:
    static NSMutableArray create() { return make<"init">(); }

    void addObject(const Object& object) const { send<void, "addObject:">(object); }
};

}  // namespace velmo::macos
