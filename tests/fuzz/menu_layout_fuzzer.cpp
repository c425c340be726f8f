#include "foreign_message.h"
#include "linux/status_notifier/menu_layout.h"
#include "require.h"

#include <cstdint>
#include <iterator>
#include <set>

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

/// In bytes.
constexpr std::size_t longestLabel = 500;
constexpr std::size_t longestShortcut = 60;
constexpr std::size_t mostIconBytes = 1 << 16;
constexpr std::size_t mostIconBytesOfMenu = 1 << 22;

void requireBounds(const ExportedMenuEntry& entry, int depth, std::set<std::int32_t>& ids) {
    fuzz::require(depth <= status_notifier::deepestMenu && ids.insert(entry.id).second);
    fuzz::require(entry.label.size() <= longestLabel && entry.shortcut.size() <= longestShortcut);
    for (const auto& child : entry.children)
        requireBounds(child, depth + 1, ids);
}

void requireBounds(status_notifier::MenuLayout& layout) {
    std::set<std::int32_t> ids;
    requireBounds(layout.root(), 0, ids);
    fuzz::require(ids.size() <= status_notifier::mostMenuEntries + 1);
    std::size_t bytes = 0;
    for (const auto& [id, icon] : layout.icons()) {
        fuzz::require(ids.contains(id) && !icon.isEmpty() && icon.data.size() <= mostIconBytes);
        bytes += icon.size();
    }
    fuzz::require(bytes <= mostIconBytesOfMenu);
    for (const auto id : ids)
        fuzz::require(id == layout.root().id || (layout.find(id) && layout.find(id)->id == id));
}

}  // namespace

/// Whatever a menu is said to be, and to have become: it is neither large nor deep, and no entry of it comes
/// twice.
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
    requireBounds(*layout);
    fuzz::ForeignMessage changes(bytes, order);
    if (bytes.below(16) == 0)
        changes.fill(changes.anyType());
    else
        writeChanges(bytes, changes);
    const auto sealedChanges = changes.seal();
    constexpr std::size_t mostChanges = 30;
    const auto applied = status_notifier::applyMenuChanges(sealedChanges.get(), *layout, mostChanges);
    fuzz::require(applied.count <= mostChanges && applied.entries.size() <= applied.count);
    requireBounds(*layout);
    return 0;
}
