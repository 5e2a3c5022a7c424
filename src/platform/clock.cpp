// The date of prints, and waiting (clock.h).
#include "platform/clock.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <ctime>

std::string PrintDate() {
    const char *const epoch = std::getenv("SOURCE_DATE_EPOCH");
    const std::time_t moment = epoch != nullptr ? std::strtoll(epoch, nullptr, 10) : std::time(nullptr);
    std::tm date{};
    if (epoch != nullptr)
        gmtime_r(&moment, &date);
    else
        localtime_r(&moment, &date);
    std::array<char, 16> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%m-%d-%Y", &date)};
}

bool ComesOffWithin(int milliseconds, const std::function<bool()> &act) {
    using std::chrono::steady_clock;
    constexpr timespec Pause{0, 20'000'000};
    const auto end = steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!act()) {
        if (steady_clock::now() >= end) return false;
        nanosleep(&Pause, nullptr);
    }
    return true;
}
