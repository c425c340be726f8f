#pragma once

#include "bytes.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

namespace velmo::fuzz {

/// What the X server answers of a property that a program has written: a head, and the value behind it. The
/// head is true, whatever the value is.
class PropertyAnswer {
public:
    explicit PropertyAnswer(Bytes& bytes) {
        static constexpr std::uint8_t formats[] = {8, 8, 32, 16, 0};
        xcb_get_property_reply_t head{};
        head.format = formats[bytes.below(std::size(formats))];
        head.type = bytes.below(4) == 0 ? XCB_ATOM_CARDINAL : XCB_ATOM_STRING;
        const std::string value = bytes.text(head.format == 0 ? 0 : bytes.number(2) % 2000);
        const std::size_t unit = std::max(head.format / 8, 1);
        head.value_len = static_cast<std::uint32_t>(value.size() / unit);
        memory_.resize(sizeof head + head.value_len * unit);
        std::memcpy(memory_.data(), &head, sizeof head);
        std::memcpy(memory_.data() + sizeof head, value.data(), head.value_len * unit);
    }

    const xcb_get_property_reply_t* get() const {
        return reinterpret_cast<const xcb_get_property_reply_t*>(memory_.data());
    }

private:
    std::vector<std::uint8_t> memory_;
};

}  // namespace velmo::fuzz
