#pragma once

#include "object.h"

#include <concepts>
#include <type_traits>

namespace velmo::macos {

template <typename T>
concept Handle = std::derived_from<T, Object>;

/// A value as it crosses to the system: handles as the object they hold, everything else as it is.
template <typename T>
struct RawType {
    using Type = T;
    static Type toRaw(const T& value) { return value; }
    static T fromRaw(Type value) { return value; }
};

template <>
struct RawType<void> {
    using Type = void;
};

template <>
struct RawType<bool> {
    using Type = RawBool;
    static Type toRaw(bool value) { return static_cast<Type>(value); }
    static bool fromRaw(Type value) { return value != Type{}; }
};

template <Handle T>
struct RawType<T> {
    using Type = Id;
    static Type toRaw(const T& value) { return value.get(); }
    static T fromRaw(Type value) { return Object::share<T>(value); }
};

template <typename T>
using Raw = typename RawType<std::remove_cvref_t<T>>::Type;

template <typename T>
Raw<T> toRaw(const T& value) {
    return RawType<T>::toRaw(value);
}

template <typename T>
std::remove_cvref_t<T> fromRaw(Raw<T> value) {
    return RawType<std::remove_cvref_t<T>>::fromRaw(value);
}

/// The raw value of what a method or a block made here returns.
template <typename T>
Raw<T> toReturned(T value) {
    if constexpr (Handle<T>)
        return value.leaveToPool();
    else
        return toRaw(value);
}

}  // namespace velmo::macos
