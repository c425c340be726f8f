#pragma once

#include "macos/foundation/ns_user_defaults.h"
#include "platform.h"
#include "platform/macos/display/display_test.h"

namespace velmo::macos {

/// The whole program with the windows, views and controls of GNUstep.
class ProgramDisplayStage : public DisplayStage {
public:
    ProgramDisplayStage();
    ProgramDisplayStage(const ProgramDisplayStage&) = delete;
    ProgramDisplayStage& operator=(const ProgramDisplayStage&) = delete;
    ~ProgramDisplayStage();

    /// Runs the program, and the function while it does.
    void run(const std::function<void(const Platform&)>& function);
    static NSButton buttonOf(const std::string& item);
    static void click(const std::string& item);
    /// None while it is not shown.
    NSWindow shownPanel() const;
    /// The content of the one popover; none while it is not shown.
    static NSView shownCalendar();

    static NSUserDefaults defaults() { return NSUserDefaults::standard(); }
    static bool isOn(const char* key) { return defaults().boolForKey(NSString::from(key)); }
    static std::string textFor(const char* key);
};

using ProgramDisplayTest = StageTest<ProgramDisplayStage>;

}  // namespace velmo::macos
