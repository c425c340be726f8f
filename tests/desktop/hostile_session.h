#pragma once

#include "session_bus_desktop.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace velmo::desktop {

/// Milliseconds in which Velmo answers, whatever others do.
constexpr double responsive = 100;

/// Programs that mean harm, and what becomes of Velmo.
class HostileSession : public SessionBusDesktop {
protected:
    void SetUp() override;
    void TearDown() override;

    void noteWhatIsHeld();
    /// Velmo holds what it held then, and shows only so many items of others.
    void expectNothingLeft(std::size_t items = 0);
    /// Does it three times. A leak is seen each time; what an allocator keeps is not.
    void expectNoGrowth(const std::function<void()>& work);
    /// What Velmo uses of one processor while something goes on, in percent.
    int load();
    /// Clicks the toggle while something goes on, until the condition holds, and judges all clicks; the worst
    /// by the best of all bursts of that name.
    void expectResponsive(
        const char* what, const std::function<bool()>& isOver = [] { return true; });
    /// In the bar, of others.
    std::size_t itemCount() const { return x().children(bar()).size() - 3; }

private:
    void showAllLooks() const;
    void waitForToolkit();
    void letToolTipsGo() const;

    std::map<std::string, std::vector<double>> worstOf_;
    long memoryBefore_ = 0;
    long filesBefore_ = 0;
    std::map<std::string, std::uint32_t> resourcesBefore_;
};

}  // namespace velmo::desktop
