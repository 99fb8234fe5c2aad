#include "CallHook.h"
#include "FFmpegError.h"
#include "FFmpegService.h"
#include "LeakGuard.h"
#include "Seed.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <iostream>
#include <optional>
#include <random>
#include <thread>

// Interrupts from two threads against starts and exits on a third, as fast as they can.

namespace kestrel::test {
namespace {

using Call = CallHook::Call;

/// Where the conversion stands, as far as the calls that it makes tell.
enum class Phase : unsigned char { idle, stored, launching, running, exited };

/// Sends interrupts without end and counts those that began and ended in the same phase.
class Interrupters {
  public:
    explicit Interrupters(FFmpegService& service, unsigned int seed)
        : threads_{std::thread([this, &service, seed] { run(service, seed); }),
                   std::thread([this, &service, seed] { run(service, seed + 1); })} {}

    Interrupters(const Interrupters&) = delete;
    Interrupters& operator=(const Interrupters&) = delete;

    ~Interrupters() {
        isDone_ = true;
        for (std::thread& thread : threads_) {
            thread.join();
        }
    }

    void enter(Phase phase) { phase_ = phase; }

    Phase phase() const { return phase_; }

    int count(Phase phase) const { return counts_.at(static_cast<std::size_t>(phase)); }

  private:
    void run(FFmpegService& service, unsigned int seed) {
        std::mt19937 random(seed);
        // Some conversions must get to their end, so there are pauses longer than one.
        std::uniform_int_distribution<int> pause(0, 40);
        while (!isDone_) {
            for (int i = 0; i < 20; ++i) {
                const Phase before = phase_;
                service.interruptActiveProcess();
                if (phase_ == before) {
                    ++counts_.at(static_cast<std::size_t>(before));
                }
            }
            std::this_thread::sleep_for(std::chrono::microseconds(pause(random) * 250));
        }
    }

    std::atomic<Phase> phase_ = Phase::idle;
    std::array<std::atomic<int>, 5> counts_{};
    std::atomic<bool> isDone_ = false;
    std::array<std::thread, 2> threads_;
};

/// How often each way of ending came about.
struct Ends {
    int completed = 0;
    int cancelled = 0;
};

void print(const Ends& ends, const Interrupters& interrupters) {
    std::cout << ends.completed << " conversions completed, " << ends.cancelled
              << " cancelled; interrupts before the start " << interrupters.count(Phase::stored)
              << ", during it " << interrupters.count(Phase::launching) << ", at work "
              << interrupters.count(Phase::running) << ", after the exit "
              << interrupters.count(Phase::exited) << '\n';
}

class InterleavingTest : public ::testing::Test {
  protected:
    void convertOnce(Interrupters& interrupters, Ends& ends) {
        interrupters.enter(Phase::idle);
        threads_ = 0;
        spawns_ = 0;
        waits_ = 0;
        try {
            service.convert(source, folder.file("out/x.mp3"), {}, [](double) {});
            ++ends.completed;
        } catch (const FFmpegError& error) {
            ASSERT_EQ(error.which(), FFmpegError::Case::cancelled) << error.errorDescription();
            ++ends.cancelled;
        }
    }

    LeakGuard guard;
    TemporaryFolder folder;
    FileURL source = folder.write("x.opus", "probe err Duration: 00:00:10.00\\n\n"
                                            "convert out out_time_ms=5000000\\nprogress=end\\n\n");
    FFmpegService service{[] { return std::optional(FileURL(CHILD_HELPER)); }};
    int threads_ = 0;
    int spawns_ = 0;
    std::atomic<int> waits_ = 0;
};

TEST_F(InterleavingTest, doNoHarmInTheTwoRacesThatAreAllowed) {
    const unsigned int seed = randomSeed();
    std::cout << "seed " << seed << '\n';
    Interrupters interrupters(service, seed);
    // The probe comes first with a thread, a child and two waits; then the conversion has its
    // reader before its child.
    const CallHook threads(Call::thread, [&](int) {
        if (++threads_ == 2) {
            interrupters.enter(Phase::stored);
            std::this_thread::yield();
        }
        return 0;
    });
    const CallHook spawns(Call::spawn, [&](int) {
        if (++spawns_ == 2) {
            interrupters.enter(Phase::launching);
        }
        return 0;
    });
    const CallHook openings(Call::openProcess, [&](int) {
        if (spawns_ == 2) {
            interrupters.enter(Phase::running);
        }
        return 0;
    });
    const CallHook waits(Call::waitForExit, [&](int) {
        // The last wait, for a child that has exited.
        if (++waits_ == 4) {
            interrupters.enter(Phase::exited);
            std::this_thread::yield();
        }
        return 0;
    });
    Ends ends;
    int conversions = 0;
    const auto isEnough = [&] {
        return conversions >= 500 && interrupters.count(Phase::stored) > 0 &&
               interrupters.count(Phase::launching) > 0 && interrupters.count(Phase::exited) > 0 &&
               ends.completed > 0 && ends.cancelled > 0;
    };
    for (; conversions < 5000 && !isEnough(); ++conversions) {
        convertOnce(interrupters, ends);
        ASSERT_FALSE(HasFatalFailure()) << "seed " << seed;
    }
    print(ends, interrupters);
    EXPECT_TRUE(isEnough()) << "seed " << seed;
}

} // namespace
} // namespace kestrel::test
