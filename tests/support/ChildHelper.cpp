// Fake child process that runs a script of one command per line:
//
//   --script TEXT    runs this script
//   ... -i FILE ...  stands in for ffmpeg and runs the script in the input file: the lines with the
//                    prefix "probe " for a duration probe, those with "convert " otherwise
//
// Text arguments support the escapes \n \r \\ and \xHH.

#include <dirent.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::vector<std::string> arguments;
std::string interruptText;
int interruptStatus = 0;

void writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return;
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            result += text[i];
        } else if (text[++i] == 'x') {
            result += static_cast<char>(std::stoi(std::string(text.substr(i + 1, 2)), nullptr, 16));
            i += 2;
        } else {
            result += text[i] == 'n' ? '\n' : text[i] == 'r' ? '\r' : text[i];
        }
    }
    return result;
}

/// Writes the text `times` times.
void repeat(int descriptor, const std::string& times, std::string_view text) {
    const std::size_t textsInBlock = std::size_t{64} * 1024 / text.size() + 1;
    std::string block;
    for (std::size_t i = 0; i < textsInBlock; ++i) {
        block += text;
    }
    for (std::uint64_t left = std::stoull(times); left > 0;) {
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(left, textsInBlock));
        writeAll(descriptor, std::string_view(block).substr(0, count * text.size()));
        left -= count;
    }
}

/// Writes at least `byteCount` bytes, in lines of 80.
void flood(int descriptor, const std::string& byteCount) {
    constexpr std::uint64_t lineLength = 80;
    const std::string line = std::string(lineLength - 1, 'x') + '\n';
    repeat(descriptor, std::to_string((std::stoull(byteCount) - 1) / lineLength + 1), line);
}

/// Floods stdout and stderr concurrently.
void floodBoth(const std::string& byteCount) {
    const pid_t other = ::fork();
    flood(other == 0 ? STDERR_FILENO : STDOUT_FILENO, byteCount);
    if (other == 0) {
        ::_exit(0);
    }
    ::waitpid(other, nullptr, 0);
}

extern "C" void handleSigint(int) {
    writeAll(STDOUT_FILENO, interruptText);
    ::_exit(interruptStatus);
}

[[noreturn]] void block() {
    while (true) {
        ::pause();
    }
}

/// Forks a grandchild that keeps the descriptor open until the file exists, ten seconds at most.
void holdInGrandchild(int descriptor, const std::string& untilFile) {
    if (::fork() != 0) {
        return;
    }
    for (const int other : {STDOUT_FILENO, STDERR_FILENO}) {
        if (other != descriptor) {
            ::close(other);
        }
    }
    for (int i = 0; i < 10'000 && ::access(untilFile.c_str(), F_OK) != 0; ++i) {
        ::usleep(1000);
    }
    ::_exit(0);
}

/// Writes what this process inherited to the file: open descriptors, blocked and ignored signals,
/// process group, niceness, working folder and an environment variable.
void report(const std::string& file) {
    std::ofstream out(file + ".part");
    DIR* const folder = ::opendir("/proc/self/fd");
    while (const dirent* const entry = ::readdir(folder)) {
        const std::string name = entry->d_name;
        if (name[0] != '.' && name != std::to_string(::dirfd(folder))) {
            std::string target(PATH_MAX, '\0');
            const std::string link = "/proc/self/fd/" + name;
            const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
            target.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
            if (target != file + ".part") {
                out << "fd " << name << ' ' << target << '\n';
            }
        }
    }
    ::closedir(folder);
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("SigBlk:") || line.starts_with("SigIgn:")) {
            out << line << '\n';
        }
    }
    out << "group " << ::getpgrp() << '\n';
    out << "nice " << ::getpriority(PRIO_PROCESS, 0) << '\n';
    out << "folder " << std::filesystem::current_path().string() << '\n';
    const char* const variable = std::getenv("KESTREL_TEST_VARIABLE");
    out << "variable " << (variable != nullptr ? variable : "") << '\n';
    out.close();
    std::filesystem::rename(file + ".part", file);
}

void recordArguments(const std::string& file) {
    std::ofstream out(file, std::ios::app | std::ios::binary);
    for (const std::string& argument : arguments) {
        out << argument << '\0';
    }
    out << '\n';
}

void waitForFile(const std::string& file) {
    for (int i = 0; i < 20'000 && ::access(file.c_str(), F_OK) != 0; ++i) {
        ::usleep(500);
    }
}

void run(const std::string& command, const std::string& rest) {
    const std::size_t blank = rest.find(' ');
    const std::string first = rest.substr(0, blank);
    const std::string second = blank == std::string::npos ? "" : rest.substr(blank + 1);
    const std::map<std::string, std::function<void()>> commands{
        {"out", [&] { writeAll(STDOUT_FILENO, unescaped(rest)); }},
        {"err", [&] { writeAll(STDERR_FILENO, unescaped(rest)); }},
        {"flood-out", [&] { flood(STDOUT_FILENO, rest); }},
        {"flood-err", [&] { flood(STDERR_FILENO, rest); }},
        {"flood-both", [&] { floodBoth(rest); }},
        {"repeat-out", [&] { repeat(STDOUT_FILENO, first, unescaped(second)); }}, // TIMES TEXT
        {"repeat-err", [&] { repeat(STDERR_FILENO, first, unescaped(second)); }},
        {"trickle-out", // byte by byte
         [&] {
             for (const char byte : unescaped(rest)) {
                 writeAll(STDOUT_FILENO, {&byte, 1});
             }
         }},
        {"close-out", [] { ::close(STDOUT_FILENO); }},
        {"close-err", [] { ::close(STDERR_FILENO); }},
        {"exit", [&] { ::_exit(std::stoi(rest)); }},
        {"raise", [&] { static_cast<void>(::raise(std::stoi(rest))); }},
        {"block", [] { block(); }},
        {"ignore-interrupt", [] { static_cast<void>(::signal(SIGINT, SIG_IGN)); }},
        {"on-interrupt", // STATUS TEXT: writes the text and exits with the status
         [&] {
             interruptStatus = std::stoi(first);
             interruptText = unescaped(second);
             static_cast<void>(::signal(SIGINT, handleSigint));
         }},
        {"hold-out", [&] { holdInGrandchild(STDOUT_FILENO, rest); }},
        {"hold-err", [&] { holdInGrandchild(STDERR_FILENO, rest); }},
        {"touch", [&] { std::ofstream(rest).put('x'); }},
        {"wait-for", [&] { waitForFile(rest); }},
        {"report", [&] { report(rest); }},
        {"record-arguments", [&] { recordArguments(rest); }},
        {"write-output", [&] { std::ofstream(arguments.back()) << unescaped(rest); }},
    };
    commands.at(command)();
}

void runScript(std::istream& script, std::string_view prefix) {
    for (std::string line; std::getline(script, line);) {
        if (line.starts_with(prefix)) {
            line.erase(0, prefix.size());
            const std::size_t blank = line.find(' ');
            run(line.substr(0, blank), blank == std::string::npos ? "" : line.substr(blank + 1));
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    arguments.assign(argv + 1, argv + argc);
    if (arguments.size() == 2 && arguments[0] == "--script") {
        std::istringstream script(arguments[1]);
        runScript(script, "");
        return 0;
    }
    const auto option = std::find(arguments.begin(), arguments.end(), "-i");
    if (option == arguments.end() || std::next(option) == arguments.end()) {
        return 64;
    }
    const bool isProbe = arguments.size() == 3;
    std::ifstream script(*std::next(option));
    runScript(script, isProbe ? "probe " : "convert ");
    return isProbe ? 1 : 0;
}
