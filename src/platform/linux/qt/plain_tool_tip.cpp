#include "plain_tool_tip.h"

#include <QTextDocument>

namespace velmo {

QString plainToolTip(const std::string& text) {
    const QString plain = QString::fromStdString(text);
    return Qt::mightBeRichText(plain) ? Qt::convertFromPlainText(plain) : plain;
}

}  // namespace velmo
