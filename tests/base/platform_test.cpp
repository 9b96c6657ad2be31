#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <xotypemgr.hpp>

namespace xo::test {
namespace {

/// What the hooks of this test were told last.
struct Seen {
  std::string expression, file;
  int line = 0;
  unsigned long long size = 0;
};
Seen seen;

int NoteAssertion(char const* expression, char const* file, int line) {
  seen.expression = expression;
  seen.file = file;
  seen.line = line;
  return 41;
}

int NoteMemory(unsigned long long size) {
  seen.size = size;
  return 42;
}

void FixedLocalTime(bdate& date, btime& time, int& nanoSeconds) {
  date = {1999, 12, 31};
  time = {23, 58, 57, 5400};
  nanoSeconds = 123456789;
}

void FixedUtcTime(bdate& date, btime& time, int& nanoSeconds) {
  date = {1998, 1, 2};
  time = {3, 4, 5, 0};
  nanoSeconds = 987654321;
}

int FixedZone() { return -210; }

class PlatformHooks : public testing::Test {
 protected:
  void SetUp() override {
    before = XoExchangePlatform({});
    seen = {};
  }
  void TearDown() override { XoExchangePlatform(before); }

  XoPlatform before{};
};

TEST_F(PlatformHooks, ExchangeReturnsTheHooksInForce) {
  XoPlatform const own{NoteAssertion, NoteMemory, FixedLocalTime, FixedUtcTime, FixedZone};
  XoExchangePlatform(own);
  XoPlatform const old = XoExchangePlatform({});
  EXPECT_EQ(old.assertFailed, NoteAssertion);
  EXPECT_EQ(old.memoryHandler, NoteMemory);
  EXPECT_EQ(old.localTime, FixedLocalTime);
  EXPECT_EQ(old.utcTime, FixedUtcTime);
  EXPECT_EQ(old.timeZoneMinutes, FixedZone);
}

TEST_F(PlatformHooks, WhatWasReturnedCanBePutBack) {
  XoPlatform own{};
  own.timeZoneMinutes = FixedZone;
  XoExchangePlatform(own);
  EXPECT_EQ(bksgettimezone(), -210);
  XoPlatform const old = XoExchangePlatform({});
  XoExchangePlatform(old);
  EXPECT_EQ(bksgettimezone(), -210);
}

TEST_F(PlatformHooks, AssertionGoesThroughItsHook) {
  XoPlatform own{};
  own.assertFailed = NoteAssertion;
  XoExchangePlatform(own);
  EXPECT_EQ(XOLA_assert("count > 0", "src/file.cpp", 77), 41);
  EXPECT_EQ(seen.expression, "count > 0");
  EXPECT_EQ(seen.file, "src/file.cpp");
  EXPECT_EQ(seen.line, 77);
}

TEST_F(PlatformHooks, MemoryHandlerGetsTheWholeSize) {
  XoPlatform own{};
  own.memoryHandler = NoteMemory;
  XoExchangePlatform(own);
  EXPECT_EQ(XoCallMemoryHandler(0x123456789ABCDEFull), 42);
  EXPECT_EQ(seen.size, 0x123456789ABCDEFull);
}

TEST_F(PlatformHooks, BuiltInAssertionWritesOneLineAndReturns) {
  testing::internal::CaptureStderr();
  XOLA_assert("left < right", "some/file.cpp", 12345);
  std::string const text = testing::internal::GetCapturedStderr();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
  EXPECT_EQ(text.empty() ? '\0' : text.back(), '\n');
  EXPECT_NE(text.find("left < right"), std::string::npos) << text;
  EXPECT_NE(text.find("some/file.cpp"), std::string::npos) << text;
  EXPECT_NE(text.find("12345"), std::string::npos) << text;
}

TEST_F(PlatformHooks, BuiltInMemoryHandlerWritesOneLineAndReturns) {
  testing::internal::CaptureStderr();
  XoCallMemoryHandler(18446744073709551615ull);
  std::string const text = testing::internal::GetCapturedStderr();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
  EXPECT_NE(text.find("18446744073709551615"), std::string::npos) << text;
}

TEST_F(PlatformHooks, LocalOperationsAskTheLocalHook) {
  XoPlatform own{};
  own.localTime = FixedLocalTime;
  XoExchangePlatform(own);
  bdate date{};
  bksgetdate(&date);
  EXPECT_EQ(date.year, 1999);
  EXPECT_EQ(date.month, 12);
  EXPECT_EQ(date.day, 31);
  btime time{};
  bksgettime(&time);
  EXPECT_EQ(time.hour, 23);
  EXPECT_EQ(time.minute, 58);
  EXPECT_EQ(time.second, 57);
  EXPECT_EQ(time.utcOffset, 5400);
  date = {};
  time = {};
  int fraction = 0;
  bksGetHiresTime(date, time, fraction);
  EXPECT_EQ(date.year, 1999);
  EXPECT_EQ(time.second, 57);
  EXPECT_EQ(fraction, 123456789);
}

TEST_F(PlatformHooks, UtcOperationsAskTheUtcHook) {
  XoPlatform own{};
  own.utcTime = FixedUtcTime;
  XoExchangePlatform(own);
  bdate date{};
  btime time{};
  bksgetsystemtime(&time, &date);
  EXPECT_EQ(date.year, 1998);
  EXPECT_EQ(date.month, 1);
  EXPECT_EQ(date.day, 2);
  EXPECT_EQ(time.hour, 3);
  EXPECT_EQ(time.minute, 4);
  EXPECT_EQ(time.second, 5);
  EXPECT_EQ(time.utcOffset, 0);
  date = {};
  time = {};
  int fraction = 0;
  bksGetHiresTimeUTC(date, time, fraction);
  EXPECT_EQ(date.day, 2);
  EXPECT_EQ(time.hour, 3);
  EXPECT_EQ(fraction, 987654321);
}

TEST_F(PlatformHooks, ZoneHookAnswersForTheZoneAndNothingElse) {
  XoPlatform own{};
  own.timeZoneMinutes = [] { return kTimeZoneUnknown; };
  XoExchangePlatform(own);
  EXPECT_EQ(bksgettimezone(), -2171);
  bdate date{};
  btime time{};
  bksgetsystemtime(&time, &date);
  EXPECT_GE(date.year, 2024);
}

TEST(ClockRecords, DateIsAYearOfSixteenBitsAndTwoBytes) {
  EXPECT_EQ(sizeof(bdate), 4u);
  EXPECT_EQ(sizeof(bdate::year), 2u);
  EXPECT_EQ(offsetof(bdate, year), 0u);
  EXPECT_EQ(offsetof(bdate, month), 2u);
  EXPECT_EQ(offsetof(bdate, day), 3u);
  EXPECT_EQ(offsetof(btime, hour), 0u);
  EXPECT_EQ(offsetof(btime, minute), 1u);
  EXPECT_EQ(offsetof(btime, second), 2u);
}

}  // namespace
}  // namespace xo::test
