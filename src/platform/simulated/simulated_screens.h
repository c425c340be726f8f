#pragma once

#include "screens.h"

#include <cstddef>
#include <cstdint>

namespace velmo {

/// At first one screen of 1440 x 900 points with a menu bar 26 points high.
class SimulatedScreens : public Screens {
public:
    SimulatedScreens();

    std::vector<Screen> all() const override { return screens_; }
    std::optional<Screen> main() const override;

    /// A screen with a menu bar at its top and nothing else reserved.
    static Screen withMenuBar(const Rect& frame, double menuBarHeight = 26);

    /// The primary screen first; may be empty. The first becomes the main one.
    void set(std::vector<Screen> screens);
    /// Which of the screens the user works on. Beyond the last: none is.
    void setMain(std::size_t index) { main_ = index; }
    /// Lets every menu bar slide away or come back, as where the user has it hidden automatically.
    void setMenuBarHidden(bool hidden);

    const std::vector<Screen>& list() const { return screens_; }
    /// Differs after each change.
    std::uint64_t generation() const { return generation_; }

private:
    void refresh();

    std::vector<Screen> asSet_;
    std::vector<Screen> screens_;
    std::size_t main_ = 0;
    bool menuBarHidden_ = false;
    std::uint64_t generation_ = 0;
};

}  // namespace velmo
