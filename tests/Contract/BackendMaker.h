#pragma once

#include <memory>
#include <ostream>

namespace contract {

/// A backend that a contract's suite runs against, by the name that its tests show.
template <typename Backend>
struct BackendMaker {
    const char* name;
    std::unique_ptr<Backend> (*make)();

    friend void PrintTo(const BackendMaker& maker, std::ostream* out) { *out << maker.name; }
};

} // namespace contract
