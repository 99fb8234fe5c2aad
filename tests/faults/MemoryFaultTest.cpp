#include "FaultFixture.h"
#include "PrivateMounts.h"

#include <sys/resource.h>
#include <unistd.h>

#include <fstream>
#include <string>

// Too little memory. Not for the sanitizers, which need addresses without end.

namespace kestrel::test {
namespace {

/// Bytes of addresses that this process uses.
rlim_t addressesInUse() {
    std::ifstream statm("/proc/self/statm");
    rlim_t pages = 0;
    statm >> pages;
    return pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
}

TEST_F(FaultTest, failsTheFileWhoseDiagnosticsAreMoreThanTheMemory) {
    queueScript("convert flood-err 1000000000\nconvert exit 1\n");
    queueHarmless();
    // In a process of its own, which the limit goes away with.
    const std::string outcomes = PrivateMounts::run([this] {
        constexpr rlim_t more = 300'000'000;
        const rlimit few{addressesInUse() + more, RLIM_INFINITY};
        if (::setrlimit(RLIMIT_AS, &few) != 0) {
            return std::string("no limit");
        }
        convertAll();
        return outcomeOf(0) + "|" + outcomeOf(1);
    });
    EXPECT_EQ(outcomes, "failed: There is not enough memory.|completed");
}

} // namespace
} // namespace kestrel::test
