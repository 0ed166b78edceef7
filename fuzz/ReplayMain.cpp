// Runs a fuzz target on files and generated documents, without a fuzzing engine:
// [FILE | FOLDER]... [--documents N] [--seed S]

#include "fuzz/DocumentGenerator.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void runOn(const std::string& bytes) {
    const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(data.data(), data.size());
}

void runOnFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    runOn({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
}

std::size_t runOnFiles(const std::filesystem::path& path) {
    if (!std::filesystem::is_directory(path)) {
        runOnFile(path);
        return 1;
    }
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) {
            runOnFile(entry.path());
            ++count;
        }
    }
    if (count == 0) {
        throw std::runtime_error("no files in " + path.string());
    }
    return count;
}

void run(const std::vector<std::string>& arguments) {
    std::size_t files = 0;
    std::uint64_t documents = 0;
    std::uint64_t seed = 0;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--documents") {
            documents = std::stoull(arguments.at(++i));
        } else if (argument == "--seed") {
            seed = std::stoull(arguments.at(++i));
        } else {
            files += runOnFiles(argument);
        }
    }
    fuzz::DocumentGenerator generator(seed);
    for (std::uint64_t i = 0; i < documents; ++i) {
        runOn(generator.next());
    }
    if (files + documents == 0) {
        throw std::runtime_error("nothing to run on");
    }
    std::printf("%zu files and %llu documents of seed %llu, no difference\n",
                files,
                static_cast<unsigned long long>(documents),
                static_cast<unsigned long long>(seed));
}

} // namespace

int main(int argc, char** argv) {
    try {
        run({argv + 1, argv + argc});
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
