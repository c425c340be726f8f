#pragma once

#include "event.h"
#include "macos/foundation/ns_user_defaults.h"
#include "platform/macos/doubles/record_class.h"
#include "platform/macos/macos_test.h"

#include <functional>
#include <string>
#include <vector>

namespace velmo::macos {

using doubles::member;
using doubles::numberMember;

/// The whole program, as it is on a Mac but for the doubles.
class MacosProgramTest : public MacosTest {
protected:
    MacosProgramTest();
    ~MacosProgramTest() override;

    /// Runs the program, and the function while it does.
    void run(const std::function<void()>& function);

    Object itemNamed(const std::string& name) const;
    double lengthOf(const std::string& name) const { return numberMember(itemNamed(name), "length"); }
    bool isRevealed() const { return lengthOf("Velmo.Divider") == 12; }
    std::string titleOf(const std::string& name) const;

    void click(const std::string& name, const Event& event);
    void clickToggle() { click("Velmo.Toggle", {.type = EventType::leftMouseUp}); }
    /// Those of the menu that was shown last.
    std::vector<std::string> menuTitles() const;
    void choose(const std::string& title) const;

    static NSUserDefaults defaults() { return NSUserDefaults::standard(); }
    static void setOn(const char* key) { defaults().setBool(true, NSString::from(key)); }

private:
    static void forgetSettings();
};

}  // namespace velmo::macos
