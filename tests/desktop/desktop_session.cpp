#include "desktop_session.h"

#include "built_files.h"
#include "process_figures.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <thread>

namespace velmo::desktop {

namespace {

constexpr int awayFromBarX = 300;
constexpr int awayFromBarY = 400;

std::string readFile(const std::filesystem::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

bool eventually(const std::function<bool()>& condition, milliseconds limit) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(milliseconds(10));
    }
    return true;
}

bool stays(const std::function<bool()>& condition, milliseconds time) {
    return !eventually([&] { return !condition(); }, time);
}

void DesktopSession::SetUp() {
    std::string pattern = std::filesystem::temp_directory_path() / "velmo-desktop-XXXXXX";
    home_ = mkdtemp(pattern.data());
    environment_ = {{"HOME", home_},
                    {"XDG_CONFIG_HOME", home_ / "config"},
                    {"XDG_CACHE_HOME", home_ / "cache"},
                    {"XDG_RUNTIME_DIR", home_},
                    {"NO_AT_BRIDGE", "1"},
                    {"GTK_A11Y", "none"},
                    {"LC_ALL", "C.UTF-8"},
                    // Nothing of the machine's own session takes part.
                    {"DBUS_SESSION_BUS_ADDRESS", "disabled:"}};
    writeDefaults(nlohmann::json::object());
}

void DesktopSession::TearDown() {
    // However the test has treated it, it ends in order and without a word.
    if (velmo_ && velmo_->isRunning())
        stopVelmo();
    velmo_.reset();
    observer_.reset();
    while (!programs_.empty())
        programs_.pop_back();
    windowManager_.reset();
    bus_.reset();
    server_.reset();
    std::error_code error;
    std::filesystem::remove_all(home_, error);
}

void DesktopSession::startServer(const std::string& screen, const std::vector<std::string>& options) {
    std::vector<std::string> command = {"Xvfb", "-screen", "0", screen};
    command.insert(command.end(), options.begin(), options.end());
    startServerBy(std::move(command));
}

void DesktopSession::startServerBy(std::vector<std::string> command) {
    // The server chooses a free display and writes its number into the file.
    const auto numberFile = home_ / "display";
    const int descriptor = open(numberFile.c_str(), O_RDWR | O_CREAT, 0600);
    command.insert(command.end(), {"-displayfd", std::to_string(descriptor), "-nolisten", "tcp", "-noreset"});
    server_.emplace(run(command));
    close(descriptor);
    ASSERT_TRUE(eventually([&] { return readFile(numberFile).ends_with("\n"); }));
    std::string number = readFile(numberFile);
    number.pop_back();
    environment_["DISPLAY"] = ":" + number;
    observer_ = std::make_unique<XObserver>(":" + number);
    movePointer(awayFromBarX, awayFromBarY);
}

void DesktopSession::startSessionBus() {
    if (!bus_)
        bus_.emplace(home_, environment_);
    bus_->start();
    environment_["DBUS_SESSION_BUS_ADDRESS"] = bus_->address();
}

void DesktopSession::startDesktop() {
    startServer();
    startWindowManager();
    startSessionBus();
}

void DesktopSession::stopServer() {
    observer_.reset();
    server_->end();
}

void DesktopSession::addMonitor(const std::string& name, const Area& area, const std::string& output) const {
    // Millimetres beside the pixels.
    const auto side = [](int pixels) { return std::to_string(pixels) + "/" + std::to_string(pixels / 4); };
    outputOf({"xrandr", "--setmonitor", name,
              side(area.width) + "x" + side(area.height) + "+" + std::to_string(area.x) + "+" +
                  std::to_string(area.y),
              output},
             environment_);
}

void DesktopSession::removeMonitor(const std::string& name) const {
    outputOf({"xrandr", "--delmonitor", name}, environment_);
}

void DesktopSession::addToResources(const std::string& text) const {
    xcb_change_property(x().raw(), XCB_PROP_MODE_APPEND, x().root(), XCB_ATOM_RESOURCE_MANAGER,
                        XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(text.size()), text.data());
    xcb_flush(x().raw());
}

void DesktopSession::writeDefaults(const nlohmann::json& values) const {
    nlohmann::json complete = values;
    // The first launch of all opens the settings, which is a matter for tests of its own.
    complete.emplace("hasCompletedFirstLaunch", true);
    std::filesystem::create_directories(defaultsFile().parent_path());
    std::ofstream(defaultsFile()) << complete.dump(2);
}

nlohmann::json DesktopSession::clockDefaults() {
    return {{"clockEnabled", true},
            {"clockFormat", "HH:mm"},
            {"statusItemOrder", {"Velmo.Toggle", "Velmo.Clock", "Velmo.Divider"}}};
}

nlohmann::json DesktopSession::readDefaults() const {
    return nlohmann::json::parse(readFile(defaultsFile()));
}

std::vector<std::string> DesktopSession::savedOrder() const {
    return readDefaults().value("statusItemOrder", std::vector<std::string>());
}

void DesktopSession::startVelmo() {
    velmo_.emplace(run({velmoProgram}, home_ / "velmo.err"));
    ASSERT_TRUE(eventually([&] {
        const auto toggle = x().windowTitled("Velmo.Toggle");
        return toggle && x().isViewable(*toggle) && isOnScreen(*toggle);
    }));
}

void DesktopSession::stopVelmo() {
    velmo_->signal(SIGTERM);
    EXPECT_EQ(velmo_->wait(milliseconds(5000)), 0);
    EXPECT_EQ(readFile(home_ / "velmo.err"), "") << "Velmo is silent";
    velmo_.reset();
}

bool DesktopSession::comesToRest(milliseconds quiet) {
    return eventually([&] {
        const SleepCounter sleeps(velmo().id());
        std::this_thread::sleep_for(quiet);
        return sleeps.count() == 0 && isAsleep(velmo().id());
    });
}

bool DesktopSession::hasLoaded(const std::string& library) {
    return readFile("/proc/" + std::to_string(velmo().id()) + "/maps").find(library) != std::string::npos;
}

ChildProcess DesktopSession::run(const std::vector<std::string>& command,
                                 const std::string& errorFile) const {
    return {command, environment_, errorFile};
}

xcb_window_t DesktopSession::startTrayProgram(const std::string& command, const std::string& windowClass) {
    programs_.push_back(run({command}));
    return iconOf(windowClass);
}

xcb_window_t DesktopSession::iconOf(const std::string& windowClass) const {
    std::optional<xcb_window_t> icon;
    const auto docked = [&] {
        icon = x().windowOfClass(bar(), windowClass);
        return icon && x().isViewable(*icon);
    };
    EXPECT_TRUE(eventually(docked, milliseconds(20000))) << windowClass << " docks its icon";
    return icon.value_or(xcb_window_t{XCB_WINDOW_NONE});
}

void DesktopSession::installNotingPrograms(const std::vector<std::string>& names) {
    const auto programs = home_ / "programs";
    std::filesystem::create_directories(programs);
    for (const auto& name : names) {
        std::ofstream(programs / name) << "#!/bin/sh\necho \"${0##*/}\" \"$@\" >>\"$HOME/started\"\n";
        std::filesystem::permissions(programs / name, std::filesystem::perms::owner_all);
    }
    environment_["PATH"] = programs.string() + ":" + std::getenv("PATH");
}

std::string DesktopSession::notedStarts() const {
    return readFile(home_ / "started");
}

xcb_window_t DesktopSession::startOrdinaryWindow(const std::string& title, const std::string& corner) {
    programs_.push_back(run({"xterm", "-geometry", "60x12" + corner, "-title", title}));
    std::optional<xcb_window_t> window;
    EXPECT_TRUE(eventually([&] { return (window = x().windowTitled(title)) && x().isViewable(*window); }));
    return window.value_or(xcb_window_t{XCB_WINDOW_NONE});
}

void DesktopSession::xdotool(const std::vector<std::string>& arguments) const {
    std::vector<std::string> command = {"xdotool"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    outputOf(command, environment_);
}

void DesktopSession::movePointer(int pointerX, int pointerY) const {
    xdotool({"mousemove", std::to_string(pointerX), std::to_string(pointerY)});
}

void DesktopSession::click(xcb_window_t window, int button) const {
    const auto place = x().area(window).value_or(Area{});
    xdotool({"mousemove", std::to_string(place.midX()), std::to_string(place.midY()), "click",
             std::to_string(button)});
}

void DesktopSession::clickHolding(const std::string& key, xcb_window_t window) const {
    const auto place = x().area(window).value_or(Area{});
    xdotool({"mousemove", std::to_string(place.midX()), std::to_string(place.midY()), "keydown", key, "click",
             "1", "keyup", key});
}

void DesktopSession::superDrag(xcb_window_t window, int targetX) const {
    const auto place = x().area(window);
    superPressAndMove(window, targetX);
    EXPECT_TRUE(eventually([&] { return x().area(window) != place; })) << "it follows the pointer";
    releaseSuper();
}

void DesktopSession::superPressAndMove(xcb_window_t window, int targetX) const {
    const auto place = x().area(window).value_or(Area{});
    std::vector<std::string> steps = {"mousemove",
                                      std::to_string(place.midX()),
                                      std::to_string(place.midY()),
                                      "keydown",
                                      "Super_L",
                                      "mousedown",
                                      "1"};
    constexpr int stepCount = 10;
    for (int step = 1; step <= stepCount; ++step) {
        const int stepX = place.midX() + (targetX - place.midX()) * step / stepCount;
        steps.insert(steps.end(), {"mousemove", std::to_string(stepX), "13"});
    }
    xdotool(steps);
}

void DesktopSession::releaseSuper() const {
    xdotool({"mouseup", "1", "keyup", "Super_L"});
}

xcb_window_t DesktopSession::bar() const {
    return x().parent(toggle());
}

xcb_window_t DesktopSession::toggle() const {
    return x().windowTitled("Velmo.Toggle").value_or(xcb_window_t{XCB_WINDOW_NONE});
}

xcb_window_t DesktopSession::activeWindow() const {
    const auto active = x().cardinals(x().root(), "_NET_ACTIVE_WINDOW");
    return active.empty() ? xcb_window_t{XCB_WINDOW_NONE} : active.front();
}

xcb_window_t DesktopSession::divider() const {
    return x().windowTitled("Velmo.Divider").value_or(xcb_window_t{XCB_WINDOW_NONE});
}

xcb_window_t DesktopSession::alwaysHiddenDivider() const {
    return x().windowTitled("Velmo.AlwaysHiddenDivider").value_or(xcb_window_t{XCB_WINDOW_NONE});
}

xcb_window_t DesktopSession::itemTitled(const std::string& title) const {
    for (const auto window : x().children(bar())) {
        if (x().property(window, "_NET_WM_NAME") == title)
            return window;
    }
    return XCB_WINDOW_NONE;
}

std::optional<xcb_window_t> DesktopSession::shown(const std::string& title) const {
    const auto window = x().windowTitled(title);
    return window && x().isViewable(*window) ? window : std::nullopt;
}

bool DesktopSession::isOnScreen(xcb_window_t window) const {
    const auto place = x().area(window);
    const auto screen = x().area(x().root());
    return place && screen && x().isViewable(window) && place->x + place->width > 0 &&
           place->x < screen->width;
}

bool DesktopSession::isHidden(xcb_window_t window) const {
    const auto place = x().area(window);
    return place && x().isViewable(window) && place->x + place->width <= 0;
}

bool DesktopSession::dividerIsExpanded() const {
    const auto place = x().area(divider());
    return place && place->width == 1;
}

std::optional<Area> DesktopSession::panel() const {
    const auto window = shown("Velmo.Panel");
    return window ? x().area(*window) : std::nullopt;
}

void DesktopSession::openPanel() const {
    click(toggle());
    ASSERT_TRUE(eventually([&] { return panel().has_value(); }));
}

std::optional<xcb_window_t> DesktopSession::settingsWindow() const {
    return shown("Velmo Settings");
}

void DesktopSession::closeWindow(xcb_window_t window) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = x().atom("WM_PROTOCOLS");
    message.data.data32[0] = x().atom("WM_DELETE_WINDOW");
    xcb_send_event(x().raw(), 0, window, 0, reinterpret_cast<const char*>(&message));
    xcb_flush(x().raw());
}

}  // namespace velmo::desktop
