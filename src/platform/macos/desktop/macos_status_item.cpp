#include "macos_status_item.h"

#include "kept_position.h"

namespace velmo::macos {

MacosStatusItem::MacosStatusItem(double length) : item_(NSStatusBar::system().statusItem(length)) {
    if (const NSStatusBarButton button = item_.button())
        button_.emplace(button);
}

MacosStatusItem::~MacosStatusItem() {
    keepPosition(autosaveName_);
    NSStatusBar::system().remove(item_);
}

void MacosStatusItem::setAutosaveName(const std::string& name) {
    autosaveName_ = name;
    restorePosition(name);
    item_.setAutosaveName(NSString::from(name));
}

void MacosStatusItem::setVisible(bool visible) {
    if (visible)
        restorePosition(autosaveName_);
    else
        keepPosition(autosaveName_);
    item_.setVisible(visible);
}

}  // namespace velmo::macos
