#include "MediaFiles.h"

#include "ParseNumber.h"
#include "Pipe.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace kestrel::test {

std::string runProgram(const std::vector<std::string>& command) {
    Pipe output = Pipe::make();
    posix_spawn_file_actions_t actions{};
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&actions, output.writeEnd.get(), STDOUT_FILENO);
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    pid_t child = -1;
    const int error =
        ::posix_spawnp(&child, arguments.front(), &actions, nullptr, arguments.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throw std::runtime_error("cannot start " + command.front());
    }
    output.writeEnd.reset();
    std::string text = readToEnd(std::move(output.readEnd));
    int status = 0;
    ::waitpid(child, &status, 0);
    if (status != 0) {
        throw std::runtime_error(command.front() + " failed");
    }
    return text;
}

namespace {

/// Returns a tone of this duration, generated unless cached by an earlier test.
std::filesystem::path tone(double seconds) {
    std::ostringstream length;
    length << seconds;
    // Set where the build folder is read-only.
    const char* const variable = std::getenv("KESTREL_TEST_MEDIA");
    const std::filesystem::path folder = variable != nullptr ? variable : TEST_MEDIA;
    std::filesystem::path file = folder / ("tone-" + length.str() + ".opus");
    if (!std::filesystem::exists(file)) {
        std::filesystem::create_directories(folder);
        // Renamed into place atomically, as tests may generate it concurrently.
        const std::string temporary = file.string() + "." + std::to_string(::getpid());
        runProgram({"ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i",
                    "sine=frequency=440:duration=" + length.str(), "-c:a", "libopus",
                    "-compression_level", "0", "-b:a", "32k", "-metadata", "title=A tone", "-f",
                    "ogg", temporary});
        std::filesystem::rename(temporary, file);
    }
    return file;
}

} // namespace

void makeOpusFile(const FileURL& url, double seconds) {
    std::filesystem::create_directories(url.deletingLastPathComponent().path());
    std::filesystem::copy_file(tone(seconds), url.path(),
                               std::filesystem::copy_options::overwrite_existing);
}

void makeLongOpusFile(const FileURL& url, int minutes) {
    const FileURL minute = url.deletingLastPathComponent().appendingPathComponent("minute");
    makeOpusFile(minute, 60);
    runProgram({"ffmpeg", "-v", "error", "-stream_loop", std::to_string(minutes - 1), "-i",
                minute.path(), "-c", "copy", "-f", "ogg", url.path()});
    std::filesystem::remove(minute.path());
}

AudioDescription describeAudio(const FileURL& url) {
    const std::string text =
        runProgram({"ffprobe", "-v", "error", "-select_streams", "a:0", "-show_entries",
                    "stream=codec_name,sample_fmt:format=duration", "-of", "default=nw=1",
                    "file:" + url.path()});
    AudioDescription description;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t equals = line.find('=');
        const std::string value = equals == std::string::npos ? "" : line.substr(equals + 1);
        if (line.starts_with("codec_name=")) {
            description.codec = value;
        } else if (line.starts_with("sample_fmt=")) {
            description.sampleFormat = value;
        } else if (line.starts_with("duration=")) {
            description.seconds = parseNumber(value).value_or(0);
        }
    }
    if (description.codec.empty()) {
        throw std::runtime_error("no audio in " + url.path());
    }
    return description;
}

} // namespace kestrel::test
