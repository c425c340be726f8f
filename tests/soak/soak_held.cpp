// What Velmo and the X server hold for it at each rest, and that it becomes no more.

#include "process_figures.h"
#include "soak_session.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace velmo::desktop {

namespace {

/// Kilobytes beyond the first rest.
constexpr long memorySlack = 400;
/// Kilobytes from one third of the rests to the next.
constexpr long slopeSlack = 100;
/// For each icon that has come, on average: its picture is kept once it was hidden or shown again, also when
/// it has gone, in case that it comes back.
constexpr double pictureMemory = 1.25;
constexpr std::size_t fewestOfThirds = 3;
/// What need not be made by the second rest.
const std::map<std::string, std::uint32_t> resourceSlack = {
    // The four items of ours remember four drawings each.
    {"PIXMAP", 16},
    // Of the toggle, from when the pointer was first followed there.
    {"INPUTCLIENT", 1},
    // Over what is written, and over what can be dragged.
    {"CURSOR", 2},
    // Of windows that are translucent, from when somebody first composed the screen.
    {"COLORMAP", 1},
    // Of each window of ours that a window manager has asked about the shape of: the owner has it.
    {"ShapeEvent", 4},
};
/// Beyond the first rest.
constexpr long fileSlack = 2;
constexpr milliseconds longestRelease(15000);

}  // namespace

SoakSession::Held SoakSession::held() {
    std::int64_t bytes = 0;
    std::ifstream(heapFile(), std::ios::binary).read(reinterpret_cast<char*>(&bytes), sizeof bytes);
    EXPECT_GT(bytes, 0) << "it counts its memory";
    return {.resources = resources(),
            .files = openFiles(),
            .threads = threadsOf(velmo().id()),
            .children = childrenOf(velmo().id()),
            .heap = static_cast<long>(bytes / 1024),
            .shared = sharedMemoryOf(velmo().id()),
            .pictures = std::lround(static_cast<double>(icons_) * pictureMemory)};
}

std::string SoakSession::surplus() {
    const bool isWarm = rests_.size() > 1;
    auto& most = isWarm ? rests_[1] : rests_[0];
    std::ostringstream text;
    for (const auto& [kind, count] : resources()) {
        const auto slack = resourceSlack.find(kind);
        if (count > most.resources[kind] + (slack == resourceSlack.end() ? 0 : slack->second))
            text << count << " of " << kind << ", where " << most.resources[kind] << " were held\n";
    }
    const auto expectAtMost = [&](long count, long held, const char* things) {
        if (count > held)
            text << count << ' ' << things << ", where " << held << " were held\n";
    };
    expectAtMost(openFiles(), most.files + (isWarm ? 0 : fileSlack), "descriptors");
    expectAtMost(threadsOf(velmo().id()), most.threads, "threads");
    expectAtMost(childrenOf(velmo().id()), most.children, "children");
    return text.str();
}

std::optional<long> SoakSession::slope() const {
    const auto third = rests_.size() / 3;
    if (third < fewestOfThirds)
        return std::nullopt;
    // Half of a third is more, and half is less.
    const auto middleOf = [&](std::size_t begin) {
        std::vector<long> memory;
        for (auto index = begin; index < begin + third; ++index)
            memory.push_back(rests_[index].memory());
        std::nth_element(memory.begin(), memory.begin() + static_cast<std::ptrdiff_t>(third / 2),
                         memory.end());
        return memory[third / 2];
    };
    return middleOf(rests_.size() - third) - middleOf(rests_.size() - 2 * third);
}

void SoakSession::expectNoGrowth() {
    EXPECT_TRUE(rests_.empty() || eventually([&] { return surplus().empty(); }, longestRelease))
        << surplus() << windows();
    rests_.push_back(held());
    const auto& first = rests_.front();
    auto now = rests_.back();
    const long growth = now.memory() - first.memory();
    EXPECT_LT(growth, memorySlack) << "KB more than " << first.memory();
    std::ostringstream text;
    text << now.heap << " KB of the heap and " << now.shared << " KB shared, " << growth
         << " KB more than at first beyond " << now.pictures << " KB of pictures";
    if (const auto rise = slope()) {
        EXPECT_LT(*rise, slopeSlack) << "KB more in the last third of the rests than in the one before";
        text << ", rising by " << *rise << " KB";
    }
    text << "; " << now.files << " descriptors, " << now.threads << " threads, " << now.children
         << " children, " << now.resources["WINDOW"] << " windows, " << now.resources["PIXMAP"] << " pixmaps";
    figures_ = text.str();
}

}  // namespace velmo::desktop
