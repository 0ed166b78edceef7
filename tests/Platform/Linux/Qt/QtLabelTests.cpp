#include "Platform/Linux/Qt/QtViews.h"
#include "tests/Support/QtDesktop.h"
#include "tests/Support/QtTestLoop.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QImage>
#include <QPalette>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <functional>
#include <string>
#include <utility>

namespace {

using platform::QtLabel;
using platform::TextColor;
using Wrapping = platform::QtLabel::Wrapping;

/// Whether a column of the picture has a pixel in another color than the background's.
bool hasInk(const QImage& image, int x) {
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(x, y) != image.pixelColor(0, 0)) {
            return true;
        }
    }
    return false;
}

class QtLabelTests : public testing::Test {
  protected:
    /// What the label draws at that size.
    [[nodiscard]] static QImage picture(QtLabel& label, QSize size) {
        label.widget().resize(size);
        return label.widget().grab().toImage();
    }

    /// Runs `work` in the event loop: outside of it, widgets do not follow the application's font
    /// and palette.
    static void whileRunning(const std::function<void()>& work) {
        QTimer::singleShot(0, qApp, [&] {
            work();
            testing_support::QtTestLoop::turn();
            QCoreApplication::quit();
        });
        QApplication::exec();
    }

    static int inkedColumns(const QImage& image) {
        int count = 0;
        for (int x = 0; x < image.width(); ++x) {
            count += hasInk(image, x) ? 1 : 0;
        }
        return count;
    }

    testing_support::QtDesktop desktop_;
};

TEST_F(QtLabelTests, HasAFontOfOnePixelPerPoint) {
    QtLabel label("Keyboard Shortcut", Wrapping::none);
    label.setFont({.size = 16, .weight = platform::FontWeight::bold});
    EXPECT_EQ(label.widget().font().pixelSize(), 16);
    EXPECT_TRUE(label.widget().font().bold());
    EXPECT_EQ(label.widget().font().family(), QApplication::font().family());
}

TEST_F(QtLabelTests, FollowsTheSystemsFontFamily) {
    QtLabel label("Keyboard Shortcut", Wrapping::none);
    label.setFont({.size = 16});
    const QFont before = QApplication::font();
    whileRunning([] { QApplication::setFont(QFont("DejaVu Serif", 30)); });
    EXPECT_EQ(label.widget().font().family().toStdString(), "DejaVu Serif");
    EXPECT_EQ(label.widget().font().pixelSize(), 16);
    QApplication::setFont(before);
}

TEST_F(QtLabelTests, ShowsMarkupAndAmpersandsLiterally) {
    QtLabel label("<b>R&D</b>", Wrapping::none);
    QtLabel shorter("R&D", Wrapping::none);
    EXPECT_EQ(label.text(), "<b>R&D</b>");
    EXPECT_GT(label.widget().sizeHint().width(), 2 * shorter.widget().sizeHint().width());
}

TEST_F(QtLabelTests, DrawsCenteredTextInTheMiddle) {
    QtLabel label("mm", Wrapping::none);
    label.setAlignment(platform::TextAlignment::center);
    const QSize natural = label.widget().sizeHint();
    const QImage image = picture(label, {natural.width() + 100, natural.height()});
    EXPECT_FALSE(hasInk(image, 40));
    EXPECT_TRUE(hasInk(image, image.width() / 2 - natural.width() / 4));
    EXPECT_FALSE(hasInk(image, image.width() - 40));
}

TEST_F(QtLabelTests, WrapsToAtMostItsMaximumOfLines) {
    QtLabel label("word word word word word word word word word word word word", Wrapping::words);
    const int oneLine = label.widget().sizeHint().height();
    EXPECT_GT(label.widget().heightForWidth(80), 3 * oneLine);
    label.setMaximumNumberOfLines(2);
    EXPECT_EQ(label.widget().heightForWidth(80), 2 * oneLine);
}

TEST_F(QtLabelTests, CutsOffTheLinesAboveItsMaximum) {
    QtLabel cut("mmmm mmmm mmmm", Wrapping::words);
    cut.setMaximumNumberOfLines(1);
    QtLabel whole("mmmm", Wrapping::words);
    const int width = whole.widget().sizeHint().width() + 5;
    const QSize size(width, cut.widget().heightForWidth(width));
    EXPECT_EQ(picture(cut, size), picture(whole, size));
    EXPECT_EQ(cut.text(), "mmmm mmmm mmmm");
}

