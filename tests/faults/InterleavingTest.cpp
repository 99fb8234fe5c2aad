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

// Stress test: two threads interrupt while a third starts and reaps children.

namespace kestrel::test {
namespace {

using Call = CallHook::Call;

/// The phase of the conversion, as the hooked calls show it.
enum class Phase : unsigned char { idle, registered, launching, running, exited };

/// Sends interrupts for its lifetime; counts those that began and ended in the same phase.
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
        // Some pauses exceed a conversion, so that some conversions complete.
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

struct Outcomes {
    int completed = 0;
    int cancelled = 0;
};

void print(const Outcomes& outcomes, const Interrupters& interrupters) {
    std::cout << outcomes.completed << " conversions completed, " << outcomes.cancelled
              << " cancelled; interrupts before the start " << interrupters.count(Phase::registered)
              << ", during it " << interrupters.count(Phase::launching) << ", at work "
              << interrupters.count(Phase::running) << ", after the exit "
              << interrupters.count(Phase::exited) << '\n';
}

class InterleavingTest : public ::testing::Test {
  protected:
    void convertOnce(Interrupters& interrupters, Outcomes& outcomes) {
        interrupters.enter(Phase::idle);
        threads_ = 0;
        spawns_ = 0;
        waits_ = 0;
        try {
            service.convert(source, folder.file("out/x.mp3"), {}, [](double) {});
            ++outcomes.completed;
        } catch (const FFmpegError& error) {
            ASSERT_EQ(error.which(), FFmpegError::Case::cancelled) << error.errorDescription();
            ++outcomes.cancelled;
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

TEST_F(InterleavingTest, areHarmlessInTheTwoRacesThatAreAllowed) {
    const unsigned int seed = randomSeed();
    std::cout << "seed " << seed << '\n';
    Interrupters interrupters(service, seed);
    // The probe makes thread 1, child 1 and waits 1 and 2. The conversion creates its stderr reader
    // before its child.
    const CallHook threads(Call::thread, [&](int) {
        if (++threads_ == 2) {
            interrupters.enter(Phase::registered);
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
    const CallHook pidfdOpens(Call::openProcess, [&](int) {
        if (spawns_ == 2) {
            interrupters.enter(Phase::running);
        }
        return 0;
    });
    const CallHook waits(Call::waitForExit, [&](int) {
        // The wait that reaps the exited child.
        if (++waits_ == 4) {
            interrupters.enter(Phase::exited);
            std::this_thread::yield();
        }
        return 0;
    });
    Outcomes outcomes;
    int conversions = 0;
    const auto isEnough = [&] {
        return conversions >= 500 && interrupters.count(Phase::registered) > 0 &&
               interrupters.count(Phase::launching) > 0 && interrupters.count(Phase::exited) > 0 &&
               outcomes.completed > 0 && outcomes.cancelled > 0;
    };
    for (; conversions < 5000 && !isEnough(); ++conversions) {
        convertOnce(interrupters, outcomes);
        ASSERT_FALSE(HasFatalFailure()) << "seed " << seed;
    }
    print(outcomes, interrupters);
    EXPECT_TRUE(isEnough()) << "seed " << seed;
}

} // namespace
} // namespace kestrel::test
