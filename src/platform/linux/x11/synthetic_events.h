#pragma once

#include "accessibility.h"
#include "event_poster.h"
#include "linux/x11/connection.h"
#include "linux/x11/held_modifiers.h"
#include "linux/x11/screen_list.h"

#include <utility>

namespace velmo::x11 {

/// Makes mouse events by the extension XTEST. Whoever may use that may act on all programs of the display.
class SyntheticEvents : public EventPoster, public Accessibility {
public:
    SyntheticEvents(Connection& connection, const ScreenList& screens, const Modifiers& modifiers);

    bool isProcessTrusted() const override;
    /// An X server asks nobody.
    bool isProcessTrusted(bool /*prompts*/) override { return std::as_const(*this).isProcessTrusted(); }
    /// A press and its release are without modifiers, whatever keys the user holds.
    void postMouseEvent(EventType type, const Point& location) override;

private:
    bool hasExtension() const;
    void movePointer(const Point& location) const;

    Connection& connection_;
    const ScreenList& screens_;
    HeldModifiers heldModifiers_;
};

}  // namespace velmo::x11
