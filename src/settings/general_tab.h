#pragma once

#include "platform/view.h"
#include "preferences/preferences.h"
#include "system/login_item_manager.h"

namespace velmo {

class GeneralTab {
public:
    /// Both outlive the tab.
    GeneralTab(Preferences& preferences, LoginItemManager& loginItem)
        : preferences_(preferences), loginItem_(loginItem) {}

    View body() const;

private:
    static View howToUse();
    View toggleIcon() const;
    View general() const;

    Preferences& preferences_;
    LoginItemManager& loginItem_;
};

}  // namespace velmo
