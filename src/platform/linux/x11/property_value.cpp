#include "property_value.h"

#include <cstddef>
#include <cstring>

namespace velmo::x11 {

std::string textIn(const xcb_get_property_reply_t* answer, xcb_atom_t type) {
    if (!answer || answer->type != type)
        return {};
    const auto* begin = static_cast<const char*>(xcb_get_property_value(answer));
    return {begin, static_cast<std::size_t>(xcb_get_property_value_length(answer))};
}

std::vector<std::uint32_t> numbersIn(const xcb_get_property_reply_t* answer) {
    if (!answer || answer->format != 32)
        return {};
    std::vector<std::uint32_t> numbers(answer->value_len);
    if (!numbers.empty())
        std::memcpy(numbers.data(), xcb_get_property_value(answer), numbers.size() * sizeof(std::uint32_t));
    return numbers;
}

}  // namespace velmo::x11
