#include "accessible_roles.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace velmo {

QAccessibleInterface* makeAccessible(const QString& /*className*/, QObject* object) {
    const QVariant role = object ? object->property("accessibleRole") : QVariant();
    if (!role.isValid() || !object->isWidgetType())
        return nullptr;
    return new QAccessibleWidget(qobject_cast<QWidget*>(object),
                                 static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace velmo
