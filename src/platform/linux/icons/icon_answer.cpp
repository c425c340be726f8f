#include "icon_answer.h"

#include "linux/icons/icon_protocol.h"

#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace velmo {

IconAnswer readIconAnswer(std::span<const char> received) {
    icon_protocol::Answer answer;
    if (received.size() < sizeof answer)
        return {};
    std::memcpy(&answer, received.data(), sizeof answer);
    if (answer.width > icon_protocol::largestSide || answer.height > icon_protocol::largestSide)
        return {IconAnswer::State::implausible, {}};
    const std::size_t count = std::size_t{answer.width} * answer.height;
    const auto pixels = received.subspan(sizeof answer);
    const std::size_t size = count * sizeof(std::uint32_t);
    if (pixels.size() < size)
        return {};
    if (count == 0)
        return {IconAnswer::State::whole, {}};
    Bitmap bitmap;
    bitmap.width = static_cast<int>(answer.width);
    bitmap.height = static_cast<int>(answer.height);
    bitmap.pixels = std::make_shared<const std::vector<std::uint8_t>>(
        pixels.begin(), pixels.begin() + static_cast<std::ptrdiff_t>(size));
    bitmap.size = {double(bitmap.width), double(bitmap.height)};
    return {IconAnswer::State::whole, Image{std::move(bitmap), answer.isTemplate != 0, {}}};
}

}  // namespace velmo
