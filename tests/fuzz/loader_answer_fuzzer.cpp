#include "bytes.h"
#include "linux/icons/icon_answer.h"
#include "linux/icons/icon_protocol.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <variant>

/// An answer of the icon loader as it comes, piece by piece: it is whole when its last pixel has come and not
/// before, and what does not grow to a picture of a plausible size is none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo;
    using State = IconAnswer::State;
    const auto require = [](bool condition) {
        if (!condition)
            std::abort();
    };
    constexpr std::size_t head = sizeof(icon_protocol::Answer);
    fuzz::Bytes bytes(data, size);
    const std::size_t piece = 1 + bytes.number(2) % 500;
    const auto content = bytes.text();
    std::size_t received = 0;
    IconAnswer answer;
    while (answer.state == State::incomplete && received < content.size()) {
        received = std::min(received + piece, content.size());
        answer = readIconAnswer({content.data(), received});
        require(received >= head || answer.state == State::incomplete);
    }
    require(answer.state == State::whole || !answer.icon);
    if (answer.icon) {
        const auto& bitmap = std::get<Bitmap>(answer.icon->content);
        require(bitmap.width > 0 && bitmap.width <= static_cast<int>(icon_protocol::largestSide));
        require(bitmap.height > 0 && bitmap.height <= static_cast<int>(icon_protocol::largestSide));
        const auto pixels =
            std::size_t{4} * static_cast<std::size_t>(bitmap.width) * static_cast<std::size_t>(bitmap.height);
        require(bitmap.pixels->size() == pixels && received >= head + pixels);
        require(received < head + pixels + piece);
        require(std::equal(bitmap.pixels->begin(), bitmap.pixels->end(), content.begin() + head,
                           [](auto pixel, char byte) { return pixel == static_cast<std::uint8_t>(byte); }));
    }
    return 0;
}
