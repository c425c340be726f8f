#pragma once

#include "accessibility.h"
#include "event_poster.h"
#include "lifetime.h"
#include "linux/x11/held_modifiers.h"
#include "linux/x11/menu_bar.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace velmo::x11 {

/// Makes mouse events by the extension XTEST. Whoever may use that may act on all programs of the display.
class SyntheticEvents : public EventPoster, public Accessibility {
public:
    explicit SyntheticEvents(MenuBar& bar);
    ~SyntheticEvents() override;
    SyntheticEvents(const SyntheticEvents&) = delete;
    SyntheticEvents& operator=(const SyntheticEvents&) = delete;

    bool isProcessTrusted() const override;
    /// An X server asks nobody.
    bool isProcessTrusted(bool /*prompts*/) override { return std::as_const(*this).isProcessTrusted(); }
    /// A press and its release are without modifiers, whatever keys the user holds. What is meant for the
    /// menu bar gets there whatever covers it, or nowhere.
    void postMouseEvent(EventType type, const Point& location) override;

private:
    void movePointer(const Point& pixel) const;
    void press(bool isInBar);
    void release();
    void fakeButton(std::uint8_t type) const;
    bool isBarUnderPointer() const;
    void liftBar();
    void lowerBar();

    MenuBar& bar_;
    Connection& connection_;
    HeldModifiers heldModifiers_;
    bool isPressed_ = false;
    /// Present while the bar is lifted.
    std::shared_ptr<Timer> lowering_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
