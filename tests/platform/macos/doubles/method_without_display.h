#pragma once

#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/double_system.h"

namespace velmo::macos::doubles {

template <FixedString selector, auto function, typename Result, typename Self, typename... Arguments>
void setMethodWithoutDisplayOf(RawClass owner, Result (* /*function*/)(Self, Arguments...)) {
    using Code = Raw<Result> (*)(Id, Selector, Raw<Arguments>...);
    static const auto original =
        reinterpret_cast<Code>(class_getMethodImplementation(owner, selectorNamed<selector>()));
    const Code thunk = [](Id self, Selector name, Raw<Arguments>... arguments) -> Raw<Result> {
        if (system().hasDisplay)
            return original(self, name, arguments...);
        if constexpr (std::is_void_v<Result>)
            function(Object::share<std::remove_cvref_t<Self>>(self), fromRaw<Arguments>(arguments)...);
        else
            return toReturned(
                function(Object::share<std::remove_cvref_t<Self>>(self), fromRaw<Arguments>(arguments)...));
    };
    class_replaceMethod(owner, selectorNamed<selector>(), reinterpret_cast<Implementation>(thunk),
                        methodEncoding<Result, std::remove_cvref_t<Arguments>...>().c_str());
}

/// The same as `setMethod`, but that GNUstep's own method serves where there is a display.
template <FixedString selector, auto function>
void setMethodWithoutDisplay(RawClass owner) {
    setMethodWithoutDisplayOf<selector, function>(owner, function);
}

}  // namespace velmo::macos::doubles
