// Asked for by the thread sanitizer at its start.
extern "C" const char* __tsan_default_options();

// Debian's Qt 6.4 to 6.11 are not instrumented: the sanitizer cannot see how their threads, for a
// display or a message bus, wait for one another, and so leaves out what they do. A copy of the
// process may start threads.
extern "C" const char* __tsan_default_options() {
    return "ignore_noninstrumented_modules=1:die_after_fork=0";
}
