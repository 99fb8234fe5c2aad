// Runs a program in its own mount namespace, with other files at fixed paths than the system has:
//
//   with-mounts FOLDER [--cover PATH OTHER | --limit FOLDER SIZE | --read-only FOLDER]...
//               -- PROGRAM ARGUMENT...
//
// FOLDER must be empty and unused while the program runs. --cover mounts the file or folder OTHER
// over PATH; --limit mounts an empty file system of a size such as 1m over a folder, --read-only an
// empty read-only one.
#include "PrivateMounts.h"

#include <unistd.h>

#include <cstdio>
#include <exception>
#include <string_view>

namespace {

/// Makes the mount of the option at the front and returns how many arguments it took. Requires:
/// `arguments` has at least three elements.
int makeMount(char** arguments) {
    using kestrel::test::PrivateMounts;
    const std::string_view option = arguments[0];
    if (option == "--read-only") {
        PrivateMounts::coverReadOnly(arguments[1]);
        return 2;
    }
    (option == "--limit" ? PrivateMounts::coverLimited : PrivateMounts::coverWith)(arguments[1],
                                                                                   arguments[2]);
    return 3;
}

} // namespace

int main(int argc, char** argv) {
    try {
        int next = 2;
        if (argc > next) {
            kestrel::test::PrivateMounts::enter(argv[1]);
        }
        while (next + 2 < argc && std::string_view(argv[next]) != "--") {
            next += makeMount(argv + next);
        }
        if (next + 1 < argc && std::string_view(argv[next]) == "--") {
            ::execvp(argv[next + 1], argv + next + 1);
            std::perror(argv[next + 1]);
        }
    } catch (const std::exception& error) {
        static_cast<void>(std::fprintf(stderr, "with-mounts: %s\n", error.what()));
    }
    return 127;
}
