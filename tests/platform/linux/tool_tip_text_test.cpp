#include "linux/status_notifier/tool_tip_text.h"

#include <gtest/gtest.h>

namespace velmo::status_notifier {

namespace {

TEST(ToolTipText, HasTheTitleAboveTheDescription) {
    EXPECT_EQ(toolTipMarkup("Volume", "42 %"), "<b>Volume</b><br>42 %");
    EXPECT_EQ(toolTipMarkup("Volume", ""), "Volume");
    EXPECT_EQ(toolTipMarkup("", "42 %"), "42 %");
    EXPECT_EQ(toolTipMarkup("", ""), "");
}

TEST(ToolTipText, KeepsSimpleMarkupOfTheDescription) {
    EXPECT_EQ(toolTipMarkup("", "<b>bold</b> <I>it</I> <u class='x'>u</u>\nnext<br/>line"),
              "<b>bold</b> <i>it</i> <u>u</u><br>next<br>line");
    EXPECT_EQ(toolTipMarkup("", "Tom &amp; Jerry &lt;3"), "Tom &amp; Jerry &lt;3");
}

TEST(ToolTipText, TakesTheTitleLiterally) {
    EXPECT_EQ(toolTipMarkup("<b>a</b> & b", ""), "&lt;b&gt;a&lt;/b&gt; &amp; b");
}

TEST(ToolTipText, LeavesNothingThatLoadsOrLinks) {
    EXPECT_EQ(toolTipMarkup("", "<img src=\"http://example.com/x.png\">see <a href='file:///etc'>here</a>"),
              "see here");
    EXPECT_EQ(toolTipMarkup("", "<script>x</script><style>y</style><!-- z -->"), "xy");
    EXPECT_EQ(toolTipMarkup("", "<b onclick='x' style='background:url(y)'>z</b>"), "<b>z</b>");
}

TEST(ToolTipText, ShowsWhatIsNoMarkup) {
    EXPECT_EQ(toolTipMarkup("", "1 < 2 & 3 > 2 <unfinished"), "1 &lt; 2 &amp; 3 &gt; 2 &lt;unfinished");
    EXPECT_EQ(toolTipMarkup("", "&unknown; &"), "&amp;unknown; &amp;");
}

TEST(ToolTipText, IsOfReasonableLength) {
    EXPECT_LT(toolTipMarkup(std::string(100000, 'a'), std::string(100000, 'b')).size(), 3000U);
    std::string umlauts;
    for (int count = 0; count < 300; ++count)
        umlauts += "\u00e4";
    EXPECT_EQ(toolTipMarkup(umlauts, "").size() % 2, 3 % 2) << "no half characters before the ellipsis";
}

}  // namespace

}  // namespace velmo::status_notifier
