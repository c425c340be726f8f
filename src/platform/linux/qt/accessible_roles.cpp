#include "accessible_roles.h"

#include "linux/qt/bar_window.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QVariant>
#include <QWidget>

namespace velmo {

namespace {

/// Assistive programs can tell which tab is chosen, and choose another.
class AccessibleTab : public QAccessibleWidget {
public:
    explicit AccessibleTab(QAbstractButton& tab) : QAccessibleWidget(&tab, QAccessible::PageTab), tab_(tab) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = tab_.isChecked();
        return state;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction())
            tab_.click();
    }

private:
    QAbstractButton& tab_;
};

/// Qt's own interface to a combo box tells what is chosen, but not what for.
class AccessiblePopUp : public QAccessibleWidget {
public:
    explicit AccessiblePopUp(QComboBox& box) : QAccessibleWidget(&box, QAccessible::ComboBox), box_(box) {}

    QString text(QAccessible::Text which) const override {
        return which == QAccessible::Value ? box_.currentText() : QAccessibleWidget::text(which);
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.hasPopup = true;
        state.expandable = true;
        state.expanded = box_.view()->isVisible();
        state.collapsed = !state.expanded;
        return state;
    }
    int childCount() const override { return 1; }
    QAccessibleInterface* child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(box_.view()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* one) const override {
        return one->object() == box_.view() ? 0 : -1;
    }
    QStringList actionNames() const override { return {showMenuAction()}; }
    void doAction(const QString& name) override {
        if (name != showMenuAction() || !box_.isEnabled())
            return;
        if (box_.view()->isVisible())
            box_.hidePopup();
        else
            box_.showPopup();
    }

private:
    QComboBox& box_;
};

}  // namespace

QAccessibleInterface* makeAccessible(const QString& /*className*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (!widget)
        return makeAccessibleOfBar(object);
    if (auto* box = qobject_cast<QComboBox*>(object))
        return new AccessiblePopUp(*box);
    const QVariant role = widget->property("accessibleRole");
    if (!role.isValid())
        return nullptr;
    auto* button = qobject_cast<QAbstractButton*>(object);
    if (button && role.toInt() == QAccessible::PageTab)
        return new AccessibleTab(*button);
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace velmo
