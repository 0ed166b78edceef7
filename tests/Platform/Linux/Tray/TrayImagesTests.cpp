#include "Platform/Linux/Tray/TrayImages.h"
#include "Platform/Linux/Tray/XEmbedIcon.h"
#include "tests/Platform/Linux/Tray/OffscreenApplication.h"
#include "tests/Platform/Linux/Tray/StatusGlyph.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QIcon>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

namespace {

using platform::Canvas;
using platform::DrawnImage;

const std::string checkmark = "\u2713";

class TrayImagesTests : public testing::Test {
  protected:
    std::shared_ptr<DrawnImage> draw(std::function<void(Canvas&)> drawing) {
        return std::dynamic_pointer_cast<DrawnImage>(images_.draw({18, 18}, std::move(drawing)));
    }

    tray_test::OffscreenApplication application_;
    platform::TrayImages images_;
};

class TrayGlyphTests : public TrayImagesTests, public testing::WithParamInterface<std::string> {
  protected:
    std::shared_ptr<DrawnImage> glyph(bool isTemplate) {
        const auto image = tray_test::drawGlyph(images_, GetParam());
        image->setTemplate(isTemplate);
        return std::dynamic_pointer_cast<DrawnImage>(image);
    }
};

QFont bold(int pixelSize) {
    QFont font = QApplication::font();
    font.setPixelSize(pixelSize);
    font.setBold(true);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// The same glyph by Qt's plain text drawing, eight times as large and scaled down.
QImage referenceGlyph(const QString& text, int side) {
    constexpr int finer = 8;
    const double scale = side * finer / 18.0;
    const QFont font = bold(static_cast<int>(std::lround(13 * scale)));
    const QFontMetricsF metrics(font);
    const double width = metrics.horizontalAdvance(text) / scale;
    const double height = metrics.height() / scale;
    QImage large(side * finer, side * finer, QImage::Format_ARGB32_Premultiplied);
    large.fill(Qt::transparent);
    QPainter painter(&large);
    painter.setFont(font);
    painter.setPen(Qt::white);
    const double bottom = 18 - ((18 - height) * 0.5 - 0.5);
    painter.drawText(QPointF((18 - width) * 0.5 * scale, bottom * scale - metrics.descent()), text);
    painter.end();
    return large.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// Whether each pixel that one image covers has one that the other covers beside it.
bool isWithinAPixelOf(const QImage& image, const QImage& other) {
    const auto covers = [](const QImage& picture, int x, int y, int opacity) {
        return picture.valid(x, y) && qAlpha(picture.pixel(x, y)) >= opacity;
    };
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            bool isNear = false;
            for (int i = 0; i < 9; ++i) {
                isNear = isNear || covers(other, x + i % 3 - 1, y + i / 3 - 1, 96);
            }
            if (covers(image, x, y, 160) && !isNear) {
                return false;
            }
        }
    }
    return true;
}

/// How many pixels are neither clear nor opaque.
int softCount(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int opacity = qAlpha(image.pixel(x, y));
            count += opacity > 0 && opacity < 255 ? 1 : 0;
        }
    }
    return count;
}

