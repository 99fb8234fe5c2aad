// Starts a program with mounts of its own, so that it finds files at fixed places where the machine
// has others or none:
//
//   with-mounts FOLDER [--cover PATH OTHER | --limit FOLDER SIZE]... -- PROGRAM ARGUMENT...
//
// FOLDER is empty and stays so while the program runs. --cover puts one file or folder over
// another;
// --limit puts an empty file system of a size such as 1m over a folder.
#include "PrivateMounts.h"

#include <unistd.h>

#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

int main(int argc, char** argv) {
    using kestrel::test::PrivateMounts;
    try {
        int next = 2;
        if (argc > next) {
            PrivateMounts::enter(argv[1]);
        }
        for (; next + 2 < argc && std::string_view(argv[next]) != "--"; next += 3) {
            const bool isLimit = std::string_view(argv[next]) == "--limit";
            (isLimit ? PrivateMounts::coverLimited : PrivateMounts::coverWith)(argv[next + 1],
                                                                               argv[next + 2]);
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
