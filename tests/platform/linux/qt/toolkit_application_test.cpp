#include "linux/qt/toolkit_application.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QMenu>

namespace velmo {

namespace {

TEST(ToolkitApplicationTest, KeepsAMenuThoughTheWindowBeforeItHasLostTheKeyboard) {
    QMenu menu;
    menu.addAction("Entry");
    menu.popup(QPoint(10, 10));
    ASSERT_TRUE(menu.isVisible());
    QEvent inactive(QEvent::ApplicationDeactivate);
    QCoreApplication::sendEvent(QCoreApplication::instance(), &inactive);
    EXPECT_TRUE(menu.isVisible());
    menu.close();
    EXPECT_FALSE(menu.isVisible());
}

TEST(ToolkitApplicationTest, KeepsNoListOfAWindowThatHasLostTheKeyboard) {
    QComboBox box;
    box.addItems({"One", "Two"});
    box.show();
    box.showPopup();
    QWidget* list = QApplication::activePopupWidget();
    ASSERT_TRUE(list);
    QEvent inactive(QEvent::ApplicationDeactivate);
    QCoreApplication::sendEvent(QCoreApplication::instance(), &inactive);
    EXPECT_FALSE(list->isVisible());
}

}  // namespace

}  // namespace velmo