TEST_F(QtLabelTests, IsHighEnoughForGlyphsOfAFallbackFont) {
    QtLabel label("\u2318\u2325\u21E7\u2303K", Wrapping::none);
    label.setFont({.size = 14, .weight = platform::FontWeight::bold});
    const QSize natural = label.widget().sizeHint();
    const QImage exact = picture(label, natural);
    const QImage roomy = picture(label, {natural.width(), natural.height() + 40});
    const auto inkedRows = [](const QImage& image) {
        return inkedColumns(image.transformed(QTransform().rotate(90)));
    };
    EXPECT_EQ(inkedRows(exact), inkedRows(roomy));
    EXPECT_GT(inkedRows(exact), 0);
}

TEST_F(QtLabelTests, ExposesItsTextToAssistiveTechnology) {
    QtLabel label("Ready", Wrapping::words);
    QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&label.widget());
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::StaticText);
    EXPECT_EQ(interface->text(QAccessible::Name).toStdString(), "Ready");
    label.setText("Recording & waiting");
    EXPECT_EQ(interface->text(QAccessible::Name).toStdString(), "Recording & waiting");
}

TEST_F(QtLabelTests, FollowsAChangeOfThePalette) {
    QtLabel label("mmmm", Wrapping::none);
    label.setTextColor(TextColor::secondaryLabel);
    const QPalette before = QApplication::palette();
    QPalette dark;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    static_cast<void>(picture(label, label.widget().sizeHint()));
    whileRunning([&] { QApplication::setPalette(dark); });
    const QImage image = picture(label, label.widget().sizeHint());
    int brightest = 0;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            brightest = std::max(brightest, image.pixelColor(x, y).lightness());
        }
    }
    EXPECT_GT(brightest, 120);
    EXPECT_LT(brightest, 250);
    QApplication::setPalette(before);
}

using QtLabelDeathTests = QtLabelTests;

TEST_F(QtLabelDeathTests, CannotBeMadeEditableOrSelectable) {
    QtLabel label("Label", Wrapping::none);
    label.setEditable(false);
    label.setSelectable(false);
    EXPECT_DEATH(label.setEditable(true), "labels cannot be edited");
    EXPECT_DEATH(label.setSelectable(true), "cannot be selected");
}

QPalette paletteOf(const QColor& window, const QColor& text) {
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    return palette;
}

TEST(TextColorTests, ComputesTheContrastOfTwoColors) {
    EXPECT_NEAR(platform::contrast(Qt::black, Qt::white), 21, 0.001);
    EXPECT_NEAR(platform::contrast(Qt::white, Qt::black), 21, 0.001);
    EXPECT_NEAR(platform::contrast(Qt::red, Qt::red), 1, 0.001);
    // The lightest gray that passes as small text on white.
    EXPECT_NEAR(platform::contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
}

TEST(TextColorTests, PrimaryTextHasTheColorOfTheWindowsText) {
    const QPalette palette = paletteOf(Qt::white, Qt::blue);
    EXPECT_EQ(platform::textColor(TextColor::label, palette), QColor(Qt::blue));
}

TEST(TextColorTests, SecondaryTextIsFainterButReadableOnLightAndDark) {
    for (const auto& [window, text] : {std::pair<QColor, QColor>{Qt::white, Qt::black},
                                       {QColor(0xEF, 0xEF, 0xEF), Qt::black},
                                       {QColor(0xEF, 0xF0, 0xF1), QColor(0x23, 0x26, 0x29)},
                                       {QColor(0x2A, 0x2E, 0x32), QColor(0xFC, 0xFC, 0xFC)},
                                       {QColor(0x35, 0x35, 0x35), QColor(0xEE, 0xEE, 0xEE)},
                                       {Qt::black, Qt::white}}) {
        const QColor color =
            platform::textColor(TextColor::secondaryLabel, paletteOf(window, text));
        EXPECT_GE(platform::contrast(color, window), 4.5) << window.name().toStdString();
        EXPECT_LT(platform::contrast(color, window), platform::contrast(text, window))
            << window.name().toStdString();
    }
}

TEST(TextColorTests, SecondaryTextIsNotFainterIfTheWindowsTextIsAlreadyFaint) {
    const QColor gray(0x77, 0x77, 0x77);
    EXPECT_EQ(platform::textColor(TextColor::secondaryLabel, paletteOf(Qt::white, gray)), gray);
}

} // namespace
