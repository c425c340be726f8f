#pragma once

#include "linux/event_loop/event_loop.h"
#include "linux/toolkit/toolkit.h"
#include "scoped_timer.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace velmo {

/// Loads the toolkit's module once it is needed.
class LazyToolkit : public WindowFactory {
public:
    explicit LazyToolkit(EventLoop& loop);
    ~LazyToolkit() override;
    LazyToolkit(const LazyToolkit&) = delete;
    LazyToolkit& operator=(const LazyToolkit&) = delete;

    /// To be called once, before anything is to be seen. The host stays valid as long as this.
    void setHost(ToolkitHost* host) { host_ = host; }
    /// Loads it soon.
    void prepare() override;
    void setAppearance(const Appearance& appearance);
    /// As those of the toolkit. They do nothing where the module is missing or does not load.
    void popUp(const Menu& menu, int x, int y);
    /// `owner` is the process that the menu belongs to.
    void popUp(ExportedMenu& menu, std::optional<std::int32_t> owner, int x, int y);
    void showToolTip(const std::string& text, int x, int y);
    void showRichToolTip(const std::string& markup, int x, int y);
    void hideToolTip();
    /// Closes what is open for a moment: menus, whosever they are, and tooltips.
    void closeMenus();
    void setAccessibleBar(AccessibleBar* bar);
    void confirm(const Confirmation& confirmation, const std::function<void()>& action);
    std::unique_ptr<Panel> makePanel(const PanelConfiguration& configuration) override;
    std::unique_ptr<Popover> makePopover() override;
    std::unique_ptr<Window> makeWindow(const View& content) override;
    /// A menu of ours is open; meanwhile every press is about it.
    bool isMenuOpen() const { return openMenus_ > 0; }
    /// True while another program's menu is open here.
    bool isExportedMenuOpen() const { return openExportedMenus_ > 0; }
    /// The process whose menu is open here, where it is known.
    std::optional<std::int32_t> exportedMenuOwner() const { return exportedMenuOwner_; }

private:
    Toolkit* get();
    void load();
    /// Returns once the menu has closed; counts it in `open` meanwhile.
    template <typename AnyMenu>
    void show(AnyMenu& menu, int x, int y, int& open);

    EventLoop& loop_;
    ToolkitHost* host_ = nullptr;
    Appearance appearance_;
    std::unique_ptr<Toolkit> toolkit_;
    bool tried_ = false;
    int openMenus_ = 0;
    int openExportedMenus_ = 0;
    std::optional<std::int32_t> exportedMenuOwner_;
    ScopedTimer preparation_;
};

}  // namespace velmo
