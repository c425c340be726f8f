// How the content of an icon's window comes into the bar, where the server cannot blend the two by itself.

#include "tray_icon.h"

#include <xcb/composite.h>

#include <utility>

namespace velmo::x11 {

/// What is not in the bar has nothing to show: the server keeps it no longer than it is there.
void TrayIcon::willMove(const PixelRect& next) {
    const auto& present = place();
    isAbsent_ = !present;
    if (!composited_ || ended_ || !present || next.x + next.width <= 0)
        return;
    if (unpainted_ || next.width != present->width || next.height != present->height)
        nextLook_ = look(next);
}

void TrayIcon::moved() {
    if (nextLook_) {
        bar_.painting().setBackground(window(), *std::exchange(nextLook_, std::nullopt));
        // To the server, a window that has moved in another is damaged.
        if (const auto begin = std::exchange(resizing_, std::nullopt))
            paintedRequests_ = {*begin, subtractDamage()};
    } else if (std::exchange(isAbsent_, false)) {
        // Else it would be seen as it was when it left, before the bar of that time.
        paint();
    } else if (unpainted_) {
        painting_.request();
    }
}

/// Nobody else has done anything meanwhile.
bool TrayIcon::isOfStep(unsigned request) const {
    return request >= paintedRequests_.begin && request <= paintedRequests_.end;
}

unsigned TrayIcon::subtractDamage() const {
    return xcb_damage_subtract(connection_.raw(), damage_, XCB_NONE, XCB_NONE).sequence;
}

void TrayIcon::damaged() {
    unpainted_ = composited_ && !ended_;
    if (unpainted_)
        painting_.request();
}

void TrayIcon::paint() {
    // Off the screen nobody looks; the next report of damage waits for this one to be answered.
    if (!unpainted_ || ended_ || !place() || place()->x + place()->width <= 0)
        return;
    bar_.painting().setBackground(window(), look(*place()));
}

Pixmap TrayIcon::look(const PixelRect& place) {
    unpainted_ = false;
    xcb_connection_t* raw = connection_.raw();
    subtractDamage();
    const xcb_pixmap_t content = connection_.newId();
    xcb_composite_name_window_pixmap(raw, facts_.client, content);
    const auto& painting = bar_.painting();
    auto drawn = painting.overlay(bar_.backgroundTile(), place.width, place.height,
                                  {content, painting.formatOf(facts_.visual),
                                   trayIconArea(bar_.appearance(), place.width), facts_.client});
    xcb_free_pixmap(raw, content);
    return drawn;
}

}  // namespace velmo::x11
