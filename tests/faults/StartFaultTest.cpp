#include "CallHook.h"
#include "FaultFixture.h"
#include "FileDescriptor.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>
#include <vector>

// What can go wrong before ffmpeg runs.

namespace kestrel::test {
namespace {

using Call = CallHook::Call;
using ::testing::Values;

struct BadProgram {
    const char* name;
    /// Creates the program at `path`.
    void (*make)(const std::string& path);
    const char* reason;

    friend std::ostream& operator<<(std::ostream& out, const BadProgram& row) {
        return out << row.name;
    }
};

void writeProgram(const std::string& path, const char* text) {
    std::ofstream(path) << text;
    std::filesystem::permissions(path, std::filesystem::perms::all);
}

class BadProgramTest : public FaultTest, public ::testing::WithParamInterface<BadProgram> {};

TEST_P(BadProgramTest, failsEveryFileWithTheSystemsReason) {
    const std::string program = path("ffmpeg");
    GetParam().make(program);
    binary = FileURL(program);
    const std::string expected =
        "failed: The program “" + program + "” could not be started: " + GetParam().reason + ".";
    EXPECT_EQ(outcome("convert touch " + path("started") + "\n"), expected);
    EXPECT_EQ(outcomeOf(1), expected);
    EXPECT_FALSE(exists("started"));
}

INSTANTIATE_TEST_SUITE_P(
    StartFaults, BadProgramTest,
    Values(BadProgram{"missing", [](const std::string&) {}, "No such file or directory"},
           BadProgram{"notExecutable", [](const std::string& path) { std::ofstream{path}; },
                      "Permission denied"},
           BadProgram{"folder",
                      [](const std::string& path) { std::filesystem::create_directory(path); },
                      "Permission denied"},
           BadProgram{"textWithoutInterpreter",
                      [](const std::string& path) { writeProgram(path, "text\n"); },
                      "Exec format error"},
           BadProgram{"lostInterpreter",
                      [](const std::string& path) { writeProgram(path, "#!/nowhere/at/all\n"); },
                      "No such file or directory"},
           BadProgram{"empty", [](const std::string& path) { writeProgram(path, ""); },
                      "Exec format error"},
           BadProgram{"linkToItself",
                      [](const std::string& path) { std::filesystem::create_symlink(path, path); },
                      "Too many levels of symbolic links"}),
    [](const auto& row) { return std::string(row.param.name); });

struct FailingCall {
    const char* name;
    Call call;
    /// The number of the call, counted from 1; the probe has its own thread and child.
    int count;
    int error;
    /// nullptr if the conversion succeeds anyway.
    const char* reason;

