#include "lazy_toolkit.h"

#include "linux/module/module.h"

#include <utility>

namespace velmo {

namespace {

/// Long enough for a click that is on its way to be answered first.
constexpr Seconds preparationDelay = 0.1;

constexpr const char* toolkitModule = "velmo-qt.so";

}  // namespace

LazyToolkit::LazyToolkit(EventLoop& loop) : loop_(loop) {}

LazyToolkit::~LazyToolkit() {
    loop_.setHost(nullptr);
}

Toolkit* LazyToolkit::get() {
    if (!std::exchange(tried_, true))
        load();
    return toolkit_.get();
}

void LazyToolkit::prepare() {
    if (!tried_ && !preparation_.isValid())
        preparation_ = loop_.schedule(preparationDelay, [this] { get(); });
}

void LazyToolkit::setAppearance(const Appearance& appearance) {
    appearance_ = appearance;
    if (toolkit_)
        toolkit_->setAppearance(appearance);
}

template <typename AnyMenu>
void LazyToolkit::show(AnyMenu& menu, int x, int y, int& open) {
    // A menu that opened after the end of the loop would keep the program alive.
    auto* toolkit = loop_.isRunning() ? get() : nullptr;
    if (!toolkit)
        return;
    ++open;
    toolkit->popUp(menu, x, y);
    // The click that has closed the menu is known to the toolkit at once, and to us with the next events.
    loop_.turn();
    --open;
}

void LazyToolkit::popUp(const Menu& menu, int x, int y) {
    show(menu, x, y, openMenus_);
}

void LazyToolkit::popUp(ExportedMenu& menu, std::optional<std::int32_t> owner, int x, int y) {
    const auto outer = std::exchange(exportedMenuOwner_, owner);
    show(menu, x, y, openExportedMenus_);
    exportedMenuOwner_ = outer;
}

void LazyToolkit::showToolTip(const std::string& text, int x, int y) {
    if (auto* toolkit = get())
        toolkit->showToolTip(text, x, y);
}

void LazyToolkit::showRichToolTip(const std::string& markup, int x, int y) {
    if (auto* toolkit = get())
        toolkit->showRichToolTip(markup, x, y);
}

void LazyToolkit::hideToolTip() {
    if (toolkit_)
        toolkit_->hideToolTip();
}

void LazyToolkit::closeMenus() {
    hideToolTip();
    if (toolkit_)
        toolkit_->interrupt();
}

void LazyToolkit::setAccessibleBar(AccessibleBar* bar) {
    if (auto* toolkit = bar ? get() : toolkit_.get())
        toolkit->setAccessibleBar(bar);
}

void LazyToolkit::confirm(const Confirmation& confirmation, const std::function<void()>& action) {
    if (auto* toolkit = get())
        toolkit->confirm(confirmation, action);
}

std::unique_ptr<Panel> LazyToolkit::makePanel(const PanelConfiguration& configuration) {
    // What was revealed for the panel's pictures goes before the panel is made, which takes longer.
    if (host_)
        host_->updateBar();
    auto* toolkit = get();
    return toolkit ? toolkit->makePanel(configuration) : nullptr;
}

std::unique_ptr<Popover> LazyToolkit::makePopover() {
    auto* toolkit = get();
    return toolkit ? toolkit->makePopover() : nullptr;
}

std::unique_ptr<Window> LazyToolkit::makeWindow(const View& content) {
    auto* toolkit = get();
    return toolkit ? toolkit->makeWindow(content) : nullptr;
}

void LazyToolkit::load() {
    void* function = host_ ? moduleFunction(toolkitModule, toolkitFunctionName) : nullptr;
    if (!function)
        return;
    toolkit_.reset(reinterpret_cast<MakeToolkit>(function)(host_));
    toolkit_->setAppearance(appearance_);
    loop_.setHost(toolkit_.get());
}

}  // namespace velmo
