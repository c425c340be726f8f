#pragma once

#include "contract.h"
#include "name_of.h"
#include "type_text.h"

#include <string>
#include <type_traits>

namespace velmo::macos {

/// A constant that a framework holds in a variable. `Type` is what the framework says it is:
///
///     extern "C" const Id NSRunLoopCommonModes;
///     inline constexpr Global<&NSRunLoopCommonModes, NSString> commonModes;
template <auto address, typename Type>
class Global {
public:
    Type value() const {
        contract::use<Global>();
        return fromRaw<Type>(*address);
    }

    /// Of what is no value but is known by where it lies.
    auto place() const {
        contract::use<Global>();
        return address;
    }

    static std::string text() { return "global " + std::string(nameOf<address>()) + ' ' + typeText<Type>(); }
};

}  // namespace velmo::macos
