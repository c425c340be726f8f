#pragma once

#include "contract.h"
#include "type_text.h"

#include <string>

namespace velmo::macos {

/// A function of a framework:
///
///     extern "C" void CFRelease(const void* object);
///     inline constexpr Function<"CFRelease", &CFRelease> release;
template <FixedString name, auto function>
class Function {
public:
    template <typename... Arguments>
    auto operator()(Arguments... arguments) const {
        contract::use<Function>();
        return function(arguments...);
    }

    static std::string text() { return "function " + std::string(name.view()) + ' ' + types(function); }

private:
    template <typename Result, typename... Arguments>
    static std::string types(Result (* /*function*/)(Arguments...)) {
        return typeTexts<Result, Arguments...>();
    }
};

}  // namespace velmo::macos
