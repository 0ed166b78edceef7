#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

namespace contract {

/// Creates a backend for a contract suite; `name` appears in the test names.
template <typename Backend>
struct BackendMaker {
    const char* name;
    std::unique_ptr<Backend> (*make)();

    friend void PrintTo(const BackendMaker& maker, std::ostream* out) { *out << maker.name; }
};

/// The suite parameter for the backend `Made`. Each test creates a new instance.
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
