#include "menu_layout.h"

#include "linux/cut_text.h"
#include "linux/dbus/message_reader.h"
#include "linux/icons/icon_protocol.h"

#include <cctype>
#include <utility>

namespace velmo::status_notifier {

namespace {

using dbus::MessageReader;
using MarkState = ExportedMenuEntry::MarkState;

constexpr std::size_t longestLabel = 500;
constexpr std::size_t longestShortcut = 60;
constexpr std::size_t mostIconBytes = 1 << 16;
constexpr std::size_t mostIconBytesOfMenu = 1 << 22;

struct Target {
    ExportedMenuEntry& entry;
    MenuIcon& icon;
};

/// The first one of the alternatives, as menus show it.
std::string readShortcut(MessageReader& reader) {
    std::string shortcut;
    bool isFirst = true;
    reader.array([&] {
        std::string keys;
        reader.array([&] {
            std::string key = reader.text().value_or("");
            if (key == "Control")
                key = "Ctrl";
            if (key.size() == 1)
                key.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(key.front())));
            if (keys.size() < longestShortcut)
                keys = std::string(cutText(keys + (keys.empty() ? "" : "+") + key, longestShortcut));
            return true;
        });
        if (std::exchange(isFirst, false))
            shortcut = keys;
        return true;
    });
    return shortcut;
}

std::string readLabel(MessageReader& reader) {
    return std::string(cutText(reader.text().value_or(""), longestLabel));
}

/// The beginning of a name is another one.
std::string readIconName(MessageReader& reader) {
    auto name = reader.text().value_or("");
    return name.size() <= icon_protocol::longestText ? name : std::string();
}

ExportedMenuEntry::Mark readMark(MessageReader& reader) {
    const auto type = reader.text();
    if (type == "checkmark")
        return ExportedMenuEntry::Mark::check;
    return type == "radio" ? ExportedMenuEntry::Mark::radio : ExportedMenuEntry::Mark::none;
}

MarkState readMarkState(MessageReader& reader) {
    const auto state = reader.integer();
    if (state == 0)
        return MarkState::off;
    return state == 1 ? MarkState::on : MarkState::mixed;
}

std::string readData(MessageReader& reader) {
    const auto bytes = reader.bytes();
    if (!bytes || bytes->size() > mostIconBytes)
        return {};
    return {reinterpret_cast<const char*>(bytes->data()), bytes->size()};
}

void readProperty(MessageReader& reader, const std::string& name, const Target& target) {
    auto& entry = target.entry;
    if (name == "type")
        entry.isSeparator = reader.text() == "separator";
    else if (name == "label")
        entry.label = readLabel(reader);
    else if (name == "enabled")
        entry.isEnabled = reader.boolean().value_or(true);
    else if (name == "visible")
        entry.isVisible = reader.boolean().value_or(true);
    else if (name == "toggle-type")
        entry.mark = readMark(reader);
    else if (name == "toggle-state")
        entry.markState = readMarkState(reader);
    else if (name == "shortcut")
        entry.shortcut = readShortcut(reader);
    else if (name == "children-display")
        entry.isSubmenu = reader.text() == "submenu";
    else if (name == "icon-name")
        target.icon.name = readIconName(reader);
    else if (name == "icon-data")
        target.icon.data = readData(reader);
}

/// As if the program had never set it.
void resetProperty(const std::string& name, const Target& target) {
    auto& entry = target.entry;
    const ExportedMenuEntry fresh;
    if (name == "type")
        entry.isSeparator = fresh.isSeparator;
    else if (name == "label")
        entry.label = fresh.label;
    else if (name == "enabled")
        entry.isEnabled = fresh.isEnabled;
    else if (name == "visible")
        entry.isVisible = fresh.isVisible;
    else if (name == "toggle-type")
        entry.mark = fresh.mark;
    else if (name == "toggle-state")
        entry.markState = fresh.markState;
    else if (name == "shortcut")
        entry.shortcut = fresh.shortcut;
    else if (name == "children-display")
        entry.isSubmenu = fresh.isSubmenu;
    else if (name == "icon-name")
        target.icon.name.clear();
    else if (name == "icon-data")
        target.icon.data.clear();
}

