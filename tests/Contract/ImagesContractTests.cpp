#include "Platform/Memory/MemoryImages.h"
#include "tests/Contract/ImagesContract.h"

namespace contract {

INSTANTIATE_TEST_SUITE_P(Memory,
                         ImagesContract,
                         (backend<platform::Images, platform::MemoryImages>("Memory")),
                         nameOfBackend<platform::Images>);

using platform::Size;

TEST_P(ImagesContract, AnImageHasItsDrawnSizeUntilAnotherIsSet) {
    const auto image = images_->draw({18, 18}, [](platform::Canvas&) {});
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->size(), (Size{18, 18}));
    image->setSize({24, 12});
    EXPECT_EQ(image->size(), (Size{24, 12}));
}

TEST_P(ImagesContract, AnImageIsNotATemplateAtFirst) {
    const auto image = images_->draw({18, 18}, [](platform::Canvas&) {});
    EXPECT_FALSE(image->isTemplate());
    image->setTemplate(true);
    EXPECT_TRUE(image->isTemplate());
    image->setTemplate(false);
    EXPECT_FALSE(image->isTemplate());
}

TEST_P(ImagesContract, AnUnknownSymbolIsNull) {
    EXPECT_EQ(images_->systemSymbol("no.such.symbol", "Nothing"), nullptr);
}

} // namespace contract
