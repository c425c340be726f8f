#pragma once

class QAccessibleInterface;
class QObject;
class QString;

namespace velmo {

/// Widgets of ours with a property "accessibleRole" get that role; assistive programs would else take them
/// for something without meaning. Null for all others.
QAccessibleInterface* makeAccessible(const QString& className, QObject* object);

}  // namespace velmo
