#include "hover_tool_tip.h"

#include <utility>

namespace velmo::x11 {

namespace {

/// How long the pointer rests on an item before its tooltip appears.
constexpr Seconds toolTipPause = 0.7;

}  // namespace

HoverToolTip::HoverToolTip(MenuBar& bar, const BarItem& item, std::function<std::string()> text,
                           ShowFunction showFunction)
    : bar_(bar), item_(item), text_(std::move(text)), showFunction_(showFunction) {}

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
    delay_.end();
    // There may be one of somebody else.
    if (!std::exchange(shown_, {}).empty())
        bar_.toolkit().hideToolTip();
}

void HoverToolTip::update() {
    if (shown_.empty())
        return;
    if (text_().empty())
        end();
    else
        show();
}

void HoverToolTip::show() {
    const auto text = text_();
    if (text.empty() || text == shown_ || !item_.place() || bar_.toolkit().isMenuOpen() ||
        bar_.toolkit().isExportedMenuOpen())
        return;
    shown_ = text;
    const PixelRect area = bar_.onRoot(*item_.place());
    (bar_.toolkit().*showFunction_)(text, area.x, area.y + area.height);
}

}  // namespace velmo::x11
