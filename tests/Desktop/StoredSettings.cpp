#include "tests/Desktop/StoredSettings.h"

#include <fstream>
#include <iterator>
#include <string_view>

namespace program_test {

std::optional<StoredSettings> StoredSettings::read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    plist_t list = nullptr;
    if (bytes.starts_with("bplist00")) {
        plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &list);
    }
    List owned(list);
    if (list == nullptr || plist_get_node_type(list) != PLIST_DICT) {
        return std::nullopt;
    }
    return StoredSettings(std::move(owned));
}

bool StoredSettings::holds(const std::string& key) const {
    return plist_dict_get_item(list_.get(), key.c_str()) != nullptr;
}

double StoredSettings::savedSeconds() const {
    double sum = 0;
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(list_.get(), &position);
    const std::unique_ptr<void, decltype(&std::free)> owned(position, &std::free);
    while (true) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(list_.get(), position, &key, &value);
        if (value == nullptr) {
            return sum;
        }
        if (std::string_view(key).starts_with("analytics.todaySavedSeconds.") &&
            plist_get_node_type(value) == PLIST_REAL) {
            double seconds = 0;
            plist_get_real_val(value, &seconds);
            sum += seconds;
        }
        std::free(key); // NOLINT(*-no-malloc)
    }
}

std::optional<StoredSettings::Shortcut> StoredSettings::shortcut() const {
    plist_t dictionary = plist_dict_get_item(list_.get(), "userDefinedShortcut");
    if (dictionary == nullptr) {
        return std::nullopt;
    }
    plist_t keyCode = plist_dict_get_item(dictionary, "keyCode");
    plist_t modifiers = plist_dict_get_item(dictionary, "modifiers");
    if (keyCode == nullptr || modifiers == nullptr) {
        return std::nullopt;
    }
    Shortcut shortcut;
    plist_get_uint_val(keyCode, &shortcut.keyCode);
    plist_get_uint_val(modifiers, &shortcut.modifiers);
    return shortcut;
}

} // namespace program_test
