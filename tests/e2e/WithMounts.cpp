// Starts a program with mounts of its own, so that it finds files at fixed places where the machine
// has others or none:
//
//   with-mounts FOLDER [--cover PATH OTHER | --limit FOLDER SIZE | --read-only FOLDER]...
//               -- PROGRAM ARGUMENT...
//
// FOLDER is empty and stays so while the program runs. --cover puts one file or folder over
// another; --limit puts an empty file system of a size such as 1m over a folder, --read-only one
// in which nothing can be made.
#include "PrivateMounts.h"

#include <unistd.h>

#include <cstdio>
#include <exception>
#include <string_view>

namespace {

/// Makes the mount that the words tell, and returns how many of them did. Three can be read.
int makeMount(char** words) {
    using kestrel::test::PrivateMounts;
    const std::string_view option = words[0];
    if (option == "--read-only") {
        PrivateMounts::coverReadOnly(words[1]);
        return 2;
    }
    (option == "--limit" ? PrivateMounts::coverLimited : PrivateMounts::coverWith)(words[1],
                                                                                   words[2]);
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
