#include "hover_tool_tip.h"

#include <utility>

namespace velmo::x11 {

namespace {

/// How long the pointer rests on an item before its tooltip appears.
constexpr Seconds toolTipPause = 0.7;

}  // namespace

HoverToolTip::HoverToolTip(MenuBar& bar, const BarItem& item, std::function<void(int x, int y)> show)
    : bar_(bar), item_(item), show_(std::move(show)) {}

HoverToolTip::~HoverToolTip() {
    end();
}

void HoverToolTip::pointerEntered() {
    end();
    // Whoever comes here may want a menu next.
    bar_.toolkit().prepare();
    delay_ = bar_.connection().loop().schedule(toolTipPause, lifetime_.guard([this] { show(); }));
}

void HoverToolTip::end() {
    if (delay_)
        delay_->invalidate();
    bar_.toolkit().hideToolTip();
}

void HoverToolTip::show() const {
    if (!item_.place() || bar_.toolkit().isMenuOpen() || bar_.toolkit().isExportedMenuOpen())
        return;
    const PixelRect area = bar_.onRoot(*item_.place());
    show_(area.x, area.y + area.height);
}

}  // namespace velmo::x11
