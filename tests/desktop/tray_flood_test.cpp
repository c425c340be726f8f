#include "beside.h"
#include "hostile_tray_session.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <memory>
#include <thread>
#include <vector>

namespace velmo::desktop {

namespace {

/// What a program does without end to its icon.
struct Flood {
    friend std::ostream& operator<<(std::ostream& stream, const Flood& flood) { return stream << flood.name; }

    const char* name = "";
    TrayClient::Look look = TrayClient::Look::opaque;
    bool isUnmanaged = false;
    /// Called with a number that grows.
    void (*act)(TrayClient& program, xcb_window_t window, std::uint32_t number) = nullptr;
    /// Of a processor, with debug code on a busy machine.
    int mostPercent = 5;
    int atOnce = 100;
};

void resize(TrayClient& program, xcb_window_t window, std::uint32_t number) {
    const std::uint32_t values[] = {1 + number % 100, 1 + number * 7 % 100};
    xcb_configure_window(program.x().raw(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         values);
}

void mapAndUnmap(TrayClient& program, xcb_window_t window, std::uint32_t /*number*/) {
    xcb_unmap_window(program.x().raw(), window);
    xcb_map_window(program.x().raw(), window);
}

void flipFlags(TrayClient& program, xcb_window_t window, std::uint32_t number) {
    static const auto atom = program.x().atom("_XEMBED_INFO");
    const std::uint32_t info[] = {0, number % 2};
    xcb_change_property(program.x().raw(), XCB_PROP_MODE_REPLACE, window, atom, atom, 32, 2, info);
}

void rename(TrayClient& program, xcb_window_t window, std::uint32_t number) {
    const auto name = std::to_string(number);
    xcb_change_property(program.x().raw(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                        8, static_cast<std::uint32_t>(name.size()), name.data());
}

void clear(TrayClient& program, xcb_window_t window, std::uint32_t /*number*/) {
    xcb_clear_area(program.x().raw(), 0, window, 0, 0, 0, 0);
}

void dockAgain(TrayClient& program, xcb_window_t window, std::uint32_t /*number*/) {
    program.dock(window);
}

/// Each time another window that does not exist.
void dockNobody(TrayClient& program, xcb_window_t /*window*/, std::uint32_t number) {
    program.dock(0x1f000000 + number);
}

class TrayFlood : public HostileTraySession, public testing::WithParamInterface<Flood> {};

INSTANTIATE_TEST_SUITE_P(
    Hostile, TrayFlood,
    testing::Values(Flood{"Sizes", TrayClient::Look::opaque, false, resize},
                    Flood{"SizesOfATranslucentIcon", TrayClient::Look::translucent, false, resize},
                    Flood{"SizesUnasked", TrayClient::Look::translucent, true, resize},
                    Flood{"Mappings", TrayClient::Look::translucent, false, mapAndUnmap},
                    Flood{"MappingsUnasked", TrayClient::Look::translucent, true, mapAndUnmap},
                    Flood{"Flags", TrayClient::Look::opaque, false, flipFlags},
                    Flood{"Titles", TrayClient::Look::opaque, false, rename},
                    Flood{"Drawings", TrayClient::Look::translucent, false, clear},
                    Flood{"Dockings", TrayClient::Look::opaque, false, dockAgain, 25, 10},
                    Flood{"DockingsOfNobody", TrayClient::Look::opaque, false, dockNobody, 25, 10}),
    [](const auto& suite) { return suite.param.name; });

TEST_P(TrayFlood, CostsLittleAndMovesNobody) {
    const auto& param = GetParam();
    auto program = std::make_unique<TrayClient>(display());
    const auto window = program->makeIcon("flood", param.look);
    if (param.isUnmanaged)
        setOverrideRedirect(program->x(), window);
    program->dock(window);
    ASSERT_TRUE(eventually([&] { return isDocked(window); }));
    // What its docking has caused comes to its end: its place is written to the disk.
    ASSERT_TRUE(eventually([&] { return knowsPlaceOf("flood.Icon"); }));
    std::atomic<std::uint32_t> number = 0;
    {
        const Beside flood(Beside::Times::untilTheEnd, [&] {
            for (int count = 0; count < param.atOnce; ++count)
                param.act(*program, window, number++);
            // The server has done that much. It has others to serve, too.
            program->x().exists(window);
            std::this_thread::sleep_for(milliseconds(1));
        });
        expectResponsive(param.name);
        const auto before = number.load();
        const int percent = load();
        std::printf("%s: %u in two seconds cost %d percent of a processor\n", param.name, number - before,
                    percent);
        RecordProperty("percent", percent);
        EXPECT_LT(percent, param.mostPercent);
        EXPECT_EQ(x().area(icon_), place_);
        EXPECT_EQ(x().pixels(place_), seen_);
    }
    program.reset();
    expectGoodIconAlone();
}

/// A program with more icons than anybody has.
class HostileCrowd : public HostileTraySession {
protected:
    void dock(std::size_t count) {
        program_ = std::make_unique<TrayClient>(display());
        while (windows_.size() < count) {
            windows_.push_back(program_->makeIcon("flood"));
            program_->dock(windows_.back());
        }
        // Asked once: it takes a look at all windows.
        const auto place = bar();
        const auto areDocked = [&] {
            return std::all_of(windows_.begin(), windows_.end(), [&](auto window) {
                return x().parent(x().parent(window)) == place && x().isViewable(window);
            });
        };
        ASSERT_TRUE(eventually(areDocked, milliseconds(30000)));
        ASSERT_TRUE(eventually([&] { return knowsPlaceOf("flood.Icon#" + std::to_string(count)); }));
        ASSERT_TRUE(comesToRest());
    }
    /// Milliseconds until the good icon is seen, or hidden, once its program wishes it.
    double timeTo(bool isShown) const {
        const auto start = std::chrono::steady_clock::now();
        good_->setEmbeddingFlags(icon_, isShown ? 1 : 0);
        EXPECT_TRUE(eventually([&] { return x().isViewable(icon_) == isShown; }));
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    }
    /// To ask so many, some at a time, takes almost a second.
    static constexpr std::size_t many = 300;
    /// Milliseconds.
    static constexpr double soon = 450;

    std::unique_ptr<TrayClient> program_;
    std::vector<xcb_window_t> windows_;
};

TEST_F(HostileCrowd, ThatAsksForSizesCostsLittle) {
    dock(200);
    std::atomic<std::uint32_t> number = 0;
    {
        const Beside flood(Beside::Times::untilTheEnd, [&] {
            for (int count = 0; count < 100; ++count) {
                const auto current = number++;
                resize(*program_, windows_[current % windows_.size()], current / windows_.size());
            }
            program_->x().exists(windows_.front());
            std::this_thread::sleep_for(milliseconds(1));
        });
        expectResponsive("many icons change");
        const int percent = load();
        std::printf("Sizes of many icons cost %d percent of a processor\n", percent);
        EXPECT_LT(percent, 25);
    }
    // Those that nobody has listened to are heard again.
    EXPECT_TRUE(eventually([&] {
        return std::all_of(windows_.begin(), windows_.end(), [&](auto window) {
            const auto area = x().area(window);
            return area && area->width == place_.width && area->y == place_.y;
        });
    }));
    program_.reset();
    expectGoodIconAlone();
}

/// As many programs of a session do when the bar starts.
TEST_F(HostileCrowd, ThatComesOneByOneIsTakenWithoutPauses) {
    using Clock = std::chrono::steady_clock;
    constexpr std::size_t paced = 50;
    program_ = std::make_unique<TrayClient>(display());
    std::vector<double> milliseconds;
    while (windows_.size() < 150) {
        windows_.push_back(program_->makeIcon("flood"));
        const auto start = Clock::now();
        program_->dock(windows_.back());
        while (x().parent(windows_.back()) == x().root() && Clock::now() < start + std::chrono::seconds(5))
            continue;
        milliseconds.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    const auto later = milliseconds.begin() + paced;
    std::nth_element(later, later + 50, milliseconds.end());
    std::printf("an icon among many is taken after %.1f ms\n", later[50]);
    EXPECT_LT(later[50], 5) << "they wait for the next 10 ms";
}

TEST_F(HostileCrowd, ThatRenamesItselfDelaysNobodysWishToBeShown) {
    dock(many);
    for (const bool isShown : {false, true}) {
        for (const auto window : windows_)
            rename(*program_, window, isShown ? 1 : 0);
        program_->x().exists(windows_.front());
        const double taken = timeTo(isShown);
        std::printf("an icon %s after %.0f ms, while others change their names\n",
                    isShown ? "appears" : "disappears", taken);
        EXPECT_LT(taken, soon);
        ASSERT_TRUE(comesToRest());
    }
}

TEST_F(HostileCrowd, ThatHasGoneDelaysNobody) {
    dock(many);
    for (const auto window : windows_)
        program_->setEmbeddingFlags(window, 1);
    program_.reset();
    const double taken = timeTo(false);
    std::printf("an icon disappears after %.0f ms, after others have gone\n", taken);
    EXPECT_LT(taken, soon);
}

}  // namespace

}  // namespace velmo::desktop
