#pragma once

#include "linux/qt/exported_menu_view.h"
#include "linux/qt/style.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmo {

class FakeMenu : public ExportedMenu {
public:
    const ExportedMenuEntry& root() const override { return root_; }
    bool hasEnded() const override { return false; }
    void setOnChange(std::function<void()> handler) override { onChange_ = std::move(handler); }
    void opened(std::int32_t id) override { log_.push_back("opened " + std::to_string(id)); }
    void closed(std::int32_t id) override { log_.push_back("closed " + std::to_string(id)); }
    void chosen(std::int32_t id, std::uint32_t time) override {
        log_.push_back("chosen " + std::to_string(id) + " at " + std::to_string(time));
    }

    ExportedMenuEntry root_;
    std::function<void()> onChange_;
    std::vector<std::string> log_;
};

inline ExportedMenuEntry labelled(std::int32_t id, const std::string& text) {
    ExportedMenuEntry entry;
    entry.id = id;
    entry.label = text;
    return entry;
}

inline ExportedMenuEntry marked(std::int32_t id, ExportedMenuEntry::Mark mark,
                                ExportedMenuEntry::MarkState state) {
    auto entry = labelled(id, "Marked");
    entry.mark = mark;
    entry.markState = state;
    return entry;
}

/// A bitmap of one colour, 0xAARRGGBB.
inline Image square(std::uint32_t color, bool isTemplate = false) {
    constexpr int side = 16;
    std::vector<std::uint8_t> bytes;
    for (int pixel = 0; pixel < side * side; ++pixel) {
        for (const int shift : {0, 8, 16, 24})
            bytes.push_back(static_cast<std::uint8_t>(color >> shift));
    }
    const auto pixels = std::make_shared<const std::vector<std::uint8_t>>(std::move(bytes));
    return {Bitmap{side, side, pixels, {}}, isTemplate, {}};
}

class ExportedMenuViews : public testing::Test {
protected:
    static void SetUpTestSuite() { qApp->setStyleSheet(style::sheet()); }
    static void TearDownTestSuite() { qApp->setStyleSheet({}); }

    void follow(std::vector<ExportedMenuEntry> entries) {
        menu_.root_.children = std::move(entries);
        view_.follow(menu_.root_);
    }

    void show(std::vector<ExportedMenuEntry> entries) {
        follow(std::move(entries));
        view_.popup(QPoint(10, 10));
        QApplication::processEvents();
    }

    QAction& action(qsizetype index) const { return *view_.actions().at(index); }

    QImage iconOf(qsizetype index, QIcon::Mode mode = QIcon::Normal) const {
        return action(index).icon().pixmap(QSize(16, 16), mode).toImage();
    }

    /// Of the icon's mark, whatever its colour is.
    std::vector<bool> markOf(qsizetype index) const {
        const QImage image = iconOf(index);
        std::vector<bool> dots;
        for (int row = 0; row < image.height(); ++row) {
            for (int column = 0; column < image.width(); ++column)
                dots.push_back(qAlpha(image.pixel(column, row)) > 128);
        }
        return dots;
    }

    static int count(const std::vector<bool>& dots) {
        return static_cast<int>(std::count(dots.begin(), dots.end(), true));
    }

    std::vector<ExportedMenuEntry> numbered(int count, const std::string& text) {
        std::vector<ExportedMenuEntry> entries;
        for (int id = 1; id <= count; ++id)
            entries.push_back(labelled(id, text + std::to_string(id)));
        return entries;
    }

    void key(int code) { QTest::keyClick(&view_, static_cast<Qt::Key>(code)); }

    FakeMenu menu_;
    std::vector<std::int32_t> chosen_;
    ExportedMenuView view_{menu_, [this](std::int32_t id) { chosen_.push_back(id); }};
};

}  // namespace velmo
