#pragma once

#include "linux/event_loop/event_loop.h"
#include "linux/qt/views/view_host.h"
#include "view.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalBlocker>
#include <QTest>

#include <cmath>

namespace velmo {

inline View label(const std::string& content) {
    return {Text{{{content}}}};
}

inline View framed(View view, double width, double height) {
    return std::move(view).with(Frame{.width = width, .height = height});
}

/// A host on a display in memory.
class ViewTest : public testing::Test {
protected:
    void show(const View& view) {
        host_.setContent(view);
        const QSizeF size = host_.fittingSize();
        host_.resize(static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height())));
        host_.show();
        QApplication::processEvents();
    }

    template <typename Widget>
    Widget* only() const {
        const auto found = host_.findChildren<Widget*>();
        EXPECT_EQ(found.size(), 1);
        return found.isEmpty() ? nullptr : found.first();
    }

    /// In the host.
    static QRect placeOf(const QWidget* widget) {
        return {widget->mapTo(widget->window(), QPoint(0, 0)), widget->size()};
    }

    /// What Qt has queued runs, and then what was posted: Qt asks the other loop before it sleeps.
    void settle() {
        QApplication::processEvents();
        while (!loop_.prepareToSleep())
            loop_.turn();
    }

    EventLoop loop_;
    ViewHost host_{loop_};
};

}  // namespace velmo
