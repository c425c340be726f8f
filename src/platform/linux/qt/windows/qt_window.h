#pragma once

#include "linux/toolkit/toolkit_host.h"
#include "window.h"

#include <QElapsedTimer>
#include <QList>
#include <QPoint>
#include <QRect>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace velmo {

class QtWindow : public Window {
public:
    QtWindow(ToolkitHost& host, const View& content);
    ~QtWindow() override;

    void setContent(const View& content) override;
    void setTitle(const std::string& title) override;
    void setStyleMask(std::uint64_t mask) override;
    /// Windows live as long as their owners want them, closed or not.
    void setReleasedWhenClosed(bool /*released*/) override {}
    void center() override;
    void setFrameAutosaveName(const std::string& name) override;
    void makeKeyAndOrderFront() override;
    bool isVisible() const override;
    void setOnClose(std::function<void()> handler) override { onClose_ = std::move(handler); }

private:
    class Widget;

    /// On which enough of a window with that corner is seen to drag it. None where nobody would find it.
    const QScreen* screenAt(const QPoint& corner) const;
    /// Where it is to be seen from now on.
    void restorePlace();
    void rememberPlace();
    /// Others, or of other sizes; the toolkit's units are so many times what they were.
    void screensChanged(double factor);
    /// In pixels of the root window, where a corner is in the toolkit's units; and the other way round.
    QPoint pixel(const QPoint& corner) const;
    QPoint placeOf(const QPoint& pixel) const;
    /// That corner, or the nearest one for all of the window to be in the area.
    QPoint nearestIn(const QRect& area, const QPoint& corner) const;

    ToolkitHost& host_;
    std::string autosaveName_;
    /// Where the window is as long as nobody has moved it. Absent once somebody has.
    std::optional<QPoint> unmovedPlace_;
    /// Where the user has put it, in pixels: the scale may change while it waits. Absent as long as nobody
    /// has.
    std::optional<QPoint> chosenPlace_;
    /// All that there were then, or when it was read.
    QList<QRect> chosenScreens_;
    QElapsedTimer sinceScreensChanged_;
    /// The window manager has had its say.
    bool isPlaced_ = false;
    std::function<void()> onClose_;
    std::unique_ptr<Widget> widget_;
};

}  // namespace velmo
