#include "macos_status_bar.h"

#include "macos_status_item.h"

namespace velmo::macos {

std::unique_ptr<StatusItem> MacosStatusBar::makeStatusItem(double length) {
    return std::make_unique<MacosStatusItem>(length);
}

double MacosStatusBar::thickness() const {
    return NSStatusBar::system().thickness();
}

}  // namespace velmo::macos
