#include "view_host.h"

#include "control_layout.h"

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
    return root_.empty() ? Size{} : root_[0].sizeThatFits({unlimited, unlimited});
}

void ViewHost::place(const Rect& area) {
    macos::place(surface_.view(), area);
    layOut();
}

void ViewHost::resize(const Size& size) {
    view().setFrameSize({size.width, size.height});
    layOut();
}

void ViewHost::layOut() {
    if (root_.empty())
        return;
    const Rect room = rectOf(surface_.view().bounds());
    if (room.width <= 0 || room.height <= 0)
        return;
    Size size = root_[0].sizeThatFits({room.width, room.height});
    if (root_[0].expands(Axis::horizontal))
        size.width = room.width;
    if (root_[0].expands(Axis::vertical))
        size.height = room.height;
    root_[0].place({0, 0, size.width, size.height});
}

}  // namespace velmo::macos
