#include "menu_layout.h"

#include "linux/dbus/message_reader.h"

#include <cctype>
#include <set>
#include <utility>

namespace velmo::status_notifier {

namespace {

using dbus::MessageReader;

constexpr std::size_t longestLabel = 500;
constexpr std::size_t mostIconBytes = 1 << 16;

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
            if (keys.size() < longestLabel)
                keys += (keys.empty() ? "" : "+") + key;
            return true;
        });
        if (std::exchange(isFirst, false))
            shortcut = keys;
        return true;
    });
    return shortcut;
}

std::string readLabel(MessageReader& reader) {
    std::string label = reader.text().value_or("");
    if (label.size() > longestLabel) {
        std::size_t size = longestLabel;
        while (size > 0 && (static_cast<unsigned char>(label[size]) & 0xc0) == 0x80)
            --size;
        label.resize(size);
    }
    return label;
}

ExportedMenuEntry::Mark readMark(MessageReader& reader) {
    const auto type = reader.text();
    if (type == "checkmark")
        return ExportedMenuEntry::Mark::check;
    return type == "radio" ? ExportedMenuEntry::Mark::radio : ExportedMenuEntry::Mark::none;
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
        entry.isMarked = reader.integer() == 1;
    else if (name == "shortcut")
        entry.shortcut = readShortcut(reader);
    else if (name == "children-display")
        entry.isSubmenu = reader.text() == "submenu";
    else if (name == "icon-name")
        target.icon.name = reader.text().value_or("");
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
        entry.isMarked = fresh.isMarked;
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
        reader_.skip();
        if (reader_.hasFailed() || !readEntry(layout_.root, 0))
            return std::nullopt;
        return std::move(layout_);
    }

private:
    /// False where the entry is to be left out.
    bool readEntry(ExportedMenuEntry& entry, int depth) {
        bool isWanted = false;
        reader_.structure([&] {
            const auto id = reader_.integer();
            isWanted = id && depth <= deepestMenu && seen_.insert(*id).second;
            if (!isWanted)
                return;
            entry.id = static_cast<std::int32_t>(*id);
            MenuIcon icon;
            reader_.dictionary([&](const std::string& name) { readProperty(reader_, name, {entry, icon}); });
            if (!icon.isEmpty())
                layout_.icons.emplace(entry.id, std::move(icon));
            readChildren(entry, depth + 1);
        });
        return isWanted;
    }

    void readChildren(ExportedMenuEntry& entry, int depth) {
        reader_.array([&] {
            // What has been read so far is shown.
            if (count_ >= mostMenuEntries) {
                reader_.abandon();
                return false;
            }
            reader_.variant([&] {
                ExportedMenuEntry child;
                if (!readEntry(child, depth))
                    return;
                ++count_;
                entry.children.push_back(std::move(child));
            });
            return true;
        });
    }

    MessageReader reader_;
    MenuLayout layout_;
    std::set<std::int64_t> seen_;
    std::size_t count_ = 0;
};

ExportedMenuEntry* findEntry(ExportedMenuEntry& entry, std::int32_t id) {
    if (entry.id == id)
        return &entry;
    for (auto& child : entry.children) {
        if (auto* found = findEntry(child, id))
            return found;
    }
    return nullptr;
}

}  // namespace

ExportedMenuEntry* MenuLayout::find(std::int32_t id) {
    return findEntry(root, id);
}

std::optional<MenuLayout> readMenuLayout(sd_bus_message* message) {
    return LayoutReader(message).read();
}

bool applyMenuChanges(sd_bus_message* message, MenuLayout& layout) {
    MessageReader reader(message);
    bool concerns = false;
    const auto eachEntry = [&](const auto& readChanges) {
        reader.array([&] {
            reader.structure([&] {
                const auto id = reader.integer();
                auto* entry = id ? layout.find(static_cast<std::int32_t>(*id)) : nullptr;
                if (!entry)
                    return;
                concerns = true;
                readChanges(Target{*entry, layout.icons[entry->id]});
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
    return concerns;
}

}  // namespace velmo::status_notifier
