#include "describe.h"

#include <QWidget>

namespace velmo {

void describe(QWidget& widget, const QString& name, const QString& help) {
    if (widget.accessibleName() != name)
        widget.setAccessibleName(name);
    if (widget.toolTip() != help)
        widget.setToolTip(help);
}

}  // namespace velmo
