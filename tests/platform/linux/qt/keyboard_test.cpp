#include "linux/current_event.h"
#include "linux/local_events.h"
#include "linux/qt/controls/switch_control.h"
#include "linux/qt/local_event_filter.h"
#include "view_fixture.h"

#include <QImage>
#include <QKeyEvent>
#include <QWindow>

namespace velmo {

namespace {

class Keyboard : public ViewTest {
protected:
    void open(const View& view) {
        show(view);
        host_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&host_));
    }
    /// In the two steps in which keys come from the display: first Qt looks for a shortcut.
    void press(Qt::Key key) {
        QTest::keyClick(&host_, key);
        QTest::keyClick(host_.windowHandle(), key);
        settle();
    }
    /// Whether a control looks as if it had the keyboard.
    bool hasRing(QWidget& control) const {
        QImage alike(control.size(), QImage::Format_ARGB32_Premultiplied);
        QImage withRing = alike;
        const auto picture = [&](QImage& image, bool showsKeyboard) {
            image.fill(Qt::white);
            const bool before = host_.testAttribute(Qt::WA_KeyboardFocusChange);
            control.window()->setAttribute(Qt::WA_KeyboardFocusChange, showsKeyboard);
            control.render(&image);
            control.window()->setAttribute(Qt::WA_KeyboardFocusChange, before);
        };
        QImage now(alike);
        now.fill(Qt::white);
        control.render(&now);
        picture(alike, false);
        picture(withRing, true);
        EXPECT_NE(alike, withRing);
        return now == withRing;
    }
};

TEST_F(Keyboard, MonitorsComeBeforeShortcuts) {
    show(label("Next"));
    CurrentEvent currentEvent;
    LocalEvents events(currentEvent);
    events.setKeyTranslation([](auto, auto) { return Event{EventType::keyDown}; });
    LocalEventFilter filter(events);
    qApp->installEventFilter(&filter);
    // Qt asks where the keyboard is whether the key is to go there even if it is a shortcut.
    const auto isKeptFromShortcuts = [&] {
        QKeyEvent question(QEvent::ShortcutOverride, Qt::Key_PageDown, Qt::NoModifier);
        question.ignore();
        QApplication::sendEvent(&host_, &question);
        return question.isAccepted();
    };
    int seen = 0;
    EXPECT_FALSE(isKeptFromShortcuts());
    {
        const auto monitor = events.addMonitor(maskOf(EventType::keyDown), [&](const Event&) {
            ++seen;
            return EventDisposition::swallow;
        });
        EXPECT_TRUE(isKeptFromShortcuts());
        EXPECT_EQ(seen, 0) << "not before it is there";
        QTest::keyPress(host_.windowHandle(), Qt::Key_PageDown);
        EXPECT_EQ(seen, 1);
    }
    EXPECT_FALSE(isKeptFromShortcuts());
}

TEST_F(Keyboard, IsSeenWhereItIsOnceAKeyIsPressed) {
    open({Toggle{"Launch at login", true, {}}});
    auto* control = only<SwitchControl>();
    control->setFocus(Qt::OtherFocusReason);
    ASSERT_TRUE(control->hasFocus());
    for (int round = 0; round < 2; ++round) {
        EXPECT_FALSE(hasRing(*control));
        press(Qt::Key_F5);
        EXPECT_TRUE(hasRing(*control));
        // As Qt does when the window is hidden.
        host_.setAttribute(Qt::WA_KeyboardFocusChange, false);
    }
}

}  // namespace

}  // namespace velmo
