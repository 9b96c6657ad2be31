#include <benchmark/benchmark.h>
#include <time.h>

#include <chrono>
#include <cstdint>
#include <random>
#include <vector>
#include <xotypemgr.hpp>

#include "bench/hand_written.hpp"

namespace {

using namespace std::chrono;

constexpr unsigned kCount = 1024;
constexpr int kEpoch = 2440588;

/// Day numbers of the years 1 to 9999 in random order.
std::vector<int> RandomDays() {
  std::mt19937 random(1);
  std::uniform_int_distribution<int> day(1721426, 5373484);
  std::vector<int> days(kCount);
  for (int& each : days) each = day(random);
  return days;
}

std::vector<XoDate> RandomDates() {
  std::vector<XoDate> dates;
  for (int const day : RandomDays()) dates.push_back(XoDate(day));
  return dates;
}

std::vector<year_month_day> RandomChronoDates() {
  std::vector<year_month_day> dates;
  for (int const day : RandomDays()) dates.push_back(sys_days{days{day - kEpoch}});
  return dates;
}

/// Applies `operation` to every element, in `state`'s loop.
template <class Element, class Operation>
void Run(benchmark::State& state, std::vector<Element> elements, Operation operation) {
  for (auto _ : state) {
    for (Element& element : elements) {
      auto result = operation(element);
      benchmark::DoNotOptimize(result);
    }
  }
}

void DateOfDay(benchmark::State& state) {
  Run(state, RandomDays(), [](int day) { return XoDate(day); });
}
void DateOfDayByChrono(benchmark::State& state) {
  Run(state, RandomDays(), [](int day) { return year_month_day{sys_days{days{day}}}; });
}

void DayOfDate(benchmark::State& state) {
  Run(state, RandomDates(), [](XoDate const& date) { return date.dayabs(); });
}
void DayOfDateByChrono(benchmark::State& state) {
  Run(state, RandomChronoDates(),
      [](year_month_day const& date) { return sys_days{date}.time_since_epoch().count(); });
}

void HistoricalStep(benchmark::State& state) {
  std::vector<d_Date> dates;
  for (XoDate const& date : RandomDates()) dates.push_back(date);
  Run(state, dates, [](d_Date date) { return ++date; });
}
void Step(benchmark::State& state) {
  Run(state, RandomDates(), [](XoDate const& date) { return XoDate(date.dayabs() + 1); });
}

void Weekday(benchmark::State& state) {
  Run(state, RandomDates(), [](XoDate const& date) { return date.GetDayOfTheDate(); });
}
void WeekdayByChrono(benchmark::State& state) {
  Run(state, RandomChronoDates(),
      [](year_month_day const& date) { return weekday{sys_days{date}}.c_encoding(); });
}

char const* const kFormat = "%Y-%m-%dT%H:%M:%S";

std::vector<XoDateTime> RandomMoments() {
  std::mt19937 random(2);
  std::vector<XoDateTime> moments;
  for (int const day : RandomDays()) {
    moments.push_back(XoDateTime(XoDate(day), XoTime(static_cast<int>(random() % 86400))));
  }
  return moments;
}

std::tm AsTm(XoDateTime const& moment) {
  std::tm fields{};
  fields.tm_year = moment.date.year - 1900;
  fields.tm_mon = moment.date.month - 1;
  fields.tm_mday = moment.date.day;
  fields.tm_hour = moment.time.hour;
  fields.tm_min = moment.time.minute;
  fields.tm_sec = moment.time.second;
  return fields;
}

void Print(benchmark::State& state) {
  auto const moments = RandomMoments();
  XoString out;
  unsigned index = 0;
  for (auto _ : state) {
    moments[index].PrintToXoString(out, kFormat);
    benchmark::DoNotOptimize(out.text);
    index = (index + 1) % kCount;
  }
}

void PrintByStrftime(benchmark::State& state) {
  std::vector<std::tm> moments;
  for (XoDateTime const& moment : RandomMoments()) moments.push_back(AsTm(moment));
  char out[64];
  unsigned index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(strftime(out, sizeof out, kFormat, &moments[index]));
    benchmark::DoNotOptimize(out);
    index = (index + 1) % kCount;
  }
}

std::vector<XoString> RandomTexts() {
  std::vector<XoString> texts;
  for (XoDateTime const& moment : RandomMoments()) {
    XoString text;
    texts.push_back(moment.PrintToXoString(text, kFormat));
  }
  return texts;
}

