#include "Platform/Linux/Tray/TrayImages.h"
#include "Platform/Memory/MemoryImages.h"
#include "tests/Contract/BackendMaker.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using platform::Images;
using platform::Size;

using BackendMaker = contract::BackendMaker<Images>;

class ImagesContract : public testing::TestWithParam<BackendMaker> {
  protected:
    std::unique_ptr<Images> images_ = GetParam().make();
};

TEST_P(ImagesContract, AnImageHasTheSizeThatItWasDrawnWithUntilAnotherIsSet) {
    const auto image = images_->draw({18, 18}, [](platform::Canvas&) {});
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->size(), (Size{18, 18}));
    image->setSize({24, 12});
    EXPECT_EQ(image->size(), (Size{24, 12}));
}

TEST_P(ImagesContract, AnImageIsNoTemplateUntilItIsMadeOne) {
    const auto image = images_->draw({18, 18}, [](platform::Canvas&) {});
    EXPECT_FALSE(image->isTemplate());
    image->setTemplate(true);
    EXPECT_TRUE(image->isTemplate());
    image->setTemplate(false);
    EXPECT_FALSE(image->isTemplate());
}

TEST_P(ImagesContract, ASymbolThatNobodyHasIsNull) {
    EXPECT_EQ(images_->systemSymbol("no.such.symbol", "Nothing"), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    OfEachBackend,
    ImagesContract,
    testing::Values(BackendMaker{"Memory",
                                 []() -> std::unique_ptr<Images> {
                                     return std::make_unique<platform::MemoryImages>();
                                 }},
                    BackendMaker{"Tray",
                                 []() -> std::unique_ptr<Images> {
                                     return std::make_unique<platform::TrayImages>();
                                 }}),
    [](const auto& maker) { return std::string(maker.param.name); });

} // namespace
