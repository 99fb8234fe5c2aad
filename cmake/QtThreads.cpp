// Called by the thread sanitizer at start-up.
extern "C" const char* __tsan_default_options();

// Debian's Qt 6.4 to 6.11 is not instrumented: the sanitizer cannot see how its threads, for the
// display connection and D-Bus, synchronise, and must ignore their accesses. A forked process may
// start threads.
extern "C" const char* __tsan_default_options() {
    return "ignore_noninstrumented_modules=1:die_after_fork=0";
}
