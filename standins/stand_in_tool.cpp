// Stands in for the transfer tool where that one is too orderly. Takes the same arguments and behaves as the
// source file's name says:
//   good…         reports progress and succeeds
//   failing…      complains and exits with 3
//   brief…        exits with 3 after 50 ms; when it began and when it ended, in nanoseconds of the monotonic
//   clock, is the
//                 last line of a file "ran" beside the program
//   patient…      says "ready", and nothing else until it is stopped
//   talkative…    writes 1000 reports a second, each in a chunk of its own, until it is stopped
//   flood-tiny…   writes 100 MB as fast as it can, 8 bytes at a time
//   flood-huge…   the same, 1 MiB at a time
//   flood-lines…  the same, in lines of 1 MiB
// What floods then says "flooded" and waits to be stopped. A termination request ends it with status 1, and
// its time, in nanoseconds of the monotonic clock, is the last line of a file "stopped" beside the program.

#include <algorithm>
#include <array>
#include <cerrno>
#include <cinttypes>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

constexpr std::size_t floodBytes = 100'000'000;
constexpr std::size_t mebibyte = 1024 * 1024;
constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;

std::string folder;   // of this program, with a slash
std::string stopNote; // where to write the time

std::int64_t nanosecondsNow()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * nanosecondsPerSecond + now.tv_nsec;
}

int openNote(const std::string& path)
{
    return open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
}

extern "C" void noteTheStop(int /*signal*/)
{
    const std::int64_t now = nanosecondsNow();
    dprintf(openNote(stopNote), "%" PRId64 "\n", now);
    std::_Exit(EXIT_FAILURE);
}

void put(std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(STDOUT_FILENO, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            std::_Exit(EXIT_FAILURE);
        }
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
}

void flood(std::string_view chunk)
{
    for (std::size_t left = floodBytes; left > 0; left -= std::min(left, chunk.size())) {
        put(chunk);
    }
}

[[noreturn]] void waitForTheStop()
{
    for (;;) {
        pause();
    }
}

[[noreturn]] void talk()
{
    constexpr std::int64_t interval = 1'000'000;
    std::int64_t next = nanosecondsNow();
    for (int count = 0;; ++count) {
        std::array<char, 64> report{};
        const int size =
            std::snprintf(report.data(), report.size(), "\r%d.%d %%, 2-sec Throughput (Mb/s): %d.5",
                          count / 1000 % 100, count / 100 % 10, count % 1000);
        put({report.data(), static_cast<std::size_t>(size)});
        next += interval;
        // Until a point in time, so that what a report takes is no part of the interval.
        const timespec then{next / nanosecondsPerSecond, next % nanosecondsPerSecond};
        clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &then, nullptr);
    }
}

[[noreturn]] void runBriefly(std::int64_t began)
{
    constexpr timespec length{0, 50'000'000};
    nanosleep(&length, nullptr);
    const int note = openNote(folder + "ran");
    dprintf(note, "%" PRId64 " %" PRId64 "\n", began, nanosecondsNow());
    std::_Exit(3);
}

void behave(std::string_view mood, std::int64_t began)
{
    if (mood.starts_with("good")) {
        put("\r50.0 %, 0 Done, 0 Failed, 1 Pending, 2-sec Throughput (Mb/s): 951.6");
        std::_Exit(EXIT_SUCCESS);
    }
    if (mood.starts_with("failing")) {
        put("nothing works\n");
        std::_Exit(3);
    }
    if (mood.starts_with("brief")) {
        runBriefly(began);
    }
    if (mood.starts_with("patient")) {
        put("ready\n");
    } else if (mood.starts_with("talkative")) {
        talk();
    } else if (mood.starts_with("flood-tiny")) {
        flood("7 bytes\n");
    } else if (mood.starts_with("flood-huge")) {
        std::string chunk;
        while (chunk.size() < mebibyte) {
            chunk += "a line of no great length\n";
        }
        flood(chunk);
    } else if (mood.starts_with("flood-lines")) {
        flood(std::string(mebibyte, '=') + '\n');
    }
    if (mood.starts_with("flood")) {
        put("flooded\n");
    }
    waitForTheStop();
}

} // namespace

int main(int argc, char** argv)
{
    const std::int64_t began = nanosecondsNow();
    if (argc < 3) {
        return EXIT_FAILURE;
    }
    const std::string_view self = argv[0];
    folder = self.substr(0, self.rfind('/') + 1);
    stopNote = folder + "stopped";
    std::signal(SIGTERM, noteTheStop);
    const std::string_view file = argv[2];
    behave(file.substr(file.rfind('/') + 1), began);
}