class LayoutReader {
public:
    explicit LayoutReader(sd_bus_message* message) : reader_(message) {}

    std::optional<MenuLayout> read() {
        ExportedMenuEntry root;
        reader_.skip();
        if (reader_.hasFailed() || !readEntry(root, 0))
            return std::nullopt;
        layout_.setRoot(std::move(root));
        return std::move(layout_);
    }

private:
    /// False where the entry is to be left out.
    bool readEntry(ExportedMenuEntry& entry, int depth) {
        bool isWanted = false;
        reader_.structure([&] {
            const auto id = reader_.integer();
            entry.id = static_cast<std::int32_t>(id.value_or(0));
            isWanted = id && depth <= deepestMenu && seen_.insert(entry.id).second;
            if (!isWanted)
                return;
            MenuIcon icon;
            reader_.dictionary([&](const std::string& name) { readProperty(reader_, name, {entry, icon}); });
            layout_.setIcon(entry.id, std::move(icon));
            readChildren(entry, depth + 1);
        });
        return isWanted;
    }

    void readChildren(ExportedMenuEntry& entry, int depth) {
        reader_.array([&] {
            // What has been read so far is shown. The root is no entry.
            if (seen_.size() > mostMenuEntries) {
                reader_.abandon();
                return false;
            }
            reader_.variant([&] {
                ExportedMenuEntry child;
                if (readEntry(child, depth))
                    entry.children.push_back(std::move(child));
            });
            return true;
        });
    }

    MessageReader reader_;
    MenuLayout layout_;
    std::set<std::int32_t> seen_;
};

}  // namespace

void MenuLayout::setRoot(ExportedMenuEntry root) {
    root_ = std::move(root);
    entries_.clear();
    addEntriesOf(root_);
}

void MenuLayout::addEntriesOf(ExportedMenuEntry& parent) {
    for (auto& child : parent.children) {
        entries_[child.id] = &child;
        addEntriesOf(child);
    }
}

ExportedMenuEntry* MenuLayout::find(std::int32_t id) {
    const auto found = entries_.find(id);
    if (found != entries_.end())
        return found->second;
    return id == root_.id ? &root_ : nullptr;
}

void MenuLayout::setIcon(std::int32_t id, MenuIcon icon) {
    takeIcon(id);
    if (icon.isEmpty() || iconBytes_ + icon.size() > mostIconBytesOfMenu)
        return;
    iconBytes_ += icon.size();
    icons_[id] = std::move(icon);
}

MenuIcon MenuLayout::takeIcon(std::int32_t id) {
    auto taken = icons_.extract(id);
    if (taken.empty())
        return {};
    iconBytes_ -= taken.mapped().size();
    return std::move(taken.mapped());
}

std::optional<MenuLayout> readMenuLayout(sd_bus_message* message) {
    return LayoutReader(message).read();
}

MenuChanges applyMenuChanges(sd_bus_message* message, MenuLayout& layout, std::size_t most) {
    MessageReader reader(message);
    MenuChanges changes;
    const auto eachEntry = [&](const auto& readChanges) {
        reader.array([&] {
            if (changes.count == most) {
                changes.isComplete = false;
                reader.abandon();
                return false;
            }
            ++changes.count;
            reader.structure([&] {
                const auto id = reader.integer();
                auto* entry = id ? layout.find(static_cast<std::int32_t>(*id)) : nullptr;
                if (!entry)
                    return;
                MenuIcon icon = layout.takeIcon(entry->id);
                readChanges(Target{*entry, icon});
                layout.setIcon(entry->id, std::move(icon));
                changes.entries.insert(entry->id);
            });
            return true;
        });
    };
    eachEntry([&](const Target& target) {
        reader.dictionary([&](const std::string& name) { readProperty(reader, name, target); });
    });
    eachEntry([&](const Target& target) {
        reader.array([&] {
            resetProperty(reader.text().value_or(""), target);
            return true;
        });
    });
    return changes;
}

}  // namespace velmo::status_notifier
