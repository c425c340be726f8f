#pragma once

#include <cstdlib>
#include <memory>

namespace velmo::x11 {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply or event of the X server, owned. Null where the request failed.
template <typename Type>
using Owned = std::unique_ptr<Type, Free>;

template <typename Type>
Owned<Type> owned(Type* reply) {
    return Owned<Type>(reply);
}

}  // namespace velmo::x11
