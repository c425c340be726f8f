#include "linux/qt/windows/confirmation_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

namespace velmo {

namespace {

class ConfirmationDialogTest : public testing::Test {
protected:
    static std::vector<QMessageBox*> boxes() {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        std::vector<QMessageBox*> found;
        for (auto* widget : QApplication::topLevelWidgets()) {
            if (auto* box = qobject_cast<QMessageBox*>(widget))
                found.push_back(box);
        }
        return found;
    }
    void ask() {
        dialog_->ask({"Really <b>now</b>?", "All is lost.", "Lose All"}, [this] { ++agreements_; });
    }
    static QAbstractButton* button(const QString& text) {
        for (auto* button : boxes().front()->buttons()) {
            if (button->text().remove('&') == text)
                return button;
        }
        return nullptr;
    }

    int activations_ = 0;
    int agreements_ = 0;
    std::unique_ptr<ConfirmationDialog> dialog_ =
        std::make_unique<ConfirmationDialog>([this](WindowNumber) { ++activations_; });
};

TEST_F(ConfirmationDialogTest, ReturnsAtOnceAndActsOnceTheUserAgrees) {
    ask();
    ASSERT_EQ(boxes().size(), 1U);
    EXPECT_TRUE(boxes().front()->isVisible());
    EXPECT_EQ(boxes().front()->text(), "Really <b>now</b>?");
    EXPECT_EQ(boxes().front()->textFormat(), Qt::PlainText);
    EXPECT_EQ(boxes().front()->informativeText(), "All is lost.");
    EXPECT_EQ(activations_, 1);
    EXPECT_EQ(agreements_, 0);
    ASSERT_TRUE(button("Lose All"));
    button("Lose All")->click();
    EXPECT_EQ(agreements_, 1);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ConfirmationDialogTest, ReturnKeyAndEscapeKeyCancel) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
        ask();
        ASSERT_TRUE(QTest::qWaitForWindowActive(boxes().front()));
        QTest::keyClick(boxes().front()->focusWidget(), key);
        EXPECT_TRUE(boxes().empty());
    }
    ask();
    boxes().front()->close();
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(agreements_, 0);
}

TEST_F(ConfirmationDialogTest, ReturnKeyCancelsWhateverHasTheFocus) {
    ask();
    ASSERT_TRUE(QTest::qWaitForWindowActive(boxes().front()));
    button("Lose All")->setFocus();
    QTest::keyClick(button("Lose All"), Qt::Key_Return);
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(agreements_, 0);
    ask();
    ASSERT_TRUE(QTest::qWaitForWindowActive(boxes().front()));
    button("Lose All")->setFocus();
    QTest::keyClick(button("Lose All"), Qt::Key_Space);
    EXPECT_EQ(agreements_, 1);
}

TEST_F(ConfirmationDialogTest, AsksOneQuestionAtATime) {
    ask();
    ask();
    ASSERT_EQ(boxes().size(), 1U);
    EXPECT_EQ(activations_, 2);
    button("Lose All")->click();
    EXPECT_EQ(agreements_, 1);
}

TEST_F(ConfirmationDialogTest, QuestionEndsWithWhoAsks) {
    ask();
    dialog_.reset();
    EXPECT_TRUE(boxes().empty());
}

}  // namespace

}  // namespace velmo
