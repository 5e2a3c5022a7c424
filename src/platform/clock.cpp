// The date of prints (clock.h).
#include "platform/clock.h"

#include <array>
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
