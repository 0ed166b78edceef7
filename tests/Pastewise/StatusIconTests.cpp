#include "tests/Pastewise/AppDelegateTest.h"
#include "tests/Support/CallOrder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using platform::MemoryCanvas;
using testing_support::madeInOrder;

class StatusIconTests : public delegate_test::AppDelegateTest {
  protected:
    void convert() {
        copy("a");
        pressShortcut();
    }
};

TEST_F(StatusIconTests, DoesNotFlashIfThePreferenceIsOff) {
    system_.userDefaults().setObject("analytics.shouldFlashSavings", false);
    launchQuietly();
    const std::size_t changes = button().imageHistory().size();
    convert();
    EXPECT_EQ(button().imageHistory().size(), changes);
    EXPECT_EQ(logged("debug: Icon flash disabled by user preference; skipping"), 1);
    EXPECT_EQ(system_.mainQueue().pendingCount(), 0U);
}

TEST_F(StatusIconTests, AConversionWithoutAFlashLeavesThePendingRestore) {
    launchQuietly();
    convert();
    shared_->analyticsStateBridge().appState.setShouldFlashSavings(false);
    system_.mainQueue().advance(500ms);
    convert();
    EXPECT_EQ(shownGlyph(), "✓");
    system_.mainQueue().advance(400ms);
    EXPECT_EQ(shownGlyph(), "P");
}

TEST_F(StatusIconTests, LogsAFlashOnceItIsShownAndARestoreBeforeIt) {
    launchQuietly();
    system_.journal().clear();
    convert();
    EXPECT_TRUE(madeInOrder(system_.journal(),
                            {"log debug: Clipboard updated with Miro-compatible content; recording "
                             "analytics",
                             "log debug: Falling back to drawn glyph for checkmark flash",
                             "draw image",
                             "show icon",
                             "log debug: Flashing checkmark icon in menu bar",
                             "queue 900 ms",
                             "log debug: Recording conversion - stickies: 1, source: hotkey"}));
    system_.journal().clear();
    system_.mainQueue().advance(900ms);
    EXPECT_TRUE(madeInOrder(system_.journal(),
                            {"log debug: Restoring base status icon after flash", "show icon"}));
}

TEST_F(StatusIconTests, ShowsTheCheckmarkForNineTenthsOfASecond) {
    launchQuietly();
    convert();
    EXPECT_EQ(shownGlyph(), "✓");
    system_.mainQueue().advance(899ms);
    EXPECT_EQ(shownGlyph(), "✓");
    EXPECT_EQ(logged("debug: Restoring base status icon after flash"), 0);
    system_.mainQueue().advance(1ms);
    EXPECT_EQ(shownGlyph(), "P");
    EXPECT_EQ(logged("debug: Restoring base status icon after flash"), 1);
}

TEST_F(StatusIconTests,
       ThreeConversionsHalfASecondApartShowTheCheckmarkUntilTheLastAndRestoreOnce) {
    launchQuietly();
    for (int press = 0; press < 3; ++press) {
        if (press > 0) {
            system_.mainQueue().advance(500ms);
            EXPECT_EQ(shownGlyph(), "✓");
        }
        convert();
    }
    system_.mainQueue().advance(899ms);
    EXPECT_EQ(shownGlyph(), "✓");
    EXPECT_EQ(logged("debug: Restoring base status icon after flash"), 0);
    system_.mainQueue().advance(1ms);
    EXPECT_EQ(shownGlyph(), "P");
    system_.mainQueue().advance(10s);
    EXPECT_EQ(logged("debug: Restoring base status icon after flash"), 1);
}

TEST_F(StatusIconTests, DrawsTheCheckmarkOnceWithoutSymbols) {
    launchQuietly();
    EXPECT_EQ(system_.images().drawnCount(), 1);
    convert();
    const auto checkmark = button().image();
    system_.mainQueue().advance(1s);
    convert();
    EXPECT_EQ(button().image(), checkmark);
    EXPECT_EQ(system_.images().drawnCount(), 2);
    EXPECT_EQ(logged("debug: Falling back to drawn glyph for checkmark flash"), 1);
}

