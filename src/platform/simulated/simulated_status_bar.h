#pragma once

#include "simulated/simulated_menus.h"
#include "simulated/simulated_screens.h"
#include "simulated/simulated_status_item.h"
#include "simulated/status_item_slot.h"
#include "status_item_order.h"

#include <string_view>
#include <utility>
#include <vector>

namespace velmo {

/// Lays all items out from the right edge of the primary screen leftwards, as wide as they are. Items of
/// other applications and the program's own share one order; identities are the autosave names of the own
/// items and the `identity` of the others.
class SimulatedStatusBar : public StatusBar {
public:
    SimulatedStatusBar(const SimulatedScreens& screens, SimulatedMenus& menus);
    SimulatedStatusBar(const SimulatedStatusBar&) = delete;
    SimulatedStatusBar& operator=(const SimulatedStatusBar&) = delete;
    ~SimulatedStatusBar() override;

    std::unique_ptr<StatusItem> makeStatusItem(double length) override;
    double thickness() const override { return thickness_; }
    bool isOn(const Screen& screen) const override;

    void setThickness(double thickness);
    /// Screens with these frames have no bar; all others have one.
    void setAwayFrom(const std::vector<Rect>& frames) { awayFrom_ = frames; }
    /// The gap between neighbours, points; 0 at first.
    void setSpacing(double spacing);
    /// Items made from now on have no button.
    void setRefusesButtons(bool refuses) { refusesButtons_ = refuses; }
    /// Items made from now on begin invisible, as where a system remembers that they were.
    void setHidesNewItems(bool hides) { hidesNewItems_ = hides; }
    void setRefusesTrackingAreas(bool refuses) { refusesTrackingAreas_ = refuses; }
    /// From now on `journal()` has whatever is asked of the own items, in order.
    void beginJournal() { journal_.emplace(); }

    /// The program's own item of that autosave name. Null where there is none.
    SimulatedStatusItem* item(std::string_view autosaveName);
    /// The own items in the order of their making.
    std::vector<SimulatedStatusItem*> items() const;
    /// The visible own item under the point. Null where there is none.
    SimulatedStatusItem* itemAt(const Point& point);

    /// Appears at the far left, or where it was when it went away. Nothing happens while an item of that
    /// identity is there.
    void addOther(const OtherStatusItem& item);
    void removeOther(std::string_view identity);
    void setOtherWidth(std::string_view identity, double width);
    void setOtherTitle(std::string_view identity, const std::optional<std::string>& title);

    /// What a drag with the command key does. False where either is not known.
    bool moveRightOf(const std::string& neighbour, const std::string& identity);
    bool moveLeftOf(const std::string& neighbour, const std::string& identity);

    const StatusItemOrder& order() const { return order_; }
    /// All items that are there, in the order of their making, laid out.
    const std::vector<std::unique_ptr<StatusItemSlot>>& slots();
    /// Null where no such item is there.
    const StatusItemSlot* slot(std::string_view identity);
    std::int64_t windowNumber(const SimulatedStatusItem& item) { return slotOf(item).windowNumber; }
    /// True where any of the item's frame lies on a screen and the item is visible.
    bool isOnScreen(const StatusItemSlot& slot) const;
    /// The first screen that has a part of the item.
    std::optional<Screen> screenOf(const StatusItemSlot& slot) const;
    /// As "Velmo.Divider: length 12", since `beginJournal`.
    const std::vector<std::string>& journal() const { return *journal_; }
    /// Differs after each change of what the bar shows.
    std::uint64_t generation() const { return generation_ + screens_.generation(); }

    /// The pointer has moved: tells the tracking areas, those that it left first.
    void pointerMoved(const Point& location, SimulatedApplication& application);

    /// Options and item of each living tracking area.
    std::vector<std::pair<TrackingAreaOptions, const SimulatedStatusItem*>> trackingAreas() const;

private:
    friend class SimulatedStatusItem;
    friend class SimulatedStatusBarButton;
    struct Area;
    class AreaToken;

    void note(const SimulatedStatusItem& item, const std::string& request);
    StatusItemSlot* find(std::string_view identity);
    StatusItemSlot& slotOf(const SimulatedStatusItem& item);
    void rename(SimulatedStatusItem& item, const std::string& name);
    void remove(const SimulatedStatusItem& item);
    std::unique_ptr<TrackingArea> addArea(const SimulatedStatusItem& item, const Rect& rect,
                                          TrackingAreaOptions options, TrackingAreaOwner* owner);
    bool isInside(const Area& area, const Point& point);
    void changed();
    void reordered();
    void layOut();
    void sort();

    const SimulatedScreens& screens_;
    SimulatedMenus& menus_;
    double thickness_ = 26;
    double spacing_ = 0;
    std::vector<Rect> awayFrom_;
    bool refusesButtons_ = false;
    bool refusesTrackingAreas_ = false;
    bool hidesNewItems_ = false;
    std::optional<std::vector<std::string>> journal_;
    StatusItemOrder order_;
    std::vector<std::unique_ptr<StatusItemSlot>> slots_;
    /// Right to left.
    std::vector<StatusItemSlot*> sorted_;
    std::vector<double> lengths_;
    std::vector<std::weak_ptr<Area>> areas_;
    Point pointer_;
    std::int64_t nextWindowNumber_ = 100;
    std::uint64_t generation_ = 1;
    std::uint64_t laidOut_ = 0;
    bool isSorted_ = false;
};

}  // namespace velmo
