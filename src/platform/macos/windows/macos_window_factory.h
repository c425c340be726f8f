#pragma once

#include "run_loop.h"
#include "window_factory.h"

namespace velmo::macos {

class MacosWindowFactory : public WindowFactory {
public:
    explicit MacosWindowFactory(RunLoop& loop) : loop_(loop) {}

    std::unique_ptr<Panel> makePanel(const PanelConfiguration& configuration) override;
    std::unique_ptr<Popover> makePopover() override;
    std::unique_ptr<Window> makeWindow(const View& content) override;

private:
    RunLoop& loop_;
};

}  // namespace velmo::macos
