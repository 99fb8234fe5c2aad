#include "FaultFixture.h"
#include "PeakMemory.h"
#include "ProcessCounts.h"
#include "Seed.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <random>
#include <string>
#include <vector>

// Soak test: shows leaks of as little as one conversion in a hundred.

namespace kestrel::test {
namespace {

/// What this process uses after that many conversions.
struct ResourceUsage {
    int conversions = 0;
    ProcessCounts counts;
    std::size_t bytes = 0;
};

void print(const std::vector<ResourceUsage>& usages) {
    std::cout << "conversions  descriptors  threads  KiB\n";
    for (const ResourceUsage& row : usages) {
        std::cout << std::setw(11) << row.conversions << std::setw(13) << row.counts.descriptors
                  << std::setw(9) << row.counts.threads << std::setw(9) << row.bytes / 1024 << '\n';
    }
}

class SoakTest : public FaultTest {
  protected:
    static constexpr int conversionsInAll = 2000;
    static constexpr int interval = 100;
    static constexpr std::size_t queueLength = 20;

    /// Writes input files whose scripts succeed, fail, flood or block.
    void writeSources() {
        const std::string probe = "probe err Duration: 00:00:10.00\\n\n";
        const std::string report = "convert out out_time_ms=5000000\\nprogress=continue\\n\n";
        const std::vector<std::string> scripts{
            probe + report + "convert write-output fine\n",
            "convert err no such thing\\n\nconvert exit 1\n",
            probe + "convert flood-err 500000\nconvert exit 1\n",
            probe + "convert flood-out 500000\n" + report,
            probe + "convert repeat-out 300 out_time_ms=100\\n\n",
            probe + report + "convert wait-for " + path("never") + "\n",
            "convert on-interrupt 255 progress=end\\n\n" + report + "convert wait-for " +
                path("never") + "\n",
        };
        for (std::size_t i = 0; i < queueLength; ++i) {
            const std::string name = "in/" + std::to_string(i + 1) + ".opus";
            folder.write(name, scripts[i % scripts.size()]);
        }
    }

    void refill() {
        while (!model->jobs().empty()) {
            model->remove(model->jobs().back());
        }
        model->add({folder.file("in")});
        std::filesystem::remove_all(destination.path());
    }

    /// Counts the conversions that end from now on, whatever their outcome.
    void countConversions() {
        QObject::connect(model.get(), &ConverterViewModel::willChange, model.get(),
                         [this, wasConverting = false]() mutable {
                             const std::vector<JobState> now = states();
                             const bool isConvertingNow =
                                 std::any_of(now.begin(), now.end(), [](const JobState& state) {
                                     return state.is(JobState::Case::converting);
                                 });
                             if (wasConverting && !isConvertingNow) {
                                 ++conversions;
                             }
                             wasConverting = isConvertingNow;
                         });
    }

    /// Conversions that block need a cancel, and a second one if the first came during the probe;
    /// the others get one now and then.
    void runBatch(std::mt19937& random) {
        model->start();
        while (model->isConverting()) {
            std::uniform_int_distribution<int> timeout(1, 60);
            if (!runUntil([this] { return !model->isConverting(); }, timeout(random))) {
                model->cancel();
                ++cancels;
            }
        }
    }

    ResourceUsage currentUsage() const {
        ResourceUsage usage;
        // The threads of a conversion may take a moment to end.
        EXPECT_TRUE(runUntil([this] { return ProcessCounts::now().threads <= idleThreads_; }));
        usage.conversions = conversions;
        usage.counts = ProcessCounts::now();
        usage.bytes = PeakMemory::resident();
        return usage;
    }

    int conversions = 0;
    int cancels = 0;

  private:
    const std::size_t idleThreads_ = ProcessCounts::now().threads;
};

TEST_F(SoakTest, leaksNothingOverTwoThousandConversions) {
    const unsigned int seed = randomSeed();
    std::mt19937 random(seed);
    writeSources();
    chooseDestination();
    countConversions();
    std::vector<ResourceUsage> usages;
    for (int next = interval; conversions < conversionsInAll;) {
        if (model->completedCount() > queueLength / 2 || model->jobs().empty()) {
            refill();
        }
        runBatch(random);
        if (conversions >= next) {
            usages.push_back(currentUsage());
            next += interval;
        }
    }
    std::cout << "seed " << seed << ", " << cancels << " cancels\n";
    print(usages);
    const ResourceUsage& first = usages.front();
    const ResourceUsage& last = usages.back();
    EXPECT_LE(last.counts.descriptors, first.counts.descriptors) << "seed " << seed;
    EXPECT_LE(last.counts.threads, first.counts.threads) << "seed " << seed;
    if (!PeakMemory::isBlurred()) {
        // malloc() may create another arena for a new thread.
        constexpr std::size_t slack = 3UL * 1024 * 1024;
        EXPECT_LE(last.bytes, first.bytes + slack) << "seed " << seed;
    }
}

} // namespace
} // namespace kestrel::test
