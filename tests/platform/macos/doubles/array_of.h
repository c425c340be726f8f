#pragma once

#include "macos/foundation/ns_array.h"

#include <vector>

namespace velmo::macos::doubles {

inline NSArray arrayOf(const std::vector<Object>& objects) {
    const auto made = Message<"NSMutableArray", true, "new", NSArray>::send(
        reinterpret_cast<Id>(classNamed<"NSMutableArray">()));
    for (const Object& object : objects)
        Message<"NSMutableArray", false, "addObject:", void, Object>::send(made.get(), object);
    return made;
}

}  // namespace velmo::macos::doubles
