#pragma once

#include "runtime.h"

#include <string_view>

namespace velmo::macos {

/// What a function or a variable is called, without its namespaces. From the compiler, so that nobody can
/// write another name beside an address.
template <auto address>
constexpr std::string_view nameOf() {
    // "… [with auto address = velmo::macos::CFRelease; …]", "… [address = &velmo::macos::CFRelease]"
    std::string_view text = __PRETTY_FUNCTION__;
    text.remove_prefix(text.find("address = "));
    text = text.substr(0, text.find_first_of(";])"));
    return text.substr(text.find_last_of(" &:(") + 1);
}

static_assert(nameOf<&sel_registerName>() == "sel_registerName", "this compiler writes it in another way");

}  // namespace velmo::macos
