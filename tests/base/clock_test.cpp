#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

using std::chrono::nanoseconds;
using std::chrono::seconds;

/// The moment that the fields name when they are taken as UTC, since 1970.
nanoseconds Moment(bdate const& date, btime const& time, int fraction) {
  std::chrono::year_month_day const day{std::chrono::year{date.year},
                                        std::chrono::month{date.month}, std::chrono::day{date.day}};
  EXPECT_TRUE(day.ok());
  EXPECT_LE(time.hour, 23);
  EXPECT_LE(time.minute, 59);
  EXPECT_LE(time.second, 60);
  EXPECT_GE(fraction, 0);
  EXPECT_LE(fraction, 999999999);
  return std::chrono::sys_days{day}.time_since_epoch() + std::chrono::hours{time.hour} +
         std::chrono::minutes{time.minute} + seconds{time.second} + nanoseconds{fraction};
}

nanoseconds Now() { return std::chrono::system_clock::now().time_since_epoch(); }

/// Checks a reading against the C++ clock, read before and after it. The two may tick in coarse
/// steps of their own.
template <class Read>
void ExpectPresent(Read read, nanoseconds resolution) {
  constexpr nanoseconds kTick = std::chrono::milliseconds{50};
  nanoseconds const before = Now();
  nanoseconds const moment = read();
  nanoseconds const after = Now();
  EXPECT_GT(moment, before - kTick - resolution);
  EXPECT_LT(moment, after + kTick);
}

class BuiltInClock : public testing::Test {
 protected:
  void SetUp() override { before = XoExchangePlatform({}); }
  void TearDown() override { XoExchangePlatform(before); }

  XoPlatform before{};
};

TEST_F(BuiltInClock, UtcIsTheSystemClock) {
  ExpectPresent(
      [] {
        bdate date{};
        btime time{1, 1, 1, 777};
        int fraction = -1;
        bksGetHiresTimeUTC(date, time, fraction);
        EXPECT_EQ(time.utcOffset, 0);
        return Moment(date, time, fraction);
      },
      nanoseconds{0});
  ExpectPresent(
      [] {
        bdate date{};
        btime time{1, 1, 1, 777};
        bksgetsystemtime(&time, &date);
        EXPECT_EQ(time.utcOffset, 0);
        return Moment(date, time, 0);
      },
      seconds{1});
}

TEST_F(BuiltInClock, LocalTimeIsUtcPlusItsOffset) {
  ExpectPresent(
      [] {
        bdate date{};
        btime time{};
        int fraction = -1;
        bksGetHiresTime(date, time, fraction);
        return Moment(date, time, fraction) - seconds{time.utcOffset};
      },
      nanoseconds{0});
}

/// The present second. `std::time` lags behind the system clock by its coarser tick.
std::time_t ThisSecond() {
  return std::chrono::system_clock::to_time_t(
      std::chrono::floor<seconds>(std::chrono::system_clock::now()));
}

/// The C library's local time for a second that did not end while the other clock was read.
template <class Read>
std::optional<std::tm> LocalTimeAround(Read read) {
  for (int attempt = 0; attempt < 20; ++attempt) {
    std::time_t const start = ThisSecond();
    read();
    if (ThisSecond() == start) return *std::localtime(&start);
  }
  return std::nullopt;
}

TEST_F(BuiltInClock, LocalDateAndTimeAreTheCLibrarys) {
  bdate date{};
  btime time{};
  auto const local = LocalTimeAround([&] {
    bksgetdate(&date);
    bksgettime(&time);
  });
  ASSERT_TRUE(local.has_value());
  EXPECT_EQ(date.year, local->tm_year + 1900);
  EXPECT_EQ(date.month, local->tm_mon + 1);
  EXPECT_EQ(date.day, local->tm_mday);
  EXPECT_EQ(time.hour, local->tm_hour);
  EXPECT_EQ(time.minute, local->tm_min);
  EXPECT_EQ(time.second, local->tm_sec);
}

TEST_F(BuiltInClock, ZoneIsTheDistanceBetweenLocalTimeAndUtc) {
  bdate date{}, utcDate{};
  btime time{}, utcTime{};
  for (int attempt = 0; attempt < 20; ++attempt) {
    int fraction = 0;
    bksGetHiresTime(date, time, fraction);
    bksgetsystemtime(&utcTime, &utcDate);
    if (utcTime.second == time.second) break;
  }
  auto const distance = Moment(date, time, 0) - Moment(utcDate, utcTime, 0);
  EXPECT_EQ(distance, seconds{time.utcOffset});
  EXPECT_EQ(distance, std::chrono::minutes{bksgettimezone()});
}

#if !defined(_WIN32)

/// Puts the process into another time zone for the length of a scope.
class ScopedZone {
 public:
  explicit ScopedZone(char const* zone) {
    if (char const* present = std::getenv("TZ")) old = present;
    setenv("TZ", zone, 1);
    tzset();
  }
  ~ScopedZone() {
    if (old)
      setenv("TZ", old->c_str(), 1);
    else
      unsetenv("TZ");
    tzset();
  }
  ScopedZone(ScopedZone const&) = delete;
  ScopedZone& operator=(ScopedZone const&) = delete;

 private:
  std::optional<std::string> old;
};

TEST_F(BuiltInClock, FollowsTheZoneOfTheProcess) {
  struct {
    char const* zone;  // POSIX names the hours that the zone is behind UTC
    int offsetInSeconds;
  } const cases[] = {
      {"UTC0", 0},
      {"AAA-1", 3600},
      {"AAA-5:45", 20700},
      {"AAA-14", 50400},
      {"AAA8", -28800},
      {"AAA3:30", -12600},
      // Summer time all year round, one hour ahead of the standard time.
      {"AAA5BBB,0/0,J365/25", -14400},
      {"AAA-1BBB-2:30,0/0,J365/25", 9000},
  };
  for (auto const& each : cases) {
    SCOPED_TRACE(each.zone);
    ScopedZone const zone(each.zone);
    bdate date{};
    btime time{};
    int fraction = 0;
    bksGetHiresTime(date, time, fraction);
    EXPECT_EQ(time.utcOffset, each.offsetInSeconds);
    EXPECT_EQ(bksgettimezone(), each.offsetInSeconds / 60);
    ExpectPresent(
        [&] {
          bksGetHiresTime(date, time, fraction);
          return Moment(date, time, fraction) - seconds{each.offsetInSeconds};
        },
        nanoseconds{0});
    bksgettime(&time);
    EXPECT_EQ(time.utcOffset, each.offsetInSeconds);
    btime utcTime{};
    bksgetsystemtime(&utcTime, &date);
    EXPECT_EQ(utcTime.utcOffset, 0);
  }
}

#endif

}  // namespace
}  // namespace xo::test
