#pragma once

#include "raw_type.h"

#include <string>
#include <string_view>
#include <type_traits>

namespace velmo::macos {

/// What the frameworks call an enumeration or a record that is declared here.
template <typename T>
inline constexpr std::string_view frameworkName{};

template <typename T>
struct TypeText;

/// A type as it is written in the list of what the program uses.
template <typename T>
std::string typeText() {
    return TypeText<std::remove_cvref_t<T>>::text();
}

template <typename First, typename... Rest>
std::string typeTexts() {
    return (typeText<First>() + ... + (", " + typeText<Rest>()));
}

template <typename T>
struct TypeText {
    static std::string text() {
        if constexpr (std::is_enum_v<T>)
            return "enum " + std::string(frameworkName<T>) + ' ' + typeText<std::underlying_type_t<T>>();
        else if constexpr (std::is_floating_point_v<T>)
            return sizeof(T) == sizeof(double) ? "f64" : "f32";
        else if constexpr (std::is_integral_v<T>)
            return (std::is_signed_v<T> ? 'i' : 'u') + std::to_string(8 * sizeof(T));
        else if constexpr (std::is_class_v<T>)
            return "struct " + std::string(frameworkName<T>);
        else
            return "pointer";
    }
};

template <>
struct TypeText<void> {
    static std::string text() { return "void"; }
};
template <>
struct TypeText<bool> {
    static std::string text() { return "bool"; }
};
template <>
struct TypeText<Selector> {
    static std::string text() { return "sel"; }
};
template <>
struct TypeText<const char*> {
    static std::string text() { return "cstring"; }
};
template <>
struct TypeText<Id> {
    static std::string text() { return "id"; }
};
template <>
struct TypeText<Object> {
    static std::string text() { return "id"; }
};
template <Handle T>
requires(!std::same_as<T, Object>) struct TypeText<T> {
    static std::string text() { return "object " + std::string(T::className.view()); }
};
template <typename Result, typename... Arguments>
struct TypeText<Result (*)(Arguments...)> {
    static std::string text() { return "function(" + typeTexts<Result, Arguments...>() + ")"; }
};

}  // namespace velmo::macos
