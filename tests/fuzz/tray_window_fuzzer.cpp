#include "linux/x11/property_value.h"
#include "linux/x11/single_instance.h"
#include "linux/x11/tray_protocol.h"
#include "property_answer.h"
#include "require.h"

#include <algorithm>
#include <cstring>

namespace {

using namespace velmo;

constexpr std::size_t longestName = 128;
constexpr std::size_t longestTitle = 500;
constexpr xcb_atom_t opcode = 300;

}  // namespace

/// Windows that are docked, and messages of strangers: names are short and can be seen, whatever they were,
/// and commands are those that there are.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace x11;
    fuzz::Bytes bytes(data, size);
    xcb_client_message_event_t message{};
    const std::string sent = bytes.text(sizeof message);
    std::memcpy(&message, sent.data(), sent.size());
    if (const auto window = tray_protocol::windowToDock(message, opcode))
        fuzz::require(*window != XCB_WINDOW_NONE && message.type == opcode);
    if (const auto command = SingleInstance::commandIn(message)) {
        fuzz::require(message.format == 32 && static_cast<std::uint32_t>(*command) == message.data.data32[0]);
        fuzz::require(*command >= ApplicationCommand::toggle && *command <= ApplicationCommand::quit);
    }

    const auto name =
        tray_protocol::applicationFrom(textIn(fuzz::PropertyAnswer(bytes).get(), XCB_ATOM_STRING));
    fuzz::require(name.size() <= longestName);
    fuzz::require(std::all_of(name.begin(), name.end(),
                              [](char character) { return character >= ' ' && character <= '~'; }));
    const auto newer = textIn(fuzz::PropertyAnswer(bytes).get(), XCB_ATOM_STRING);
    const auto older = textIn(fuzz::PropertyAnswer(bytes).get(), XCB_ATOM_STRING);
    const auto title = tray_protocol::titleFrom(newer, older);
    fuzz::require(title.has_value() == (!newer.empty() || !older.empty()));
    fuzz::require(!title || title->size() <= longestTitle);
    tray_protocol::wantsToBeShown(numbersIn(fuzz::PropertyAnswer(bytes).get()));
    return 0;
}
