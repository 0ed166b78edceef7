#include "Platform/Memory/MemoryStandardOutput.h"
#include "Platform/Posix/FileStandardOutput.h"
#include "tests/Contract/BackendMaker.h"
#include "tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

using platform::StandardOutput;
using Lines = std::vector<std::string>;

/// A standard output and what a reader has got of it so far.
class Backend : public foundation::Interface {
  public:
    virtual StandardOutput& output() = 0;
    virtual Lines lines() = 0;
};

class MemoryBackend final : public Backend {
  public:
    StandardOutput& output() override { return output_; }

    Lines lines() override { return output_.lines(); }

  private:
    platform::MemoryStandardOutput output_;
};

class FileBackend final : public Backend {
  public:
    FileBackend() = default;

    ~FileBackend() override { close(descriptor_); }

    FileBackend(const FileBackend&) = delete;
    FileBackend& operator=(const FileBackend&) = delete;
    FileBackend(FileBackend&&) = delete;
    FileBackend& operator=(FileBackend&&) = delete;

    StandardOutput& output() override { return output_; }

    Lines lines() override {
        Lines lines;
        std::ifstream file(path_);
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }

  private:
    testing_support::TemporaryFolder folder_;
    std::string path_ = (folder_.path() / "output").string();
    int descriptor_ = open(path_.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    platform::FileStandardOutput output_{descriptor_};
};

using BackendMaker = contract::BackendMaker<Backend>;

class StandardOutputContract : public testing::TestWithParam<BackendMaker> {
  protected:
    std::unique_ptr<Backend> backend_ = GetParam().make();
};

TEST_P(StandardOutputContract, ALineIsThereWhenTheCallReturns) {
    backend_->output().writeLine("first");
    EXPECT_EQ(backend_->lines(), (Lines{"first"}));
    backend_->output().writeLine("second…");
    EXPECT_EQ(backend_->lines(), (Lines{"first", "second…"}));
}

TEST_P(StandardOutputContract, AnEmptyTextIsAnEmptyLine) {
    backend_->output().writeLine("");
    EXPECT_EQ(backend_->lines(), (Lines{""}));
}

INSTANTIATE_TEST_SUITE_P(OfEachBackend,
                         StandardOutputContract,
                         testing::Values(BackendMaker{"Memory",
                                                      []() -> std::unique_ptr<Backend> {
                                                          return std::make_unique<MemoryBackend>();
                                                      }},
                                         BackendMaker{"File",
                                                      []() -> std::unique_ptr<Backend> {
                                                          return std::make_unique<FileBackend>();
                                                      }}),
                         [](const auto& maker) { return std::string(maker.param.name); });

} // namespace
