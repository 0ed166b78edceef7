#include "Foundation/WeakReference.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using foundation::WeakReference;
using foundation::WeakReferenceSource;

struct Thing {
    WeakReferenceSource<Thing> source{this};
};

TEST(WeakReferenceTests, IsNullWithoutAnObject) {
    EXPECT_EQ(WeakReference<Thing>().get(), nullptr);
}

TEST(WeakReferenceTests, RefersToTheObjectUntilItIsDestroyed) {
    std::optional<Thing> thing(std::in_place);
    const auto reference = thing->source.reference();
    const auto copy = reference; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(reference.get(), &*thing);
    EXPECT_EQ(copy.get(), &*thing);
    thing.reset();
    EXPECT_EQ(reference.get(), nullptr);
    EXPECT_EQ(copy.get(), nullptr);
}

TEST(WeakReferenceTests, EndMakesItNull) {
    Thing thing;
    const auto reference = thing.source.reference();
    thing.source.end();
    EXPECT_EQ(reference.get(), nullptr);
}

} // namespace
