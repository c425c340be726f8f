#include "item_properties.h"

#include "linux/cut_text.h"
#include "linux/dbus/message_reader.h"
#include "linux/status_notifier/icon_pixmap.h"

#include <functional>
#include <map>
#include <set>
#include <string>

namespace velmo::status_notifier {

namespace {

using dbus::MessageReader;

/// In bytes: somewhat more than is shown, so that it can be told that there is more.
constexpr std::size_t mostOfLine = 500;
constexpr std::size_t mostOfDescription = 5000;
constexpr std::size_t longestPath = 4096;
/// What a message that could not be read to its end counts as.
constexpr std::size_t unreadableMessage = std::size_t{1} << 24;

class PropertyReader {
public:
    PropertyReader(sd_bus_message* message, int iconSide, int overlaySide)
        : reader_(message), iconSide_(iconSide), overlaySide_(overlaySide) {}

    ItemProperties read() {
        const auto& table = readers();
        reader_.dictionary([&](const std::string& name) {
            // A property that comes again would be read, and its pictures scaled, again.
            if (const auto found = table.find(name); found != table.end() && read_.insert(name).second)
                found->second(*this);
        });
        properties_.messageBytes = reader_.hasFailed() ? unreadableMessage : reader_.bytesRead();
        return std::move(properties_);
    }

private:
    using Read = std::function<void(PropertyReader&)>;

    static const std::map<std::string, Read>& readers() {
        static const auto text = [](std::string ItemProperties::*member) {
            return [member](PropertyReader& self) { self.properties_.*member = self.readText(mostOfLine); };
        };
        static const auto name = [](ItemPicture ItemProperties::*picture) {
            return [picture](PropertyReader& self) { (self.properties_.*picture).name = self.readPath(); };
        };
        static const auto pixmap = [](ItemPicture ItemProperties::*picture, int PropertyReader::*side) {
            return [picture, side](PropertyReader& self) {
                (self.properties_.*picture).pixmap = self.readPixmap(self.*side);
            };
        };
        static const std::map<std::string, Read> table = {
            {"Id", text(&ItemProperties::id)},
            {"Title", text(&ItemProperties::title)},
            {"IconThemePath", [](PropertyReader& self) { self.properties_.iconThemePath = self.readPath(); }},
            {"Status", [](PropertyReader& self) { self.readStatus(); }},
            {"IconName", name(&ItemProperties::icon)},
            {"AttentionIconName", name(&ItemProperties::attentionIcon)},
            {"OverlayIconName", name(&ItemProperties::overlayIcon)},
            {"IconPixmap", pixmap(&ItemProperties::icon, &PropertyReader::iconSide_)},
            {"AttentionIconPixmap", pixmap(&ItemProperties::attentionIcon, &PropertyReader::iconSide_)},
            {"OverlayIconPixmap", pixmap(&ItemProperties::overlayIcon, &PropertyReader::overlaySide_)},
            {"ToolTip", [](PropertyReader& self) { self.readToolTip(); }},
            {"Menu", [](PropertyReader& self) { self.readMenu(); }},
            {"ItemIsMenu",
             [](PropertyReader& self) {
                 self.properties_.itemIsMenu = self.reader_.boolean().value_or(false);
             }},
        };
        return table;
    }

    std::string readText(std::size_t most) { return std::string(cutText(reader_.text().value_or(""), most)); }

    /// What the beginning of a path leads to is something else.
    std::string readPath() {
        const auto path = reader_.text().value_or("");
        return path.size() <= longestPath ? path : std::string();
    }

    void readStatus() {
        const auto status = reader_.text();
        if (status == "Passive")
            properties_.status = ItemStatus::passive;
        else if (status == "NeedsAttention")
            properties_.status = ItemStatus::needsAttention;
    }

    std::optional<Bitmap> readPixmap(int side) {
        const auto pixmaps = readIconPixmaps(reader_);
        const auto* best = bestIconPixmap(pixmaps, side);
        return best ? std::optional(scaledIcon(*best, side)) : std::nullopt;
    }

    /// An icon's name, its pixmaps, title and description. The icon is the one that the pointer rests on.
    void readToolTip() {
        reader_.structure([this] {
            reader_.skip();
            reader_.skip();
            properties_.toolTipTitle = readText(mostOfLine);
            properties_.toolTipDescription = readText(mostOfDescription);
        });
    }

    /// Some programs without a menu name one that does not exist.
    void readMenu() {
        const auto path = readPath();
        if (path.starts_with('/') && path != "/" && path != "/NO_DBUSMENU" &&
            sd_bus_object_path_is_valid(path.c_str()) > 0)
            properties_.menuPath = path;
    }

    MessageReader reader_;
    int iconSide_;
    int overlaySide_;
    std::set<std::string> read_;
    ItemProperties properties_;
};

}  // namespace

ItemProperties readItemProperties(sd_bus_message* message, int iconSide, int overlaySide) {
    return PropertyReader(message, iconSide, overlaySide).read();
}

}  // namespace velmo::status_notifier
