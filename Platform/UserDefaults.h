#pragma once

#include "Foundation/Date.h"
#include "Foundation/Interface.h"
#include "Foundation/Value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace platform {

/// The user's settings of this program, which survive it: typed objects under names in UTF-8. Main
/// thread only.
///
/// A change is seen by the next reading at once. It is kept for later starts soon afterwards, at
/// the end of the program at the latest; whether keeping it succeeds is the backend's business,
/// which says so in the log: no operation fails towards the caller.
class UserDefaults : public foundation::Interface {
  public:
    /// A stored object of a type that the program has no use for, an array for example.
    struct Other {
        bool operator==(const Other&) const = default;
    };

    /// What can stand under a key. A dictionary is read without those of its values that
    /// foundation::Value cannot hold.
    using Object = std::variant<Other,
                                bool,
                                std::int64_t,
                                std::uint64_t,
                                double,
                                std::string,
                                foundation::Date,
                                foundation::Dictionary>;

    /// The object under the key, with the type that it was stored with but for this: a system may
    /// hand a number that is not negative back as a signed or as an unsigned integer. None when
    /// there is none.
    [[nodiscard]] virtual std::optional<Object> object(std::string_view key) const = 0;

    virtual void setObject(std::string_view key, Object object) = 0;

    /// Does nothing when nothing stands under the key.
    virtual void removeObject(std::string_view key) = 0;

    /// The number under the key; 0 when there is none, or something else.
    [[nodiscard]] double doubleForKey(std::string_view key) const;

    /// Whether the number or boolean under the key is other than zero; false when there is none,
    /// or something else.
    [[nodiscard]] bool boolForKey(std::string_view key) const;

    /// The date under the key; none when there is none, or something else.
    [[nodiscard]] std::optional<foundation::Date> dateForKey(std::string_view key) const;

    /// The dictionary under the key; none when there is none, or something else.
    [[nodiscard]] std::optional<foundation::Dictionary>
    dictionaryForKey(std::string_view key) const;
};

} // namespace platform
