#include "describe.h"

#include "linux/qt/plain_tool_tip.h"

#include <QWidget>

namespace velmo {

void describe(QWidget& widget, const std::string& name, const std::string& help) {
    if (const QString text = QString::fromStdString(name); widget.accessibleName() != text)
        widget.setAccessibleName(text);
    if (const QString text = plainToolTip(help); widget.toolTip() != text)
        widget.setToolTip(text);
}

}  // namespace velmo
