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

/// What a class did before another method took its method's place.
struct OwnMethod {
    Selector selector = nullptr;
    Implementation implementation = nullptr;
};

/// The one whose place the function has taken.
template <auto function>
OwnMethod& ownMethod() {
    static OwnMethod own;
    return own;
}

template <auto function>
void keepOwnMethod(RawClass owner, Selector selector) {
    ownMethod<function>() = {selector, class_getMethodImplementation(owner, selector)};
}

/// The same as `setMethod`, for a function that calls what the class did before with `callOwn`. For one
/// class.
template <FixedString selector, auto function>
void overrideMethod(RawClass owner) {
    keepOwnMethod<function>(owner, selectorNamed<selector>());
    setMethod<selector, function>(owner);
}

template <auto function, typename Result = void, typename... Arguments>
Result callOwn(const Object& receiver, const Arguments&... arguments) {
    const OwnMethod& own = ownMethod<function>();
    const auto call = reinterpret_cast<Raw<Result> (*)(Id, Selector, Raw<Arguments>...)>(own.implementation);
    // Nobody comes here before there is one.
    // NOLINTBEGIN(clang-analyzer-core.CallAndMessage)
    if constexpr (std::is_void_v<Result>)
        call(receiver.get(), own.selector, toRaw(arguments)...);
    else
        return fromRaw<Result>(call(receiver.get(), own.selector, toRaw(arguments)...));
    // NOLINTEND(clang-analyzer-core.CallAndMessage)
}

/// The same for an initializer, which takes the reference to its receiver over and gives one to what it
/// returns.
template <FixedString selector, auto function, typename... Arguments>
void overrideInitializerOf(RawClass owner, Id (* /*function*/)(Id, Selector, Arguments...)) {
    keepOwnMethod<function>(owner, selectorNamed<selector>());
    const auto code = reinterpret_cast<Implementation>(function);
    const std::string encoding = methodEncoding<Object, Arguments...>();
    if (!class_addMethod(owner, selectorNamed<selector>(), code, encoding.c_str()))
        class_replaceMethod(owner, selectorNamed<selector>(), code, encoding.c_str());
}

template <FixedString selector, auto function>
void overrideInitializer(RawClass owner) {
    overrideInitializerOf<selector, function>(owner, function);
}

template <auto function, typename... Arguments>
Id callOwnInitializer(Id receiver, Arguments... arguments) {
    const OwnMethod& own = ownMethod<function>();
    return reinterpret_cast<decltype(function)>(own.implementation)(receiver, own.selector, arguments...);
}

/// Its methods are those of the class itself.
inline RawClass metaclassOf(RawClass owner) {
    return *reinterpret_cast<RawClass*>(owner);
}

}  // namespace velmo::macos::doubles
