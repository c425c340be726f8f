#pragma once

#include "raw_type.h"

#include <string>
#include <type_traits>

namespace velmo::macos {

/// The runtime's own notation for a type, which goes with methods and blocks that are made here. Records say
/// it by a member `encoding`.
template <typename T>
std::string encodingOf() {
    if constexpr (std::is_void_v<T>)
        return "v";
    else if constexpr (std::is_same_v<T, bool>)
        return {rawBoolEncoding};
    else if constexpr (std::is_enum_v<T>)
        return encodingOf<std::underlying_type_t<T>>();
    else if constexpr (Handle<T>)
        return T::typeEncoding;
    else if constexpr (std::is_same_v<T, Selector>)
        return ":";
    else if constexpr (std::is_same_v<T, const char*>)
        return "*";
    else if constexpr (std::is_pointer_v<T>)
        return "^v";
    else if constexpr (std::is_floating_point_v<T>)
        return sizeof(T) == sizeof(double) ? "d" : "f";
    else if constexpr (std::is_integral_v<T>)
        return {(std::is_signed_v<T> ? "_cs_i___q" : "_CS_I___Q")[sizeof(T)]};
    else
        return T::encoding;
}

/// Of a method: its result, its receiver and selector, its arguments.
template <typename Result, typename... Arguments>
std::string methodEncoding() {
    return ((encodingOf<Result>() + "@:") + ... + encodingOf<std::remove_cvref_t<Arguments>>());
}

}  // namespace velmo::macos
