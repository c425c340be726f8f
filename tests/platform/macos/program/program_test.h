#pragma once

#include "event.h"
#include "macos/foundation/ns_user_defaults.h"
#include "platform/macos/doubles/menu_bar.h"
#include "platform/macos/doubles/record_class.h"
#include "platform/macos/macos_test.h"

#include <functional>
#include <string>

namespace velmo::macos {

using doubles::member;
using doubles::numberMember;

/// The whole program, as it is on a Mac but for the doubles. There are no windows, and so no first launch.
class ProgramStage : public MacosStage {
public:
    ProgramStage();
    ProgramStage(const ProgramStage&) = delete;
    ProgramStage& operator=(const ProgramStage&) = delete;
    ~ProgramStage();

    /// Runs the program, and the function while it does.
    void run(const std::function<void()>& function);

    static Object buttonOf(const std::string& name) { return member(doubles::itemNamed(name), "button"); }
    static void click(const std::string& name, const Event& event) { doubles::click(buttonOf(name), event); }

    static NSUserDefaults defaults() { return NSUserDefaults::standard(); }
};

using MacosProgramTest = StageTest<ProgramStage>;

}  // namespace velmo::macos
