// Asked for by the thread sanitizer at its start.
extern "C" const char* __tsan_default_options();

// The toolkit is not instrumented: the sanitizer cannot see how its threads, for a display or a
// message bus, wait for one another, and so leaves out what they do. A copy of the process may
// start threads.
extern "C" const char* __tsan_default_options() {
    return "ignore_noninstrumented_modules=1:die_after_fork=0";
}
