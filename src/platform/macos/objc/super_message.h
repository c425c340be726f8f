#pragma once

#include "contract.h"
#include "raw_type.h"
#include "type_text.h"

#include <string>

namespace velmo::macos {

/// A message to an object of a class made here, answered as `Base` answers it.
template <typename Base, FixedString selector, typename Result, typename... Arguments>
struct SuperMessage {
    static_assert(argumentCount(selector.view()) == sizeof...(Arguments), "one argument for each colon");

    static Result send(const Base& receiver, const Arguments&... arguments) {
        contract::use<SuperMessage>();
        const Selector name = selectorNamed<selector>();
        const auto call = reinterpret_cast<Raw<Result> (*)(Id, Selector, Raw<Arguments>...)>(
            class_getMethodImplementation(classNamed<Base::className>(), name));
        if constexpr (std::is_void_v<Result>)
            call(receiver.get(), name, toRaw(arguments)...);
        else
            return fromRaw<Result>(call(receiver.get(), name, toRaw(arguments)...));
    }

    static std::string text() {
        return "message " + std::string(Base::className.view()) + " - " + std::string(selector.view()) +
               " shared " + typeTexts<Result, Arguments...>();
    }
};

}  // namespace velmo::macos
