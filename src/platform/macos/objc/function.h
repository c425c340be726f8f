#pragma once

#include "contract.h"
#include "name_of.h"
#include "type_text.h"

#include <string>
#include <string_view>
#include <type_traits>

namespace velmo::macos {

/// True where the result of a function belongs to whoever has called it, as the naming of functions has it.
constexpr bool returnsCreated(std::string_view name) {
    for (const std::string_view word : {"Create", "Copy"}) {
        const auto at = name.find(word);
        if (at == std::string_view::npos)
            continue;
        const auto rest = name.substr(at + word.size());
        // "Created" is another word.
        if (rest.empty() || rest.front() < 'a' || rest.front() > 'z')
            return true;
    }
    return false;
}

/// A function of a framework. Where its result is an object, it comes as a handle.
///
///     extern "C" void CFRelease(const void* object);
///     inline constexpr Function<&CFRelease> release;
template <auto function>
class Function {
public:
    template <typename... Arguments>
    auto operator()(Arguments... arguments) const {
        contract::use<Function>();
        if constexpr (!std::is_same_v<decltype(function(arguments...)), Id>)
            return function(arguments...);
        else if constexpr (returnsCreated(nameOf<function>()))
            return Object::adopt(function(arguments...));
        else
            return Object::share(function(arguments...));
    }

    static std::string text() {
        const std::string_view name = nameOf<function>();
        return "function " + std::string(name) + (returnsCreated(name) ? " owned " : " shared ") +
               types(function);
    }

private:
    template <typename Result, typename... Arguments>
    static std::string types(Result (* /*function*/)(Arguments...)) {
        return typeTexts<Result, Arguments...>();
    }
};

}  // namespace velmo::macos
