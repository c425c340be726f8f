#pragma once

#include "linux/qt/style.h"
#include "linux/qt/views/view_host.h"
#include "linux/qt/windows/row_scroller.h"
#include "linux/qt/windows/scale_follower.h"
#include "linux/qt/windows/screen_changes.h"
#include "linux/toolkit/toolkit_host.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <utility>

namespace velmo {

/// A window that no window manager manages: it floats above others on every workspace. Rounded, translucent
/// and with a soft shadow where the screen can show that, square and opaque where it cannot.
class FloatingWindow : public QWidget {
public:
    struct Traits {
        bool takesKeyboard = false;
        bool hasShadow = true;
        /// Points.
        double cornerRadius = style::floatingRadius;
        /// What is wider than the screen with the bar scrolls.
        bool isRow = false;
    };

    FloatingWindow(ToolkitHost& host, const Traits& traits);

    ViewHost& content() { return content_; }
    /// Of a row that scrolls.
    void scrollToBegin();
    /// Points that the window takes on the screen, less its shadow.
    Size fittingSize() const;
    /// The upper left corner, less the shadow, in pixels of the root window; as large as the content wants
    /// and, in a row, the screen has room for.
    void showAt(const QPointF& pixel);
    WindowNumber number() const;
    /// For a window that hangs below the bar: called while it is shown, when the bar has another place or
    /// scale.
    void setOnBarChange(std::function<void()> handler) { onBarChange_ = std::move(handler); }
    /// Called while it is shown, when it has to go: the bar makes way for a window that fills the screen, or
    /// another program closes this one. The handler may end it.
    void setOnLeave(std::function<void()> handler) { onLeave_ = std::move(handler); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    qreal pointsPerUnit() const;
    QSize contentSize() const;
    /// The part of it that there is room for, with what it takes to see the rest.
    QSize bodySize() const;
    void placeContent();
    /// True where the window was made anew, which hides it.
    bool matchScreen();
    void followBar();
    void leave() const;
    void declareShadow();
    int shadowMargin() const;
    QRect body() const;
    void paintShadow(QPainter& painter, qreal radius) const;

    ToolkitHost& host_;
    Traits traits_;
    ViewHost content_;
    std::optional<RowScroller> scroller_;
    /// Pixels of the root window.
    QPointF corner_;
    ScaleFollower scale_;
    bool isTranslucent_ = false;
    std::function<void()> onBarChange_;
    std::function<void()> onLeave_;
    ScreenChanges screenChanges_;
    Registration barChanges_;
    Registration barLeaves_;
    Registration compositingChanges_;
    Registration above_;
};

}  // namespace velmo
