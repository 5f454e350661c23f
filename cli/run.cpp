#include "cli/run.h"

#include <algorithm>
#include <chrono>
#include <list>
#include <string>

#include "cli/complain.h"

namespace scan695::cli {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int TICK = 200;  // milliseconds
constexpr std::chrono::seconds LONG_RUN(2);

// The line at the bottom of a terminal.
struct Progress {
    size_t total;
    bool is_shown;
    size_t done = 0;
    Clock::time_point start = Clock::now();
};

void ShowProgress(const Progress& progress, const std::list<Conversion>& running) {
    if (!progress.is_shown || running.empty()) return;
    const auto time =
        std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - progress.start);
    std::string text;
    if (progress.total > 1) {
        text = '[' + std::to_string(progress.done) + '/' + std::to_string(progress.total) + ']';
    } else if (time >= LONG_RUN) {
        text = "scan695: " + running.front().request.file + ": converting";
    }
    if (!text.empty() && time >= LONG_RUN) text += ", " + std::to_string(time.count()) + " s";
    if (!text.empty()) ShowStatus(text);
}

size_t FindReadable(const std::list<Conversion>& running) {
    std::vector<int> consoles;
    for (const Conversion& conversion : running) consoles.push_back(conversion.child.console);
    const int found = WaitForConsole(consoles, TICK);
    return found < 0 ? running.size() : static_cast<size_t>(found);
}

}  // namespace

void RunConversions(const std::vector<Request>& requests, const RunOptions& options,
                    const std::function<void(Conversion&)>& finished) {
    Progress progress = {requests.size(), !options.quiet && CanShowStatus()};
    std::list<Conversion> running;
    const auto finish = [&](std::list<Conversion>::iterator conversion) {
        EraseStatus();
        finished(*conversion);
        DropConversion(*conversion);
        running.erase(conversion);
        ++progress.done;
    };
    for (size_t next = 0; next < requests.size() || !running.empty();) {
        ShowProgress(progress, running);
        if (next < requests.size() && running.size() < options.jobs) {
            running.emplace_back(requests[next++]);
            if (!StartConversion(running.back())) finish(std::prev(running.end()));
            continue;
        }
        const size_t found = FindReadable(running);
        if (found == running.size()) continue;
        const auto conversion = std::next(running.begin(), static_cast<long>(found));
        if (ReadConversion(*conversion)) continue;
        FinishConversion(*conversion);
        finish(conversion);
    }
    RemoveKeptStagings();
    EraseStatus();
}

bool TellOutcome(const Conversion& conversion, bool quiet) {
    const std::string& file = conversion.request.file;
    if (!quiet) {
        for (const std::string& text : conversion.console.warnings) {
            Complain(file, "warning: " + text);
        }
    }
    if (!conversion.cause.empty()) Complain(file, conversion.cause);
    return conversion.cause.empty();
}

}  // namespace scan695::cli
