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

class Changes : public QObject {
public:
    int toolTips = 0;

protected:
    bool eventFilter(QObject* /*object*/, QEvent* event) override {
        toolTips += event->type() == QEvent::ToolTipChange ? 1 : 0;
        return false;
    }
};

TEST_F(ToolTips, AreToldOfOnlyWhereTheyChange) {
    const auto described = [](const std::string& help) {
        return View{Button{}, {label("Item")}}.with(Help{help});
    };
    show(described("Back"));
    Changes changes;
    only<ViewButton>()->installEventFilter(&changes);
    show(described("Back"));
    EXPECT_EQ(changes.toolTips, 0);
    show(described("Forth"));
    EXPECT_EQ(changes.toolTips, 1);
}

}  // namespace

}  // namespace velmo
