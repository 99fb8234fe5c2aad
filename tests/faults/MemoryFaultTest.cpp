#include "FaultFixture.h"
#include "PrivateMounts.h"

#include <sys/resource.h>
#include <unistd.h>

#include <fstream>
#include <string>

// Out of memory. Not with sanitizers, which need unlimited address space.

namespace kestrel::test {
namespace {

/// The virtual memory size of this process in bytes.
rlim_t virtualMemorySize() {
    std::ifstream statm("/proc/self/statm");
    rlim_t pages = 0;
    statm >> pages;
    return pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
}

TEST_F(FaultTest, failsTheFileWhoseStderrLineTakesMoreThanTheMemory) {
    queueScript("convert repeat-err 1000000000 x\nconvert exit 1\n");
    queueHarmless();
    // In a child process, so that the limit ends with it.
    const std::string outcomes = PrivateMounts::run([this] {
        constexpr rlim_t headroom = 300'000'000;
        const rlimit limit{virtualMemorySize() + headroom, RLIM_INFINITY};
        if (::setrlimit(RLIMIT_AS, &limit) != 0) {
            return std::string("no limit");
        }
        convertAll();
        return outcomeOf(0) + "|" + outcomeOf(1);
    });
    EXPECT_EQ(outcomes, "failed: There is not enough memory.|completed");
}

} // namespace
} // namespace kestrel::test