void Scan(benchmark::State& state) {
  auto texts = RandomTexts();
  XoDateTime moment(XoDate(0, 0, 0), XoTime(0, 0, 0));
  unsigned index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(moment.ScanFromXoString(texts[index], kFormat));
    benchmark::DoNotOptimize(moment);
    index = (index + 1) % kCount;
  }
}

void ScanByStrptime(benchmark::State& state) {
  auto const texts = RandomTexts();
  std::tm moment{};
  unsigned index = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(strptime(texts[index].StrGet(), kFormat, &moment));
    benchmark::DoNotOptimize(moment);
    index = (index + 1) % kCount;
  }
}

std::vector<unsigned char> StoredDates(unsigned count) {
  auto dates = RandomDates();
  std::vector<unsigned char> stored(count * std::size_t{4});
  XoTypeMgr().Store(XoDATE_T, stored.data(), dates.data(), FormLittle, count);
  return stored;
}

constexpr unsigned kWidth = 4;

void CompareOne(benchmark::State& state) {
  XoTypeMgr const manager;
  auto dates = StoredDates(kCount);
  unsigned index = 0;
  for (auto _ : state) {
    int status;
    benchmark::DoNotOptimize(manager.Cmp(XoDATE_T, kWidth, &dates[kWidth * index], kWidth,
                                         &dates[kWidth * (kCount - 1 - index)], CmpOpNoWildcards, 1,
                                         FormLittle, status));
    benchmark::DoNotOptimize(status);
    index = (index + 1) % kCount;
  }
}

void CompareOneByHand(benchmark::State& state) {
  XCompare* compare = CompareOneDate;
  benchmark::DoNotOptimize(compare);
  auto dates = StoredDates(kCount);
  unsigned index = 0;
  for (auto _ : state) {
    int status;
    benchmark::DoNotOptimize(compare(FormLittle, kWidth, &dates[kWidth * index], kWidth,
                                     &dates[kWidth * (kCount - 1 - index)], CmpOpNoWildcards, 1,
                                     status));
    benchmark::DoNotOptimize(status);
    index = (index + 1) % kCount;
  }
}

/// Two arrays of 1,000 that are equal but for their last element.
void CompareArray(benchmark::State& state, XCompare* compare, unsigned char format) {
  benchmark::DoNotOptimize(compare);
  constexpr unsigned kDates = 1000;
  auto a = StoredDates(kDates);
  auto b = a;
  b.back() ^= 1;
  for (auto _ : state) {
    int status;
    benchmark::DoNotOptimize(
        compare(format, 0, a.data(), 0, b.data(), CmpOpNoWildcards, kDates, status));
    benchmark::DoNotOptimize(status);
  }
}

/// Every name is measured twice, by the library and by its peer.
[[maybe_unused]] bool const registered = [] {
  using benchmark::RegisterBenchmark;
  RegisterBenchmark("1024 days to dates/ours", DateOfDay);
  RegisterBenchmark("1024 days to dates/std::chrono", DateOfDayByChrono);
  RegisterBenchmark("1024 dates to days/ours", DayOfDate);
  RegisterBenchmark("1024 dates to days/std::chrono", DayOfDateByChrono);
  RegisterBenchmark("1024 historical dates stepped/ours", HistoricalStep);
  RegisterBenchmark("1024 historical dates stepped/XoDate", Step);
  RegisterBenchmark("1024 weekdays of dates/ours", Weekday);
  RegisterBenchmark("1024 weekdays of dates/std::chrono", WeekdayByChrono);
  RegisterBenchmark("Print of a date-time/ours", Print);
  RegisterBenchmark("Print of a date-time/strftime", PrintByStrftime);
  RegisterBenchmark("Scan of a date-time/ours", Scan);
  RegisterBenchmark("Scan of a date-time/strptime", ScanByStrptime);
  RegisterBenchmark("Cmp, one stored date/ours", CompareOne);
  RegisterBenchmark("Cmp, one stored date/hand-written", CompareOneByHand);
  RegisterBenchmark("Cmp, 1000 dates little-endian/ours", CompareArray, XoDateCompare, FormLittle);
  RegisterBenchmark("Cmp, 1000 dates little-endian/hand-written", CompareArray, CompareDates,
                    FormLittle);
  RegisterBenchmark("Cmp, 1000 dates big-endian/ours", CompareArray, XoDateCompare, FormBig);
  RegisterBenchmark("Cmp, 1000 dates big-endian/hand-written", CompareArray, CompareDates,
                    FormLittle);
  return true;
}();

}  // namespace
