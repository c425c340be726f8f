#include "macos_status_item.h"

namespace velmo::macos {

MacosStatusItem::MacosStatusItem(double length) : item_(NSStatusBar::system().statusItem(length)) {
    if (const NSStatusBarButton button = item_.button())
        button_.emplace(button);
}

MacosStatusItem::~MacosStatusItem() {
    NSStatusBar::system().remove(item_);
}

}  // namespace velmo::macos
