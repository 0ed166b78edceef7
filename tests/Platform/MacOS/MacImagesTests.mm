#import "Platform/MacOS/MacImages.h"
#import "tests/Support/MacOS/AppKitLoop.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using platform::Canvas;
using Color = platform::Canvas::Color;

constexpr platform::SystemFont font{.size = 14, .weight = platform::FontWeight::bold};

class MacImagesTests : public testing::Test {
  protected:
    /// The pixels of a picture of 18 by 18 points.
    NSBitmapImageRep* draw(std::function<void(Canvas&)> drawing) {
        image_ = images_.draw({18, 18}, std::move(drawing));
        NSImage* const image = dynamic_cast<platform::MacImage&>(*image_).nsImage();
        return [NSBitmapImageRep imageRepWithData:[image TIFFRepresentation]];
    }

    /// The opacity, 0 to 1; rows count from the top.
    static double alpha(NSBitmapImageRep* picture, NSInteger x, NSInteger y) {
        return [picture colorAtX:x y:y].alphaComponent;
    }

    /// The sum of the opacities in a range of columns and rows.
    static double ink(NSBitmapImageRep* picture,
                      NSInteger left,
                      NSInteger top,
                      NSInteger right,
                      NSInteger bottom) {
        double sum = 0;
        for (NSInteger x = left; x < right; ++x) {
            for (NSInteger y = top; y < bottom; ++y) {
                sum += alpha(picture, x, y);
            }
        }
        return sum;
    }

    testing_support::AppKitLoop loop_;
    platform::MacImages images_;
    std::shared_ptr<platform::Image> image_;
};

TEST_F(MacImagesTests, FillsARectangleFromTheLowerLeftCorner) {
    NSBitmapImageRep* const picture = draw([](Canvas& canvas) {
        canvas.fill({{0, 0}, {18, 18}}, Color::clear);
        canvas.fill({{0, 0}, {9, 6}}, Color::white);
    });
    const NSInteger width = picture.pixelsWide;
    const NSInteger height = picture.pixelsHigh;
    EXPECT_EQ(alpha(picture, 0, height - 1), 1);
    EXPECT_EQ(alpha(picture, width / 2 - 1, height * 2 / 3), 1);
    EXPECT_EQ(alpha(picture, width / 2, height - 1), 0);
    EXPECT_EQ(alpha(picture, 0, height * 2 / 3 - 1), 0);
    EXPECT_EQ(alpha(picture, width - 1, 0), 0);
}

TEST_F(MacImagesTests, AClearRectangleErases) {
    NSBitmapImageRep* const picture = draw([](Canvas& canvas) {
        canvas.fill({{0, 0}, {18, 18}}, Color::white);
        canvas.fill({{0, 0}, {18, 9}}, Color::clear);
    });
    EXPECT_EQ(alpha(picture, 0, 0), 1);
    EXPECT_EQ(alpha(picture, 0, picture.pixelsHigh - 1), 0);
}

TEST_F(MacImagesTests, DrawsTextInItsMeasuredBox) {
    NSBitmapImageRep* const picture = draw([](Canvas& canvas) {
        const platform::Size size = canvas.measure("H", font);
        EXPECT_GT(size.width, 4);
        EXPECT_LT(size.width, 18);
        EXPECT_GT(size.height, font.size * 0.8);
        canvas.fill({{0, 0}, {18, 18}}, Color::clear);
        canvas.drawText("H", {18 - size.width, 0}, font, Color::white);
    });
    const NSInteger width = picture.pixelsWide;
    const NSInteger height = picture.pixelsHigh;
    EXPECT_GT(ink(picture, width / 2, 0, width, height), 10);
    EXPECT_EQ(ink(picture, 0, 0, width / 9, height), 0);
}

TEST_F(MacImagesTests, AWideTextMeasuresMoreThanANarrowOne) {
    draw([](Canvas& canvas) {
        EXPECT_GT(canvas.measure("HH", font).width, canvas.measure("H", font).width);
    });
}

} // namespace
