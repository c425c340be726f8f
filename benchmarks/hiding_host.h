#pragma once

#include "hosts.h"

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace velmo::desktop {

struct Place {
    int x = 0;
    int y = 0;
};

/// What reveals are measured of: a program with hidden items, and the button that shows and hides them.
class HidingHost {
public:
    virtual ~HidingHost() = default;
    HidingHost() = default;
    HidingHost(const HidingHost&) = delete;
    HidingHost& operator=(const HidingHost&) = delete;

    virtual Display& display() = 0;
    virtual std::string name() const = 0;
    virtual Kind kind() const { return Kind::tray; }
    /// The middle of its button, in pixels of the root window.
    virtual Place button() const = 0;
    /// From now on: all that has happened so far is none of the next change.
    virtual void beginToWatch() = 0;
    /// Returns once the last item is where it belongs.
    virtual void awaitChange(bool revealed) = 0;
    /// False where no click does.
    virtual bool hidesOnClick() const { return true; }
    /// Where no click does: returns once it has hidden the items again, which takes it seconds.
    virtual void letHide() {}
};

/// One whose items are windows, which it moves.
class WindowMover : public HidingHost {
public:
    void beginToWatch() override;
    void awaitChange(bool revealed) override;

protected:
    /// One for each item.
    void watch(const std::vector<xcb_window_t>& windows);

private:
    void note(const xcb_generic_event_t& event);

    std::size_t count_ = 0;
    std::set<xcb_window_t> shown_;
};

std::unique_ptr<HidingHost> makeBareMover(int items, const char* screen);
/// With hidden items of that kind, and one that stays.
std::unique_ptr<HidingHost> makeVelmo(Kind kind, int items, const char* screen);
/// The same.
std::unique_ptr<HidingHost> makeXfce(const Host& host, Kind kind, int items, const char* screen);
/// The same, with items of the bus: it hides no others.
std::unique_ptr<HidingHost> makeLxqt(const Host& host, int items, const char* screen);

}  // namespace velmo::desktop
