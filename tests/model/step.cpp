#include "model/step.h"

#include "model/menu_kind.h"

#include <iomanip>
#include <sstream>

namespace velmo {

namespace {

void describeButton(std::ostream& out, const Step& step) {
    out << (step.rightButton ? " right" : " left") << " flags 0x" << std::hex << step.flags << std::dec;
}

bool mayOpenMenu(const Step& step) {
    return step.rightButton || (step.trigger == Trigger::handToggleEvent);
}

void describeMenuPlan(std::ostream& out, const MenuPlan& plan) {
    out << "; a menu stays open for " << plan.nanoseconds << " ns";
    if (plan.shortcut)
        out << ", shortcut " << *plan.shortcut << " is pressed";
    out << ", choice " << static_cast<int>(plan.choice);
}

void describeParameters(std::ostream& out, const Step& step) {
    switch (step.trigger) {
        case Trigger::advance:
            out << ' ' << step.nanoseconds << " ns";
            break;
        case Trigger::clickItem:
        case Trigger::pressItem:
        case Trigger::releaseItem:
            out << ' ' << nameOf(step.item);
            describeButton(out, step);
            break;
        case Trigger::otherButtonOnItem:
            out << ' ' << nameOf(step.item);
            break;
        case Trigger::clickAtPointer:
        case Trigger::pressAtPointer:
        case Trigger::releaseAtPointer:
            describeButton(out, step);
            break;
        case Trigger::handToggleEvent:
            out << " type " << static_cast<std::uint32_t>(step.eventType);
            describeButton(out, step);
            break;
        case Trigger::movePointer:
        case Trigger::scroll:
            out << ' ' << step.x << ", " << step.y;
            break;
        case Trigger::setRehideDelay:
        case Trigger::scheduleRehideTimer:
        case Trigger::setThickness:
        case Trigger::setTimeOfDay:
            out << ' ' << step.x;
            break;
        case Trigger::openMenu:
            out << ' ' << menuKinds[step.choice].name;
            break;
        case Trigger::closeMenu:
        case Trigger::setClickAction:
        case Trigger::setToggleIconStyle:
        case Trigger::setScreens:
        case Trigger::setHotkey:
        case Trigger::setPanelHotkey:
        case Trigger::pressShortcut:
        case Trigger::reportPress:
        case Trigger::activateEntry:
            out << ' ' << step.choice;
            break;
        case Trigger::setCaptureTime:
            out << ' ' << step.choice << ", " << step.x << " s";
            break;
        case Trigger::setRefusal:
            out << ' ' << step.choice << (step.on ? " on, status " : " off, status ") << step.x;
            break;
        case Trigger::setScreenCapture:
        case Trigger::setTrusted:
        case Trigger::setRefreshPanelOnOpen:
        case Trigger::setWindowServer:
        case Trigger::setAutoRehide:
        case Trigger::setHideOnClickOutside:
        case Trigger::setShowOnHover:
        case Trigger::setShowOnScroll:
        case Trigger::setAlwaysHiddenEnabled:
        case Trigger::setClockEnabled:
        case Trigger::setMenuBarHidden:
            out << (step.on ? " on" : " off");
            break;
        case Trigger::runPosted:
        case Trigger::pressEscape:
        case Trigger::fireTimer:
        case Trigger::otherButtonElsewhere:
        case Trigger::revealForClockPlacement:
        case Trigger::applyRevealLevel:
        case Trigger::restartRehideTimer:
            break;
    }
}

}  // namespace

std::string describe(const Step& step) {
    std::ostringstream out;
    constexpr int digits = 17;
    out << std::setprecision(digits) << nameOf(step.trigger);
    describeParameters(out, step);
    if (mayOpenMenu(step))
        describeMenuPlan(out, step.menu);
    return out.str();
}

}  // namespace velmo