    friend std::ostream& operator<<(std::ostream& out, const FailingCall& row) {
        return out << row.name;
    }
};

class FailingCallTest : public FaultTest, public ::testing::WithParamInterface<FailingCall> {};

TEST_P(FailingCallTest, costsAtMostTheCurrentFile) {
    const FailingCall& row = GetParam();
    const CallHook hook(row.call, CallHook::failing(row.count, row.error));
    const std::string expected = row.reason == nullptr
                                     ? "completed"
                                     : "failed: The program “" + std::string(CHILD_HELPER) +
                                           "” could not be started: " + row.reason + ".";
    EXPECT_EQ(outcome("convert write-output fine\n"), expected);
    EXPECT_EQ(outcomeOf(1), "completed");
    EXPECT_EQ(contents(output("1_converted.mp3")), row.reason == nullptr ? "fine" : "");
    EXPECT_EQ(contents(output("2_converted.mp3")), "fine");
}

constexpr const char* tooManyFiles = "Too many open files";
constexpr const char* noMemory = "Cannot allocate memory";
constexpr const char* tryAgain = "Resource temporarily unavailable";

INSTANTIATE_TEST_SUITE_P(
    StartFaults, FailingCallTest,
    Values(FailingCall{"noPipeForTheProbe", Call::pipe, 1, EMFILE, nullptr},
           FailingCall{"noPipeForTheProgress", Call::pipe, 2, EMFILE, tooManyFiles},
           FailingCall{"noPipeForTheDiagnostics", Call::pipe, 3, EMFILE, tooManyFiles},
           FailingCall{"noPipeInTheWholeSystem", Call::pipe, 2, ENFILE,
                       "Too many open files in system"},
           FailingCall{"noMemoryForAPipe", Call::pipe, 2, ENOMEM, noMemory},
           FailingCall{"noProcessForTheProbe", Call::spawn, 1, EAGAIN, nullptr},
           FailingCall{"noProcess", Call::spawn, 2, EAGAIN, tryAgain},
           FailingCall{"noMemoryForAProcess", Call::spawn, 2, ENOMEM, noMemory},
           FailingCall{"noPidfdForTheProbe", Call::openProcess, 1, EMFILE, nullptr},
           FailingCall{"noPidfd", Call::openProcess, 2, EMFILE, nullptr},
           FailingCall{"noMemoryForAPidfd", Call::openProcess, 2, ENOMEM, nullptr},
           FailingCall{"kernelWithoutPidfds", Call::openProcess, 2, ENOSYS, nullptr},
           FailingCall{"noThreadForTheProbe", Call::thread, 2, EAGAIN, nullptr},
           FailingCall{"noThreadForTheDiagnostics", Call::thread, 3, EAGAIN, tryAgain}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(FaultTest, failsTheFileWithoutAWorkerThreadAndContinues) {
    const CallHook hook(Call::thread, CallHook::failing(1, EAGAIN));
    EXPECT_EQ(outcome("convert touch " + path("started") + "\n"),
              "failed: Resource temporarily unavailable");
    EXPECT_EQ(outcomeOf(1), "completed");
    EXPECT_FALSE(exists("started"));
}

TEST_F(FaultTest, interruptsAChildOnAKernelWithoutPidfds) {
    const CallHook hook(Call::openProcess, [](int) { return ENOSYS; });
    queueScript("convert touch " + path("up") + "\nconvert block\n");
    queueHarmless();
    chooseDestination();
    model->start();
    ASSERT_TRUE(runUntil([this] { return exists("up"); }));
    model->cancel();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    EXPECT_EQ(outcomeOf(0), "cancelled");
    EXPECT_EQ(outcomeOf(1), "waiting");
}

/// Leaves this process exactly `more` free file descriptors for its lifetime.
class FewDescriptors {
  public:
    explicit FewDescriptors(rlim_t more) {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        // RLIMIT_NOFILE limits the values of descriptors, not their count, and inherited ones may
        // lie between the lowest free values.
        std::vector<FileDescriptor> lowestFree;
        for (rlim_t i = 0; i <= more; ++i) {
            lowestFree.emplace_back(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        }
        rlimit few = before_;
        few.rlim_cur = static_cast<rlim_t>(lowestFree.back().get());
        ::setrlimit(RLIMIT_NOFILE, &few);
    }

    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;

    ~FewDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }

  private:
    rlimit before_{};
};

class FewDescriptorsTest : public FaultTest, public ::testing::WithParamInterface<rlim_t> {};

TEST_P(FewDescriptorsTest, failsOnlyWhatCannotBeStarted) {
    queueScript("convert write-output fine\n");
    queueScript("convert write-output fine\n");
    chooseDestination();
    {
        const FewDescriptors few(GetParam());
        model->start();
        ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    }
    // Two pipes take four descriptors; two of them are kept, and then a pidfd is opened.
    const std::string expected = GetParam() < 4 ? "failed: The program “" CHILD_HELPER
                                                  "” could not be started: Too many open files."
                                                : "completed";
    EXPECT_EQ(outcomeOf(0), expected);
    EXPECT_EQ(outcomeOf(1), expected);
    convertAll();
    EXPECT_EQ(outcomeOf(0), "completed");
    EXPECT_EQ(outcomeOf(1), "completed");
}

INSTANTIATE_TEST_SUITE_P(StartFaults, FewDescriptorsTest, Values(0, 1, 2, 3, 4, 5, 6));

} // namespace
} // namespace kestrel::test
