#include "display.h"

#include "probe_window.h"
#include "timing.h"

#include <xcb/xcb_icccm.h>

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace velmo::desktop {

const char* nameOf(Kind kind) {
    return kind == Kind::tray ? "tray" : "bus";
}

std::string itemName(int number) {
    return "bench" + std::to_string(number);
}

Display::Display(const std::string& screen) {
    std::string pattern = std::filesystem::temp_directory_path() / "velmo-bench-XXXXXX";
    home_ = mkdtemp(pattern.data());
    environment_ = {{"HOME", home_},       {"XDG_CONFIG_HOME", home_}, {"XDG_RUNTIME_DIR", home_},
                    {"NO_AT_BRIDGE", "1"}, {"LC_ALL", "C.UTF-8"},      {"XDG_CACHE_HOME", home_}};
    bus_.emplace(home_, environment_);
    environment_["DBUS_SESSION_BUS_ADDRESS"] = bus_->address();
    bus_->start();
    const auto file = home_ / "display";
    const int descriptor = open(file.c_str(), O_RDWR | O_CREAT, 0600);
    server_.emplace(std::vector<std::string>{"Xvfb", "-displayfd", std::to_string(descriptor), "-screen", "0",
                                             screen, "-nolisten", "tcp", "-noreset"},
                    environment_);
    close(descriptor);
    std::string number;
    waitFor([&] { return static_cast<bool>(std::getline(std::ifstream(file), number)) && !number.empty(); },
            "the X server");
    environment_["DISPLAY"] = ":" + number;
    observer_.emplace(":" + number);
    writeDefaults({});
}

Display::~Display() {
    observer_.reset();
    windowManager_.reset();
    server_.reset();
    bus_.reset();
    std::error_code error;
    std::filesystem::remove_all(home_, error);
}

void Display::startWindowManager() {
    windowManager_.emplace(run({"openbox"}));
    const ProbeWindow probe(x());
    waitFor([&] { return probe.isManaged(); }, "the window manager");
}

xcb_window_t Display::dock(int number) {
    xcb_connection_t* raw = x().raw();
    const xcb_window_t window = xcb_generate_id(raw);
    constexpr int side = 16;
    const std::uint32_t black = 0;
    xcb_create_window(raw, XCB_COPY_FROM_PARENT, window, x().root(), 0, 0, side, side, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &black);
    const std::string title = itemName(number);
    std::string wmClass = title;
    wmClass.push_back('\0');
    wmClass += "Bench";
    wmClass.push_back('\0');
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(wmClass.size()), wmClass.data());
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(title.size()), title.data());
    // Toolkits give an icon no room that does not say how much it needs.
    xcb_size_hints_t size{};
    xcb_icccm_size_hints_set_min_size(&size, side, side);
    xcb_icccm_set_wm_normal_hints(raw, window, &size);
    const std::uint32_t info[] = {0, 1};
    const auto xembed = x().atom("_XEMBED_INFO");
    xcb_change_property(raw, XCB_PROP_MODE_REPLACE, window, xembed, xembed, 32, 2, info);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = x().selectionOwner("_NET_SYSTEM_TRAY_S0");
    message.type = x().atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[2] = window;
    xcb_send_event(raw, 0, message.window, 0, reinterpret_cast<const char*>(&message));
    xcb_flush(raw);
    return window;
}

bool Display::isDocked(xcb_window_t window) const {
    return x().parent(window) != x().root() && x().isViewable(window);
}

xcb_window_t Display::awaitDocked(int number, xcb_window_t window) {
    constexpr double patience = 2000;
    for (int attempt = 0; attempt < 5; ++attempt) {
        const auto begin = Clock::now();
        while (millisecondsSince(begin) < patience) {
            if (isDocked(window))
                return window;
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
        xcb_destroy_window(x().raw(), window);
        window = dock(number);
    }
    throw std::runtime_error("no icon can be docked");
}

xcb_window_t Display::dockAndWait(int number) {
    return awaitDocked(number, dock(number));
}

std::vector<xcb_window_t> Display::dockAllAndWait(int count) {
    std::vector<xcb_window_t> windows;
    for (int number = 0; number < count; ++number)
        windows.push_back(dock(number));
    for (int number = 0; number < count; ++number)
        windows[static_cast<std::size_t>(number)] =
            awaitDocked(number, windows[static_cast<std::size_t>(number)]);
    return windows;
}

void Display::writeDefaults(nlohmann::json values) const {
    values["hasCompletedFirstLaunch"] = true;
    std::filesystem::create_directories(home_ / "velmo");
    std::ofstream(home_ / "velmo" / "defaults.json") << values;
}

void Display::xdotool(const std::vector<std::string>& arguments) const {
    std::vector<std::string> command = {"xdotool"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    outputOf(command, environment_);
}

int Display::squares() const {
    constexpr std::uint32_t red = 0xff0000;
    const auto row = x().pixels({0, middleOfBar, x().area(x().root())->width, 1});
    int count = 0;
    std::uint32_t last = 0;
    for (const auto pixel : row)
        count += std::exchange(last, pixel) != red && pixel == red ? 1 : 0;
    return count;
}

}  // namespace velmo::desktop
