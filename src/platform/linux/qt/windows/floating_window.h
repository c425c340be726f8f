#pragma once

#include "linux/qt/views/view_host.h"
#include "linux/toolkit/toolkit_host.h"

#include <QWidget>

namespace velmo {

/// A window that no window manager manages: it floats above others on every workspace. Rounded and
/// translucent where the screen can show that, square and opaque where it cannot.
class FloatingWindow : public QWidget {
public:
    FloatingWindow(ToolkitHost& host, bool takesKeyboard);

    ViewHost& content() { return content_; }
    /// Points that the window takes on the screen.
    Size fittingSize() const;
    /// The upper left corner in pixels of the root window; as large as the content wants.
    void showAt(const QPointF& pixel);
    WindowNumber number() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QSize contentSize() const;
    void matchScreen();

    ToolkitHost& host_;
    ViewHost content_;
    bool isTranslucent_ = false;
};

}  // namespace velmo
