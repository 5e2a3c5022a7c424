// Today's date.
#include "platform/clock.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <ctime>

namespace {

std::string LocalDate(const char *form) {
    const std::time_t now = std::time(nullptr);
    std::array<char, 64> text{};
    return {text.data(), std::strftime(text.data(), text.size(), form, std::localtime(&now))};
}

} // namespace

TEST(Clock, PrintsCarryMonthDayAndYear) {
    unsetenv("SOURCE_DATE_EPOCH");
    EXPECT_EQ(PrintDate(), LocalDate("%m-%d-%Y"));
}

TEST(Clock, PrintsCanBeReproduced) {
    setenv("SOURCE_DATE_EPOCH", "951782400", 1);
    setenv("TZ", "Pacific/Honolulu", 1); // ten hours behind: still the day before there
    tzset();
    EXPECT_EQ(PrintDate(), "02-29-2000");
}

TEST(Clock, TheShortDateIsTheLocales) { EXPECT_EQ(ShortDate(), LocalDate("%x")); }
