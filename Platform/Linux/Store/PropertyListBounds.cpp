#include "Platform/Linux/Store/PropertyListBounds.h"

#include <cstdint>
#include <initializer_list>
#include <optional>

namespace platform {

namespace {

using Bounds = PropertyListBounds;

/// Goes through a binary property list as libplist does, but within bounds.
///
/// The last 32 bytes are the trailer. It tells the size of an entry of the offset table and of a
/// reference, then how many objects there are, which one is the root, and where the offset table
/// begins. An object begins with a marker: the type in the upper half, in the lower one the count
/// of its items, or 0xF when an integer object with the count follows. The items of an array are
/// references into the offset table; a dictionary has first those of its keys, then its values'.
class BinaryWalk {
  public:
    explicit BinaryWalk(std::string_view bytes) : bytes_(bytes) {}

    bool isWithinBounds() {
        if (bytes_.size() < magicSize + trailerSize) {
            return false;
        }
        const std::size_t trailer = bytes_.size() - trailerSize;
        offsetSize_ = byte(trailer + 6);
        referenceSize_ = byte(trailer + 7);
        objectCount_ = integer(trailer + 8, 8).value_or(0);
        const std::uint64_t root = integer(trailer + 16, 8).value_or(0);
        offsetTable_ = integer(trailer + 24, 8).value_or(0);
        if (offsetSize_ == 0 || offsetSize_ > 8 || referenceSize_ == 0 || referenceSize_ > 8 ||
            objectCount_ > bytes_.size() || offsetTable_ > bytes_.size()) {
            return false;
        }
        return visit(root, 1);
    }

  private:
    static constexpr std::size_t magicSize = 8;
    static constexpr std::size_t trailerSize = 32;

    [[nodiscard]] std::uint8_t byte(std::size_t at) const {
        return static_cast<std::uint8_t>(bytes_[at]);
    }

    /// The big-endian integer of up to 8 bytes that begins at `at`; none where the list ends.
    [[nodiscard]] std::optional<std::uint64_t> integer(std::uint64_t at, std::size_t size) const {
        if (at > bytes_.size() || bytes_.size() - at < size) {
            return std::nullopt;
        }
        std::uint64_t value = 0;
        for (std::size_t index = 0; index < size; ++index) {
            value = value << 8U | byte(at + index);
        }
        return value;
    }

    struct Extent {
        std::uint64_t count;
        std::uint64_t begin; ///< Where the object's items begin.
    };

    /// How many items the object at `at` has.
    [[nodiscard]] std::optional<Extent> extent(std::uint64_t at) const {
        const unsigned inMarker = byte(at) & 0x0FU;
        if (inMarker != 0x0F) {
            return Extent{.count = inMarker, .begin = at + 1};
        }
        const auto marker = integer(at + 1, 1);
        if (!marker || *marker >> 4U != 1 || (*marker & 0x0FU) > 3) {
            return std::nullopt;
        }
        const std::size_t size = std::size_t{1} << (*marker & 0x0FU);
        const auto count = integer(at + 2, size);
        return count ? std::optional(Extent{.count = *count, .begin = at + 2 + size})
                     : std::nullopt;
    }

    bool visit(std::uint64_t index, std::size_t depth) {
        if (index >= objectCount_ || depth > Bounds::maxDepth ||
            ++visitedObjects_ > Bounds::maxObjects) {
            return false;
        }
        const auto at = integer(offsetTable_ + index * offsetSize_, offsetSize_);
        if (!at || *at >= bytes_.size()) {
            return false;
        }
        switch (byte(*at) >> 4U) {
        case 0x4: // data
            return visitContents(*at, 1, [](std::uint64_t /*byte*/) { return true; });
        case 0x5: // text in ASCII
            return visitContents(*at, 1, [](std::uint64_t unit) { return unit - 1 < 0x7F; });
        case 0x6: // text in UTF-16
            return visitContents(*at, 2, [](std::uint64_t unit) { return unit != 0; });
        case 0xA:
            return visitItems(*at, 1, depth);
        case 0xD:
            return visitItems(*at, 2, depth);
        default:
            return true;
        }
    }

    bool visitContents(std::uint64_t at, std::size_t unitSize, bool (*isSound)(std::uint64_t)) {
        const auto contents = extent(at);
        if (!contents || contents->count > bytes_.size()) {
            return false;
        }
        visitedContents_ += contents->count * unitSize;
        if (visitedContents_ > Bounds::maxContents) {
            return false;
        }
        for (std::uint64_t index = 0; index < contents->count; ++index) {
            const auto unit = integer(contents->begin + index * unitSize, unitSize);
            if (!unit || !isSound(*unit)) {
                return false;
            }
        }
        return true;
    }

    bool visitItems(std::uint64_t at, std::uint64_t referencesPerItem, std::size_t depth) {
        const auto items = extent(at);
        if (!items || items->count > Bounds::maxObjects) {
            return false;
        }
        for (std::uint64_t item = 0; item < items->count * referencesPerItem; ++item) {
            const auto reference = integer(items->begin + item * referenceSize_, referenceSize_);
            if (!reference || !visit(*reference, depth + 1)) {
                return false;
            }
        }
        return true;
    }

    std::string_view bytes_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t offsetTable_ = 0;
    std::size_t visitedObjects_ = 0;
    std::size_t visitedContents_ = 0;
};

/// Every container opens with one of these tags, whatever else looks like one.
bool hasFewContainers(std::string_view xml) {
    std::size_t count = 0;
    for (const std::string_view tag : {"<array", "<dict"}) {
        for (std::size_t at = xml.find(tag); at != std::string_view::npos;
             at = xml.find(tag, at + tag.size())) {
            if (++count > Bounds::maxXmlContainers) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

bool isWithinPropertyListBounds(std::string_view bytes) {
    if (bytes.size() > Bounds::maxFileSize) {
        return false;
    }
    return bytes.starts_with("bplist") ? BinaryWalk(bytes).isWithinBounds()
                                       : hasFewContainers(bytes);
}

} // namespace platform
