#include "linux/dbus/color_scheme.h"

#include "bus_session.h"

namespace velmo {

namespace {

constexpr const char* portalPath = "/org/freedesktop/portal/desktop";

class ColorSchemes : public BusSession {
protected:
    static void tell(desktop::BusProgram& program, std::uint32_t scheme) {
        program.emit(portalPath, "org.freedesktop.portal.Settings", "SettingChanged",
                     [scheme](auto* message) {
                         return sd_bus_message_append(message, "ssv", "org.freedesktop.appearance",
                                                      "color-scheme", "u", scheme);
                     });
    }
};

TEST_F(ColorSchemes, AreToldByThePortalAndByNobodyElse) {
    const auto portal = program();
    portal->addObject(portalPath);
    portal->requestName("org.freedesktop.portal.Desktop");
    std::unique_ptr<dbus::ColorScheme> schemes;
    std::vector<std::optional<bool>> told;
    dbus::SessionBus session(
        loop_,
        [&](const auto& bus) {
            schemes = std::make_unique<dbus::ColorScheme>(bus, [&](auto dark) { told.push_back(dark); });
        },
        [&] { schemes = nullptr; });
    session.start(bus_->address());
    ASSERT_TRUE(until([&] { return portal->callsOf("Read") > 0; }));
    const auto impostor = program();
    tell(*impostor, 1);
    runFor(0.3);
    EXPECT_TRUE(told.empty());
    tell(*portal, 1);
    ASSERT_TRUE(until([&] { return !told.empty(); }));
    EXPECT_EQ(told, std::vector{std::optional(true)});
}

}  // namespace

}  // namespace velmo