double luminance(const QColor& color) {
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrast(const QColor& left, const QColor& right) {
    const double one = luminance(left);
    const double other = luminance(right);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

bool isEdgeFree(const QImage& image) {
    for (int at = 0; at < image.width(); ++at) {
        for (const QPoint place : {QPoint(at, 0),
                                   QPoint(at, image.height() - 1),
                                   QPoint(0, at),
                                   QPoint(image.width() - 1, at)}) {
            if (qAlpha(image.pixel(place)) != 0) {
                return false;
            }
        }
    }
    return true;
}

TEST_F(TrayImagesTests, HasNoSystemSymbols) {
    EXPECT_EQ(images_.systemSymbol("p.square", "Pastewise"), nullptr);
    EXPECT_EQ(images_.systemSymbol("checkmark", "Conversion Complete"), nullptr);
}

TEST_F(TrayImagesTests, TheOriginIsInTheLowerLeftCorner) {
    const auto image = draw([](Canvas& canvas) {
        canvas.fill({{0, 0}, {9, 6}}, Canvas::Color::white);
    });
    const QImage pixels = image->render({18, 18});
    EXPECT_EQ(pixels.pixel(0, 17), qRgba(255, 255, 255, 255));
    EXPECT_EQ(pixels.pixel(8, 12), qRgba(255, 255, 255, 255));
    EXPECT_EQ(qAlpha(pixels.pixel(9, 12)), 0);
    EXPECT_EQ(qAlpha(pixels.pixel(8, 11)), 0);
}

TEST_F(TrayImagesTests, FillingWithClearErases) {
    const auto image = draw([](Canvas& canvas) {
        canvas.fill({{0, 0}, {18, 18}}, Canvas::Color::white);
        canvas.fill({{0, 0}, {18, 9}}, Canvas::Color::clear);
    });
    const QImage pixels = image->render({36, 36});
    EXPECT_EQ(qAlpha(pixels.pixel(18, 17)), 255);
    EXPECT_EQ(qAlpha(pixels.pixel(18, 18)), 0);
}

TEST_F(TrayImagesTests, ADrawingFillsItsImageAtAnySize) {
    const auto image = draw([](Canvas& canvas) {
        canvas.fill({{0, 0}, {18, 18}}, Canvas::Color::white);
    });
    image->setSize({9, 9});
    EXPECT_EQ(image->size(), (platform::Size{9, 9}));
    EXPECT_EQ(qAlpha(image->render({18, 18}).pixel(0, 0)), 255);
    EXPECT_EQ(qAlpha(image->render({18, 18}).pixel(17, 17)), 255);
}

TEST_F(TrayImagesTests, AnImageKeepsItsAspectRatio) {
    const auto image = draw([](Canvas& canvas) {
        canvas.fill({{0, 0}, {18, 18}}, Canvas::Color::white);
    });
    const QImage pixels = image->render({64, 32});
    EXPECT_EQ(qAlpha(pixels.pixel(15, 16)), 0);
    EXPECT_EQ(qAlpha(pixels.pixel(16, 16)), 255);
    EXPECT_EQ(qAlpha(pixels.pixel(47, 16)), 255);
    EXPECT_EQ(qAlpha(pixels.pixel(48, 16)), 0);
}

TEST_F(TrayImagesTests, TextIsMeasuredInPoints) {
    platform::Size regular;
    platform::Size twice;
    const auto image = draw([&](Canvas& canvas) {
        regular = canvas.measure("P", {13, platform::FontWeight::bold});
        twice = canvas.measure("P", {26, platform::FontWeight::bold});
    });
    static_cast<void>(image->render({64, 64}));
    const QFontMetricsF metrics(bold(1300));
    EXPECT_NEAR(regular.width, metrics.horizontalAdvance("P") / 100, 0.05);
    EXPECT_NEAR(regular.height, metrics.height() / 100, 0.05);
    EXPECT_DOUBLE_EQ(twice.width, 2 * regular.width);
    EXPECT_DOUBLE_EQ(twice.height, 2 * regular.height);
}

TEST_F(TrayImagesTests, SomeInstalledFontHasTheCheckmark) {
    QTextLayout layout(QString::fromStdString(checkmark), bold(13));
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    ASSERT_FALSE(layout.glyphRuns().isEmpty());
    EXPECT_NE(layout.glyphRuns().front().glyphIndexes().front(), 0U);
}

TEST_P(TrayGlyphTests, EverySizeIsDrawnAndNotScaled) {
    const auto image = glyph(false);
    for (int side = 16; side <= 64; ++side) {
        const QImage drawn = image->render({side, side});
        const QImage reference = referenceGlyph(QString::fromStdString(GetParam()), side);
        ASSERT_EQ(drawn.size(), QSize(side, side));
        EXPECT_TRUE(isWithinAPixelOf(drawn, reference)) << side;
        EXPECT_TRUE(isWithinAPixelOf(reference, drawn)) << side;
        EXPECT_LE(softCount(drawn), softCount(reference)) << side;
    }
    // The same measure for an image that is scaled.
    const QImage scaled =
        image->render({18, 18}).scaled(64, 64, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    EXPECT_GT(softCount(scaled),
              2 * softCount(referenceGlyph(QString::fromStdString(GetParam()), 64)));
}

/// The smallest rectangle outside of which everything is clear.
QRect shapeOf(const QImage& image) {
    QRect shape;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 0) {
                shape |= QRect(x, y, 1, 1);
            }
        }
    }
    return shape;
}

