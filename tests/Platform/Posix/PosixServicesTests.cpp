#include "Platform/Posix/PosixServices.h"
#include "tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>

namespace {

using platform::FileStandardOutput;

class FileStandardOutputTests : public testing::Test {
  public:
    FileStandardOutputTests() {
        if (pipe(pipe_.data()) != 0) {
            std::abort();
        }
    }

    ~FileStandardOutputTests() override {
        closeReader();
        closeWriter();
    }

  protected:
    void closeReader() { closeOnce(pipe_[0]); }

    void closeWriter() { closeOnce(pipe_[1]); }

    [[nodiscard]] int writer() const { return pipe_[1]; }

    /// Reads until that much has arrived or there are no writers left.
    std::string read(std::size_t size) {
        std::string text(size, '\0');
        std::size_t done = 0;
        while (done < size) {
            const ssize_t count = ::read(pipe_[0], text.data() + done, size - done);
            if (count <= 0) {
                break;
            }
            done += static_cast<std::size_t>(count);
        }
        text.resize(done);
        return text;
    }

  private:
    static void closeOnce(int& descriptor) {
        if (descriptor >= 0) {
            close(descriptor);
        }
        descriptor = -1;
    }

    std::array<int, 2> pipe_{-1, -1};
};

TEST_F(FileStandardOutputTests, WritesEachLineImmediately) {
    FileStandardOutput output(writer());
    output.writeLine("Checking");
    EXPECT_EQ(read(9), "Checking\n");
    output.writeLine("");
    EXPECT_EQ(read(1), "\n");
    output.writeLine(std::string_view("zero\0\xC3\xA9", 7));
    EXPECT_EQ(read(8), std::string("zero\0\xC3\xA9\n", 8));
}

TEST_F(FileStandardOutputTests, WritesALineThatTakesSeveralWrites) {
    const std::string line(1'000'000, 'x');
    std::string received;
    std::thread reader([&] { received = read(line.size() + 1); });
    FileStandardOutput(writer()).writeLine(line);
    reader.join();
    EXPECT_EQ(received, line + "\n");
}

TEST_F(FileStandardOutputTests, ContinuesAfterASignal) {
    struct sigaction previous {};

    struct sigaction interrupting {};

    interrupting.sa_handler = [](int /*signal*/) {};
    ASSERT_EQ(sigaction(SIGALRM, &interrupting, &previous), 0);
    const itimerval everyMillisecond{.it_interval = {.tv_sec = 0, .tv_usec = 1000},
                                     .it_value = {.tv_sec = 0, .tv_usec = 1000}};
    const std::string line(1'000'000, 'x');
    std::string received;
    std::thread reader([&] {
        // The signals must reach the writing thread.
        sigset_t alarm{};
        sigemptyset(&alarm);
        sigaddset(&alarm, SIGALRM);
        pthread_sigmask(SIG_BLOCK, &alarm, nullptr);
        while (received.size() < line.size() + 1) {
            usleep(200);
            received += read(std::min<std::size_t>(16384, line.size() + 1 - received.size()));
        }
    });
    setitimer(ITIMER_REAL, &everyMillisecond, nullptr);
    FileStandardOutput(writer()).writeLine(line);
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    reader.join();
    sigaction(SIGALRM, &previous, nullptr);
    EXPECT_EQ(received, line + "\n");
}

TEST_F(FileStandardOutputTests, DropsALineWithoutAReader) {
    EXPECT_EXIT(
        {
            static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
            closeReader();
            FileStandardOutput output(writer());
            output.writeLine("lost");
            output.writeLine("lost");
            std::exit(0);
        },
        testing::ExitedWithCode(0),
        "");
}

TEST_F(FileStandardOutputTests, NeverWritesToAFileThatReusesAClosedDescriptor) {
    const int number = writer();
    closeWriter();
    FileStandardOutput output(number);
    const testing_support::TemporaryFolder folder;
    const auto path = folder.path() / "other";
    const int other = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(other, number);
    output.writeLine("lost");
    EXPECT_EQ(std::filesystem::file_size(path), 0U);
    close(other);
}

TEST_F(FileStandardOutputTests, DropsALineIfTheDiskIsFull) {
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    if (full < 0) {
        GTEST_SKIP() << "This system has no disk that is always full";
    }
    FileStandardOutput(full).writeLine("lost");
    close(full);
}

} // namespace
