#include "foreign_message.h"
#include "linux/status_notifier/menu_layout.h"

#include <iterator>

namespace {

using namespace velmo;

constexpr const char* names[] = {"type",        "label",        "enabled",    "visible",
                                 "icon-name",   "icon-data",    "shortcut",   "children-display",
                                 "toggle-type", "toggle-state", "disposition"};

void writeProperties(fuzz::Bytes& bytes, fuzz::ForeignMessage& message) {
    message.open('a', "{sv}");
    for (auto count = bytes.below(12); count > 0 && !bytes.isEmpty(); --count) {
        message.open('e', "sv");
        message.text(names[bytes.below(std::size(names))]);
        message.fillVariant({"s", "b", "i", "ay", "aas"});
        message.close();
    }
    message.close();
}

void writeEntry(fuzz::Bytes& bytes, fuzz::ForeignMessage& message, int depth) {
    message.open('r', "ia{sv}av");
    message.integer(static_cast<std::int32_t>(bytes.number(1 + static_cast<int>(bytes.below(4)))));
    writeProperties(bytes, message);
    message.open('a', "v");
    constexpr int deepest = 20;
    for (auto count = bytes.below(20); count > 0 && !bytes.isEmpty(); --count) {
        if (depth >= deepest || bytes.below(16) == 0) {
            message.fillVariant({});
        } else {
            message.open('v', "(ia{sv}av)");
            writeEntry(bytes, message, depth + 1);
            message.close();
        }
    }
    message.close();
    message.close();
}

void writeChanges(fuzz::Bytes& bytes, fuzz::ForeignMessage& message) {
    message.open('a', "(ia{sv})");
    for (auto count = bytes.below(40); count > 0 && !bytes.isEmpty(); --count) {
        message.open('r', "ia{sv}");
        message.integer(static_cast<std::int32_t>(bytes.byte()));
        writeProperties(bytes, message);
        message.close();
    }
    message.close();
    message.fill("a(ias)");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Bytes bytes(data, size);
    const auto order = fuzz::ForeignMessage::anyOrder(bytes);
    fuzz::ForeignMessage answer(bytes, order);
    if (bytes.below(16) == 0) {
        answer.fill(answer.anyType());
    } else {
        answer.fill("u");
        writeEntry(bytes, answer, 0);
    }
    const auto sealed = answer.seal();
    auto layout = status_notifier::readMenuLayout(sealed.get());
    if (!layout)
        return 0;
    fuzz::ForeignMessage changes(bytes, order);
    if (bytes.below(16) == 0)
        changes.fill(changes.anyType());
    else
        writeChanges(bytes, changes);
    const auto sealedChanges = changes.seal();
    status_notifier::applyMenuChanges(sealedChanges.get(), *layout, 30);
    return 0;
}