TEST_F(TrayImagesTests, TheEdgesOfLettersFallOnWholePixels) {
    const auto image = std::dynamic_pointer_cast<DrawnImage>(tray_test::drawGlyph(images_, "P"));
    for (const int side : {16, 18, 22, 24, 32, 48}) {
        const QImage pixels = image->render({side, side});
        const QRect shape = shapeOf(pixels);
        // Left edge, and the foot, across which there are two vertical edges and a horizontal one.
        for (int y = shape.top(); y <= shape.bottom(); ++y) {
            EXPECT_EQ(qAlpha(pixels.pixel(shape.left(), y)), 255) << side << ", row " << y;
        }
        int footWidth = 0;
        for (int x = shape.left(); x <= shape.right(); ++x) {
            const int opacity = qAlpha(pixels.pixel(x, shape.bottom()));
            EXPECT_TRUE(opacity == 0 || opacity == 255) << side << ", column " << x;
            footWidth += opacity == 255 ? 1 : 0;
        }
        EXPECT_GE(footWidth, 2);
        // Upper edge of the bowl and both edges of its counter, left of where it curves.
        const int x = shape.left() + footWidth;
        for (int y = shape.top(); y <= shape.bottom(); ++y) {
            const int opacity = qAlpha(pixels.pixel(x, y));
            EXPECT_TRUE(opacity == 0 || opacity == 255) << side << ", row " << y;
        }
    }
}

TEST_P(TrayGlyphTests, NothingIsCutOff) {
    for (int side = 16; side <= 64; ++side) {
        EXPECT_TRUE(isEdgeFree(glyph(true)->render({side, side}))) << side;
    }
}

TEST_P(TrayGlyphTests, ScreensWithMorePixelsPerPointGetMorePixels) {
    const auto image = glyph(true);
    const QIcon icon = platform::drawnIcon(image);
    for (const int pixelsPerPoint : {1, 2, 3}) {
        const QPixmap pixmap = icon.pixmap(QSize(22, 22), pixelsPerPoint);
        const int side = 22 * pixelsPerPoint;
        EXPECT_EQ(pixmap.size(), QSize(side, side));
        QImage painted(side, side, QImage::Format_ARGB32_Premultiplied);
        painted.setDevicePixelRatio(pixelsPerPoint);
        painted.fill(Qt::transparent);
        QPainter painter(&painted);
        icon.paint(&painter, 0, 0, 22, 22);
        painter.end();
        painted.setDevicePixelRatio(1);
        EXPECT_EQ(painted, image->render({side, side})) << pixelsPerPoint;
    }
}

TEST_P(TrayGlyphTests, ATemplateIsWhiteWhereItsDrawingIsOpaque) {
    int opaqueCount = 0;
    for (const int side : {16, 18, 22, 24, 32, 36, 44, 48, 64}) {
        const QImage drawing = glyph(false)->render({side, side});
        const QImage shown = glyph(true)->render({side, side});
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                if (qAlpha(drawing.pixel(x, y)) == 255) {
                    ++opaqueCount;
                    ASSERT_EQ(shown.pixel(x, y), qRgba(255, 255, 255, 255));
                }
            }
        }
    }
    EXPECT_GT(opaqueCount, 0);
}

TEST_P(TrayGlyphTests, ATemplateShowsOnEveryBackground) {
    for (const QColor& background :
         {QColor(Qt::white), QColor(Qt::black), QColor(0xF6, 0xF5, 0xF4), QColor(128, 128, 128)}) {
        for (const int side : {16, 18, 22, 24, 32, 36, 44, 48, 64}) {
            const QImage drawing = glyph(false)->render({side, side});
            QImage panel(side, side, QImage::Format_RGB32);
            panel.fill(background);
            QPainter painter(&panel);
            painter.drawImage(0, 0, glyph(true)->render({side, side}));
            painter.end();
            int distinctCount = 0;
            int shapeCount = 0;
            for (int y = 0; y < side; ++y) {
                for (int x = 0; x < side; ++x) {
                    distinctCount += contrast(panel.pixelColor(x, y), background) >= 3 ? 1 : 0;
                    shapeCount += qAlpha(drawing.pixel(x, y)) >= 128 ? 1 : 0;
                }
            }
            EXPECT_GE(distinctCount, shapeCount / 2) << background.name().toStdString() << side;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(BothGlyphs,
                         TrayGlyphTests,
                         testing::Values("P", checkmark),
                         [](const auto& glyph) { return glyph.index == 0 ? "P" : "Checkmark"; });

} // namespace
