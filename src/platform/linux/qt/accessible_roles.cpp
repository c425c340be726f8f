#include "accessible_roles.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>
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

}  // namespace

QAccessibleInterface* makeAccessible(const QString& /*className*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (!widget)
        return nullptr;
    const QVariant role = widget->property("accessibleRole");
    if (!role.isValid())
        return nullptr;
    auto* button = qobject_cast<QAbstractButton*>(object);
    if (button && role.toInt() == QAccessible::PageTab)
        return new AccessibleTab(*button);
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace velmo