TEST_F(StatusIconTests, LooksUpTheCheckmarkAtTheFirstFlash) {
    launch();
    EXPECT_EQ(system_.images().requestedSymbols(),
              (std::vector<std::string>{"p.square", "p.circle", "doc.plaintext"}));
    convert();
    const std::vector<std::string> all{"p.square",
                                       "p.circle",
                                       "doc.plaintext",
                                       "checkmark.circle.fill",
                                       "checkmark.circle",
                                       "checkmark"};
    EXPECT_EQ(system_.images().requestedSymbols(), all);
    convert();
    EXPECT_EQ(system_.images().requestedSymbols(), all);
}

TEST_F(StatusIconTests, UsesTheFirstExistingSymbolAsTheBaseIcon) {
    system_.images().addSymbol("p.circle");
    system_.images().addSymbol("doc.plaintext");
    launch();
    EXPECT_EQ(button().image()->symbolName(), "p.circle");
    EXPECT_EQ(button().image()->accessibilityDescription(), "Pastewise");
    EXPECT_TRUE(button().image()->isTemplate());
    EXPECT_EQ(button().image()->size(), (platform::Size{18, 18}));
    EXPECT_EQ(logged("debug: Using SF Symbol for base status icon: p.circle"), 1);
    EXPECT_EQ(system_.images().drawnCount(), 0);
}

TEST_F(StatusIconTests, UsesTheFirstExistingSymbolAsTheCheckmark) {
    system_.images().addSymbol("checkmark");
    launchQuietly();
    convert();
    EXPECT_EQ(button().image()->symbolName(), "checkmark");
    EXPECT_EQ(button().image()->accessibilityDescription(), "Conversion Complete");
    EXPECT_TRUE(button().image()->isTemplate());
    EXPECT_EQ(button().image()->size(), (platform::Size{18, 18}));
    EXPECT_EQ(logged("debug: Using SF Symbol for checkmark flash: checkmark"), 1);
}

TEST_F(StatusIconTests, DrawsAGlyphInBoldWhiteHalfAPointBelowTheMiddle) {
    launch();
    EXPECT_EQ(logged("debug: Falling back to drawn glyph for base status icon"), 1);
    EXPECT_TRUE(button().image()->isTemplate());
    EXPECT_EQ(button().image()->size(), (platform::Size{18, 18}));
    MemoryCanvas canvas;
    button().image()->drawOn(canvas);
    EXPECT_EQ(
        canvas.fills(),
        (std::vector<MemoryCanvas::Fill>{{{{0, 0}, {18, 18}}, platform::Canvas::Color::clear}}));
    // The canvas measures one letter as 10 by 16 points.
    EXPECT_EQ(
        canvas.texts(),
        (std::vector<MemoryCanvas::Text>{
            {"P", {4, 0.5}, {13, platform::FontWeight::bold}, platform::Canvas::Color::white}}));
}

TEST_F(StatusIconTests, RestoresTheIconEvenIfThePreferenceIsSwitchedOffDuringAFlash) {
    launchQuietly();
    convert();
    shared_->analyticsStateBridge().appState.setShouldFlashSavings(false);
    system_.mainQueue().advance(900ms);
    EXPECT_EQ(shownGlyph(), "P");
}

TEST_F(StatusIconTests, TheRestoreDoesNothingOnceTheDelegateIsGone) {
    launchQuietly();
    convert();
    const auto shown = item().memoryButton();
    delegate_.reset();
    system_.logSink().clear();
    system_.mainQueue().advance(1s);
    EXPECT_EQ(glyph(*shown->image()), "✓");
    EXPECT_TRUE(system_.logSink().messages().empty());
}

TEST_F(StatusIconTests, ARefusedWriteDoesNotFlash) {
    launchQuietly();
    system_.pasteboard().refuse(platform::PasteboardType::html);
    convert();
    EXPECT_EQ(shownGlyph(), "P");
    EXPECT_EQ(logged("debug: Flashing checkmark icon in menu bar"), 0);
}

} // namespace
