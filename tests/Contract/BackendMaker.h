#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

namespace contract {

/// A backend to run a contract's suite against, with the name that its tests show.
template <typename Backend>
struct BackendMaker {
    const char* name;
    std::unique_ptr<Backend> (*make)();

    friend void PrintTo(const BackendMaker& maker, std::ostream* out) { *out << maker.name; }
};

/// The parameter of a suite for the backend `Made`, of which each test makes a new one.
template <typename Backend, typename Made>
auto backend(const char* name) {
    return testing::Values(BackendMaker<Backend>{
        name, []() -> std::unique_ptr<Backend> { return std::make_unique<Made>(); }});
}

template <typename Backend>
std::string nameOfBackend(const testing::TestParamInfo<BackendMaker<Backend>>& maker) {
    return maker.param.name;
}

} // namespace contract
