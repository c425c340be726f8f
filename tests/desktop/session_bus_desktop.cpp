#include "session_bus_desktop.h"

#include <unistd.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <thread>

namespace velmo::desktop {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int barHeight = 26;
constexpr milliseconds programStart(20000);
constexpr milliseconds longestWait(8000);
constexpr milliseconds longestLoad(20000);

/// What a file about a process has in the line that begins so.
long numberIn(const std::string& name, const std::string& beginning, pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/" + name);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(beginning))
            return std::stol(line.substr(beginning.size()));
    }
    return 0;
}

}  // namespace

void SessionBusDesktop::SetUp() {
    DesktopSession::SetUp();
    startDesktop();
    writeDefaults({{"autoRehide", false}, {"hideOnClickOutside", false}});
    startVelmoOnBus();
}

void SessionBusDesktop::startVelmoOnBus() {
    startVelmo();
    awaitWatcher();
}

void SessionBusDesktop::awaitWatcher() const {
    BusProgram bystander(busAddress());
    ASSERT_TRUE(eventually([&] { return bystander.isTaken("org.freedesktop.StatusNotifierWatcher"); }));
}

xcb_window_t SessionBusDesktop::untilShown(const std::string& title) const {
    const auto shown = [&] { return isOnScreen(itemTitled(title)); };
    EXPECT_TRUE(eventually(shown, programStart)) << title;
    return itemTitled(title);
}

std::unique_ptr<BusProgram> SessionBusDesktop::programWithItem(const std::string& title) const {
    auto program = std::make_unique<BusProgram>(busAddress());
    program->addItem(itemPath, title);
    program->setText(itemPath, "Title", title);
    program->registerItem(itemPath);
    return program;
}

bool SessionBusDesktop::isToolTip(xcb_window_t window) const {
    const auto types = x().cardinals(window, "_NET_WM_WINDOW_TYPE");
    return std::find(types.begin(), types.end(), x().atom("_NET_WM_WINDOW_TYPE_TOOLTIP")) != types.end();
}

std::optional<Area> SessionBusDesktop::openMenu() const {
    for (const auto window : x().children(x().root())) {
        const auto area = x().area(window);
        if (area && area->y >= barHeight && area->height > barHeight && x().isViewable(window) &&
            x().property(window, "WM_CLASS").starts_with("velmo") && !isToolTip(window))
            return area;
    }
    return std::nullopt;
}

void SessionBusDesktop::openMenuOf(xcb_window_t item, int button) {
    click(item, button);
    ASSERT_TRUE(eventually([&] { return openMenu().has_value(); }));
}

bool SessionBusDesktop::hasMenu(const std::string& windowClass) const {
    const auto windows = x().children(x().root());
    return std::any_of(windows.begin(), windows.end(), [&](auto window) {
        return x().isViewable(window) && !isToolTip(window) &&
               x().property(window, "WM_CLASS").find(windowClass) != std::string::npos;
    });
}

void SessionBusDesktop::chooseByKeys(const std::vector<std::string>& keys) const {
    std::vector<std::string> command = {"key", "--delay", std::to_string(keyPause)};
    command.insert(command.end(), keys.begin(), keys.end());
    xdotool(command);
}

std::vector<std::string> SessionBusDesktop::notes() const {
    std::ifstream file(noteFile());
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

bool SessionBusDesktop::hasNoted(const std::string& line) const {
    const auto lines = notes();
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

std::optional<Area> SessionBusDesktop::openToolTip() const {
    for (const auto window : x().children(x().root())) {
        if (x().isViewable(window) && isToolTip(window))
            return x().area(window);
    }
    return std::nullopt;
}

std::vector<double> SessionBusDesktop::toggleLatencies(int fewest,
                                                       const std::function<bool()>& isEnough) const {
    // To look for it among hundreds of items takes longer than the answer that is measured.
    const auto moved = divider();
    const auto place = x().area(toggle()).value_or(Area{});
    movePointer(place.midX(), place.midY());
    const auto end = Clock::now() + longestLoad;
    std::vector<double> latencies;
    for (int count = 0; count < fewest || count % 2 != 0 || !isEnough(); ++count) {
        EXPECT_LT(Clock::now(), end);
        if (Clock::now() >= end)
            break;
        const int before = x().area(moved)->width;
        const auto start = Clock::now();
        for (const auto type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE})
            xcb_test_fake_input(x().raw(), type, 1, 0, x().root(), 0, 0, 0);
        xcb_flush(x().raw());
        while (x().area(moved)->width == before && Clock::now() < start + longestWait)
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        latencies.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        std::this_thread::sleep_for(milliseconds(20));
    }
    return latencies;
}

void SessionBusDesktop::setMenuPath(BusProgram& program) {
    program.setMenuPath(itemPath);
    const int asked = program.callsOf("GetAll");
    program.emit(itemPath, itemInterface, "NewMenu");
    ASSERT_TRUE(eventually([&] { return program.callsOf("GetAll") > asked; }));
    std::this_thread::sleep_for(milliseconds(100));
}

long SessionBusDesktop::memory() {
    return numberIn("smaps_rollup", "Anonymous:", velmo().id());
}

long SessionBusDesktop::sleeps() {
    return numberIn("status", "voluntary_ctxt_switches:", velmo().id());
}

double SessionBusDesktop::processorTime() {
    std::ifstream file("/proc/" + std::to_string(velmo().id()) + "/stat");
    std::string text(std::istreambuf_iterator<char>(file), {});
    // Behind the name: of what follows, the twelfth and the thirteenth.
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    constexpr int before = 11;
    for (int count = 0; count < before; ++count)
        fields >> text;
    double user = 0;
    double system = 0;
    fields >> user >> system;
    return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

long SessionBusDesktop::openFiles() {
    const std::filesystem::path descriptors = "/proc/" + std::to_string(velmo().id()) + "/fd";
    const auto settings = defaultsFile().parent_path().string();
    long count = 0;
    EXPECT_TRUE(eventually([&] {
        count = 0;
        bool isSettled = true;
        for (const auto& descriptor : std::filesystem::directory_iterator(descriptors)) {
            std::error_code error;
            const auto file = std::filesystem::read_symlink(descriptor, error).string();
            isSettled = isSettled && !error && !file.starts_with(settings);
            ++count;
        }
        return isSettled;
    }));
    return count;
}

}  // namespace velmo::desktop
