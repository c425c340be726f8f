#pragma once

#include "contract.h"
#include "type_text.h"

#include <string>
#include <string_view>
#include <type_traits>

namespace velmo::macos {

/// True where the result of a message belongs to whoever has sent it, as the naming of selectors has it.
constexpr bool returnsOwned(std::string_view selector) {
    for (const std::string_view family : {"alloc", "new", "copy", "mutableCopy", "init"}) {
        if (selector.starts_with(family)) {
            const char next = selector.size() == family.size() ? ':' : selector[family.size()];
            // "initialize" and "newsgroup" are of no family.
            if (next < 'a' || next > 'z')
                return true;
        }
    }
    return false;
}

/// A message that an object of the class, or the class itself, understands.
template <FixedString className, bool isStatic, FixedString selector, typename Result, typename... Arguments>
struct Message {
    static_assert(argumentCount(selector.view()) == sizeof...(Arguments), "one argument for each colon");

    static Result send(Id receiver, const Arguments&... arguments) {
        contract::use<Message>();
        if (receiver == nullptr)
            return Result();
        const Selector name = selectorNamed<selector>();
        const auto call = reinterpret_cast<Raw<Result> (*)(Id, Selector, Raw<Arguments>...)>(
            messageImplementation<Raw<Result>>(receiver, name));
        if constexpr (std::is_void_v<Result>)
            call(receiver, name, toRaw(arguments)...);
        else if constexpr (Handle<Result> && returnsOwned(selector.view()))
            return Object::adopt<Result>(call(receiver, name, toRaw(arguments)...));
        else
            return fromRaw<Result>(call(receiver, name, toRaw(arguments)...));
    }

    static std::string text() {
        return std::string("message ") + std::string(className.view()) + (isStatic ? " + " : " - ") +
               std::string(selector.view()) + (returnsOwned(selector.view()) ? " owned " : " shared ") +
               typeTexts<Result, Arguments...>();
    }
};

/// The selector by which menus and controls have an object of the class perform something.
template <FixedString className, FixedString selector>
Selector actionNamed() {
    contract::use<Message<className, false, selector, void, Object>>();
    return selectorNamed<selector>();
}

}  // namespace velmo::macos
