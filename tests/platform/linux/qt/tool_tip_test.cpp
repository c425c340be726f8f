#include "linux/qt/controls/view_button.h"
#include "view_fixture.h"

#include <QTextDocument>

namespace velmo {

namespace {

using ToolTips = ViewTest;

/// What a person reads.
QString shown(const QString& toolTip) {
    if (!Qt::mightBeRichText(toolTip))
        return toolTip;
    QTextDocument document;
    document.setHtml(toolTip);
    return document.toPlainText();
}

TEST_F(ToolTips, ShowWhatLooksLikeMarkupAsItStands) {
    for (const std::string name : {"<b>x</b>", "<img src=\"/etc/hostname\">", "&lt;b&gt;x&lt;/b&gt;",
                                   "plain & simple", "<a>\n<b>", "1 < 2", "Zoë  –  two blanks"}) {
        show(View{Button{}, {label("Item")}}.with(Help{name}));
        QString read = shown(only<ViewButton>()->toolTip());
        read.replace(QChar(0xa0), QLatin1Char(' '));
        EXPECT_EQ(read.toStdString(), name);
    }
}

TEST_F(ToolTips, OfTextsShowWhatLooksLikeMarkupAsItStands) {
    show(View(label("Item")).with(Help{"<b>x</b>"}));
    EXPECT_EQ(shown(host_.findChildren<QWidget*>().first()->toolTip()), "<b>x</b>");
}

}  // namespace

}  // namespace velmo
