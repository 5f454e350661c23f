#include "cli/console.h"

#include <cstdio>
#include <thread>

#include "cli/host.h"

namespace scan695::cli {

namespace {

constexpr size_t KEPT_BYTES = 8192;
constexpr char BEL = '\a';  // the library sends it behind the message of a fatal stop

struct Console {
    int own_output = -1;  // the process's standard output while the console is open
    std::thread reader;   // keeps `tail` up to date while the console goes nowhere
    std::string tail;
};
Console console;

// A trace can be far larger than memory or disk should hold, so only its end is kept.
void KeepTail(int descriptor) {
    char buffer[KEPT_BYTES];
    long count;
    while ((count = ReadSome(descriptor, buffer, sizeof buffer)) > 0) {
        console.tail.append(buffer, static_cast<size_t>(count));
        if (console.tail.size() > KEPT_BYTES) {
            console.tail.erase(0, console.tail.size() - KEPT_BYTES);
        }
    }
    CloseDescriptor(descriptor);
}

bool StartCapture() {
    int ends[2];
    if (!MakePipe(ends)) return false;
    const bool is_redirected = Redirect(ends[1], STANDARD_OUTPUT);
    CloseDescriptor(ends[1]);
    if (!is_redirected) {
        CloseDescriptor(ends[0]);
        return false;
    }
    console.tail.clear();
    console.reader = std::thread(KeepTail, ends[0]);
    return true;
}

}  // namespace

bool OpenConsole(ConsoleTarget target) {
    std::fflush(stdout);
    console.tail.clear();
    if (target == ConsoleTarget::STDOUT) return true;
    console.own_output = Duplicate(STANDARD_OUTPUT);
    if (console.own_output == -1) return false;
    const bool is_open = target == ConsoleTarget::STDERR ? Redirect(STANDARD_ERROR, STANDARD_OUTPUT)
                                                         : StartCapture();
    if (!is_open) CloseConsole();
    return is_open;
}

void CloseConsole() {
    std::fflush(stdout);
    if (console.own_output == -1) return;
    Redirect(console.own_output, STANDARD_OUTPUT);
    CloseDescriptor(console.own_output);
    console.own_output = -1;
    if (console.reader.joinable()) console.reader.join();
}

std::string FatalMessage() {
    const size_t bell = console.tail.rfind(BEL);
    if (bell == std::string::npos) return {};
    std::string text = console.tail.substr(0, bell);
    while (!text.empty() && text.back() == '\n') text.pop_back();
    // The message may follow a line that was not ended, or the backspaces of a progress text.
    const size_t before = text.find_last_of("\n\b");
    return before == std::string::npos ? text : text.substr(before + 1);
}

bool SilencePrompt() {
    const int descriptor = OpenNull();
    if (descriptor == -1) return false;
    const bool is_redirected = Redirect(descriptor, STANDARD_INPUT);
    CloseDescriptor(descriptor);
    return is_redirected;
}

}  // namespace scan695::cli
