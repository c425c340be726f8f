#pragma once

#include "linux/event_loop/event_loop.h"
#include "linux/toolkit/toolkit.h"

#include <memory>

namespace velmo {

/// Loads the toolkit's module once it is needed.
class LazyToolkit {
public:
    explicit LazyToolkit(EventLoop& loop);
    ~LazyToolkit();
    LazyToolkit(const LazyToolkit&) = delete;
    LazyToolkit& operator=(const LazyToolkit&) = delete;

    /// Loads it soon: somebody seems about to need it.
    void prepare();
    void setAppearance(const Appearance& appearance);
    /// As those of the toolkit. They do nothing where the module is missing or does not load.
    void popUp(const Menu& menu, int x, int y);
    void showToolTip(const std::string& text, int x, int y);
    void hideToolTip();
    /// While a menu is open, every press is about it.
    bool isMenuOpen() const { return openMenus_ > 0; }

private:
    Toolkit* get();
    void load();

    EventLoop& loop_;
    Appearance appearance_;
    std::unique_ptr<Toolkit> toolkit_;
    bool tried_ = false;
    int openMenus_ = 0;
    std::shared_ptr<Timer> preparation_;
};

}  // namespace velmo
