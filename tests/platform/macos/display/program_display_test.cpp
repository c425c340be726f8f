#include "platform/macos/display/program_display_test.h"

#include "app/run_application.h"
#include "event.h"
#include "macos/appkit/ns_text_field.h"
#include "macos/macos_desktop.h"
#include "platform/macos/doubles/array_of.h"
#include "platform/macos/doubles/menu_bar.h"
#include "platform/macos/doubles/record_class.h"

namespace velmo::macos {

ProgramDisplayStage::ProgramDisplayStage() {
    forgetSettings();
    system.windowList = doubles::arrayOf({});
}

ProgramDisplayStage::~ProgramDisplayStage() {
    forgetSettings();
}

void ProgramDisplayStage::run(const std::function<void(const Platform&)>& function) {
    const MacosDesktop desktop;
    system.whileApplicationRuns = [&] { function(desktop.platform()); };
    runApplication(desktop.platform());
}

NSButton ProgramDisplayStage::buttonOf(const std::string& item) {
    return as<NSButton>(doubles::member(doubles::itemNamed(item), "button"));
}

void ProgramDisplayStage::click(const std::string& item) {
    doubles::click(buttonOf(item), {.type = EventType::leftMouseUp});
    runFor(0.2);
}

NSWindow ProgramDisplayStage::shownPanel() const {
    const auto windows =
        Message<"NSApplication", false, "windows", NSArray>::send(NSApplication::shared().get());
    for (const NSWindow& window : windows.all<NSWindow>()) {
        const auto label = system.accessibilityLabels.find(window.get());
        if (window.isVisible() && label != system.accessibilityLabels.end() &&
            label->second == "Hidden items")
            return window;
    }
    return {};
}

NSView ProgramDisplayStage::shownCalendar() {
    const auto windows =
        Message<"NSApplication", false, "windows", NSArray>::send(NSApplication::shared().get());
    for (const NSWindow& window : windows.all<NSWindow>()) {
        if (!window.isVisible())
            continue;
        for (const NSTextField& label : allBelow<NSTextField>(contentOf(window))) {
            if (label.stringValue().text().starts_with("Week "))
                return contentOf(window);
        }
    }
    return {};
}

std::string ProgramDisplayStage::textFor(const char* key) {
    return defaults().stringForKey(NSString::from(key)).text();
}

}  // namespace velmo::macos
