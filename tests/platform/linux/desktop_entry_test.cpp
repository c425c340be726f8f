#include "linux/login/desktop_entry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace velmo {

namespace {

const std::string withEverything =
    "# A comment\n"
    "[Desktop Entry]\n"
    "Type=Application\n"
    "Name = Velmo \n"
    "Name[de]=Velmo!\n"
    "\n"
    "[Desktop Action New]\n"
    "Name=New\n"
    "Exec=velmo --new\n";

TEST(DesktopEntryTest, ReturnsWhatItWasMadeFrom) {
    EXPECT_EQ(DesktopEntry(withEverything).text(), withEverything);
    EXPECT_EQ(DesktopEntry("").text(), "");
    EXPECT_EQ(DesktopEntry("no entry\n=\n[\n").text(), "no entry\n=\n[\n");
}

TEST(DesktopEntryTest, ReadsItsOwnGroupAlone) {
    const DesktopEntry entry(withEverything);
    EXPECT_EQ(entry.value("Name"), "Velmo");
    EXPECT_EQ(entry.value("Name[de]"), "Velmo!");
    EXPECT_EQ(entry.value("Exec"), std::nullopt);
    EXPECT_EQ(entry.value("# A comment"), std::nullopt);
    EXPECT_EQ(DesktopEntry("Name=before any group\n").value("Name"), std::nullopt);
    EXPECT_EQ(DesktopEntry("[Desktop Entry]\r\nName=a\r\n").value("Name"), "a");
    EXPECT_EQ(DesktopEntry("[Desktop Entry]\nName=a\nName=b").value("Name"), "b");
}

TEST(DesktopEntryTest, FlagsAreTrueFalseOrNeither) {
    const DesktopEntry entry("[Desktop Entry]\na=true\nb=false \nc=1\nd=yes\n");
    EXPECT_TRUE(entry.isTrue("a") && !entry.isFalse("a"));
    EXPECT_TRUE(entry.isFalse("b") && !entry.isTrue("b"));
    EXPECT_TRUE(entry.isTrue("c"));
    EXPECT_FALSE(entry.isTrue("d") || entry.isFalse("d"));
    EXPECT_FALSE(entry.isTrue("e") || entry.isFalse("e"));
}

TEST(DesktopEntryTest, ChangesOneLine) {
    DesktopEntry entry(withEverything);
    entry.set("Name", "Other");
    entry.set("Exec", "velmo");
    entry.remove("Type");
    EXPECT_EQ(entry.text(),
              "# A comment\n"
              "[Desktop Entry]\n"
              "Name=Other\n"
              "Name[de]=Velmo!\n"
              "Exec=velmo\n"
              "\n"
              "[Desktop Action New]\n"
              "Name=New\n"
              "Exec=velmo --new\n");
}

TEST(DesktopEntryTest, MakesItsGroup) {
    DesktopEntry entry;
    entry.set("Name", "Velmo");
    entry.set("Type", "Application");
    EXPECT_EQ(entry.text(), "[Desktop Entry]\nName=Velmo\nType=Application\n");
}

TEST(DesktopEntryTest, MakesItsGroupBesideWhatOnlyLooksLikeIt) {
    DesktopEntry entry(" [Desktop Entry]\n[Other]\n");
    entry.set("Name", "Velmo");
    EXPECT_EQ(DesktopEntry(entry.text()).value("Name"), "Velmo");
    EXPECT_EQ(entry.text(), "[Desktop Entry]\n [Desktop Entry]\nName=Velmo\n[Other]\n");
}

TEST(DesktopEntryTest, KnowsWhatBecomesItsOwnWithTheGroup) {
    DesktopEntry entry("Hidden=true\nName=Other\n");
    EXPECT_FALSE(entry.value("Hidden"));
    entry.set("Name", "Velmo");
    EXPECT_TRUE(entry.isTrue("Hidden"));
    entry.remove("Hidden");
    EXPECT_EQ(entry.text(), "[Desktop Entry]\nName=Velmo\n");
}

TEST(DesktopEntryTest, AnyTextReturns) {
    for (const std::string text : {" a ", " ", "  ", "a\\nb", "a\nb\r\tc", "\\", "\\\\s", "=[x]#"}) {
        DesktopEntry entry;
        entry.set("Name", text);
        const std::string written = entry.text();
        EXPECT_EQ(std::count(written.begin(), written.end(), '\n'), 2) << text;
        EXPECT_EQ(DesktopEntry(written).value("Name"), text);
    }
}

TEST(DesktopEntryTest, KnowsWhetherThereIsMore) {
    constexpr std::array<std::string_view, 2> keys = {"Type", "Name"};
    EXPECT_TRUE(DesktopEntry("# c\n[Desktop Entry]\nType=a\nName[de]=b\n\n").hasOnly(keys));
    EXPECT_TRUE(DesktopEntry("").hasOnly(keys));
    EXPECT_FALSE(DesktopEntry("[Desktop Entry]\nTyp=a\n").hasOnly(keys));
    EXPECT_FALSE(DesktopEntry(withEverything).hasOnly(keys));
}

}  // namespace

}  // namespace velmo
