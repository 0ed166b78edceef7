#pragma once

#include "Foundation/Interface.h"

#include <unistd.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace tools {

/// Where a filter writes: standard output, or a file that is replaced only when it is complete.
/// Failures throw std::system_error. There is at most one.
class Output : foundation::Pinned {
  public:
    /// "-" stands for standard output. The text for a file is collected in a temporary
    /// file in the same folder. A device or pipe is written to directly.
    explicit Output(const std::filesystem::path& path);

    /// Removes the temporary file of an unfinished output, as SIGINT, SIGTERM and SIGHUP do.
    ~Output();

    void write(std::string_view text);

    /// Closes the output, since some file systems report a failed write only then, and replaces the
    /// file.
    void finish();

  private:
    [[noreturn]] void fail() const;

    std::string name_;
    int descriptor_ = STDOUT_FILENO;
    /// The file to replace, with symbolic links resolved.
    std::filesystem::path target_;
    /// Empty if nothing is to be replaced.
    std::string temporary_;
};

} // namespace tools
