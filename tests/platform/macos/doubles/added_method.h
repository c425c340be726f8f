#pragma once

#include "macos/objc/encoding.h"
#include "macos/objc/type_text.h"

#include <type_traits>

namespace velmo::macos::doubles {

extern "C" Implementation class_replaceMethod(RawClass owner, Selector selector,
                                              Implementation implementation, const char* encoding);

template <auto function, typename Result, typename Self, typename... Arguments>
void setMethodOf(RawClass owner, Selector selector, Result (* /*function*/)(Self, Arguments...)) {
    using Thunk = Raw<Result> (*)(Id, Selector, Raw<Arguments>...);
    const Thunk thunk = [](Id self, Selector, Raw<Arguments>... arguments) -> Raw<Result> {
        if constexpr (std::is_void_v<Result>)
            function(Object::share<std::remove_cvref_t<Self>>(self), fromRaw<Arguments>(arguments)...);
        else
            return toReturned(
                function(Object::share<std::remove_cvref_t<Self>>(self), fromRaw<Arguments>(arguments)...));
    };
    const auto code = reinterpret_cast<Implementation>(thunk);
    const std::string encoding = methodEncoding<Result, std::remove_cvref_t<Arguments>...>();
    // The GNU runtime would replace what the class only inherits where that comes from.
    if (!class_addMethod(owner, selector, code, encoding.c_str()))
        class_replaceMethod(owner, selector, code, encoding.c_str());
}

/// Gives a class a method, or another one in its place, that does what the function does with the receiver
/// and the arguments.
template <FixedString selector, auto function>
void setMethod(RawClass owner) {
    setMethodOf<function>(owner, selectorNamed<selector>(), function);
}

/// Its methods are those of the class itself.
inline RawClass metaclassOf(RawClass owner) {
    return *reinterpret_cast<RawClass*>(owner);
}

}  // namespace velmo::macos::doubles
