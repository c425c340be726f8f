#include "view_host.h"

#include "control_layout.h"

#include <cmath>
#include <utility>

namespace velmo::macos {

void ViewHost::setContent(const View& content) {
    const bool looksTheSame = content == content_ && !root_.empty();
    content_ = content;
    apply();
    if (!looksTheSame)
        layOut();
}

void ViewHost::apply() {
    ViewContext context;
    context.showTabs = showTabs_;
    context.reassert = lifetime_.guard([this] { reassert(); });
    root_.update({content_}, context, surface_.view());
}

/// Once for all that the user's action has led to, and behind what the action has posted: that may well
/// describe what the user did, or end what it came from.
void ViewHost::reassert() {
    if (std::exchange(isStale_, true))
        return;
    loop_.post(lifetime_.guard([this] {
        isStale_ = false;
        apply();
    }));
}

Size ViewHost::fittingSize() const {
    if (root_.empty())
        return {};
    const Size size = root_[0].sizeThatFits({unlimited, unlimited});
    // Windows have whole points only.
    return {std::ceil(size.width), std::ceil(size.height)};
}

void ViewHost::place(const Rect& area) {
    macos::place(surface_.view(), area);
    layOutFor({area.width, area.height});
}

void ViewHost::layOutFor(const Size& size) {
    room_ = size;
    layOut();
}

void ViewHost::layOut() {
    if (root_.empty() || room_.width <= 0 || room_.height <= 0)
        return;
    Size size = root_[0].sizeThatFits(room_);
    if (root_[0].expands(Axis::horizontal))
        size.width = room_.width;
    if (root_[0].expands(Axis::vertical))
        size.height = room_.height;
    root_[0].place({0, 0, size.width, size.height});
}

}  // namespace velmo::macos
