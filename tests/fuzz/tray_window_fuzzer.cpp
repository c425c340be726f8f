#include "bytes.h"
#include "linux/x11/property_value.h"
#include "linux/x11/tray_protocol.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <vector>

namespace {

using namespace velmo;

constexpr std::size_t longestName = 128;
constexpr std::size_t longestTitle = 500;
constexpr xcb_atom_t opcode = 300;

/// What the X server answers of a property that a program has written: a head, and the value behind it. The
/// head is true, whatever the value is.
class PropertyAnswer {
public:
    explicit PropertyAnswer(fuzz::Bytes& bytes) {
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

void require(bool condition) {
    if (!condition)
        std::abort();
}

}  // namespace

/// Windows that are docked, and requests to dock them: names are short and can be seen, whatever they were.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace x11;
    fuzz::Bytes bytes(data, size);
    xcb_client_message_event_t message{};
    const std::string sent = bytes.text(sizeof message);
    std::memcpy(&message, sent.data(), sent.size());
    if (const auto window = tray_protocol::windowToDock(message, opcode))
        require(*window != XCB_WINDOW_NONE && message.type == opcode);

    const auto name = tray_protocol::applicationFrom(textIn(PropertyAnswer(bytes).get(), XCB_ATOM_STRING));
    require(name.size() <= longestName);
    require(std::all_of(name.begin(), name.end(),
                        [](char character) { return character >= ' ' && character <= '~'; }));
    const auto newer = textIn(PropertyAnswer(bytes).get(), XCB_ATOM_STRING);
    const auto older = textIn(PropertyAnswer(bytes).get(), XCB_ATOM_STRING);
    const auto title = tray_protocol::titleFrom(newer, older);
    require(title.has_value() == (!newer.empty() || !older.empty()));
    require(!title || title->size() <= longestTitle);
    tray_protocol::wantsToBeShown(numbersIn(PropertyAnswer(bytes).get()));
    return 0;
}
