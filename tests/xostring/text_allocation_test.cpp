// What text asks of the allocation door, and what is left of a text when it gives nothing.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <new>
#include <utility>

#include "tests/xostring/string_text.hpp"

// Where a program's own allocation functions replace those of the shared library too, they count
// what the library asks for. A Windows library keeps the functions that it was linked with.
#if !defined(_WIN32)

namespace {

std::atomic<int> allocations = 0;
/// How many allocations succeed before one fails; negative: all do.
std::atomic<int> succeeding = -1;

void* CountedAllocation(std::size_t size) {
  ++allocations;
  if (succeeding >= 0 && succeeding-- == 0) throw std::bad_alloc();
  if (void* const memory = std::malloc(size != 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return CountedAllocation(size); }
void* operator new[](std::size_t size) { return CountedAllocation(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace xo::test {
namespace {

template <class Operation>
int AllocationsOf(Operation operation) {
  int const before = allocations;
  operation();
  return allocations - before;
}

TEST(TextAllocation, AnEditTakesOneBuffer) {
  XoString string("abcdef"), other("xy");
  EXPECT_EQ(AllocationsOf([&] { string += other; }), 1);
  EXPECT_EQ(AllocationsOf([&] { string.Insert(other, 1); }), 1);
  EXPECT_EQ(AllocationsOf([&] { string.Replace(other, 1); }), 1);
  EXPECT_EQ(AllocationsOf([&] { string.Cut(1, 2); }), 1);
  EXPECT_EQ(AllocationsOf([&] { string.Expand(40, '.'); }), 1);
  EXPECT_EQ(AllocationsOf([&] { string.Fill(3, ' '); }), 1);
  EXPECT_EQ(AllocationsOf([&] { string.RightTrim(); }), 1);
  EXPECT_EQ(AllocationsOf([&] { string = other; }), 1);
  EXPECT_EQ(AllocationsOf([&] { string = "abc"; }), 1);
  EXPECT_EQ(AllocationsOf([&] { string.MapToCodeSet(kUnicode); }), 1);
  EXPECT_EQ(AllocationsOf([&] { XoString const copy(string); }), 1);
  // The source converted, and the new text.
  EXPECT_EQ(AllocationsOf([&] { string.Insert(other, 1); }), 2);
}

TEST(TextAllocation, WhatChangesNothingTakesNone) {
  XoString string("abc"), other;
  EXPECT_EQ(AllocationsOf([&] {
              XoString const empty;
              other.Destruct(string);
              std::swap(other, string);
              string.Insert(empty, 1).Replace(empty, 1).Cut(3).Trim().Expand(2);
              string.SetCodeSet(kLatin2);
              string.SetCodeSetCode(kKoi8);
              string.SetNullValue();
            }),
            0);
}

TEST(TextAllocation, OrdersComparisonAndHashTakeNone) {
  XoString const narrow(
      "Stra\xDF"
      "e 17 chata");
  XoString const wide = Wide(u"Strasse 17 cha\u0301ta \u4E00");
  EXPECT_EQ(AllocationsOf([&] {
              XoStringIterator iterator(wide);
              while (iterator.GetNextOrder(1) != 0) continue;
              for (unsigned bits = 0x10; bits < 0x400; bits += 0x10) {
                if ((bits & 0x110) != 0)
                  narrow.Compare(wide, -1, static_cast<unsigned short>(bits));
              }
              HashString(kUnicode, 22, wide.StrGet());
              HashXoString(wide);
              FindWildcard(kUnicode, 1, wide.StrGet(), 0, 65535, nullptr, 1);
            }),
            0);
}

TEST(TextAllocation, APatternTakesABranchForEachPlaceWhereItMayGoOn) {
  auto const branches = [](char const* text, char const* pattern) {
    return AllocationsOf([&] { XoStrCmp(kLatin1, 1, text, kLatin1, 1, pattern, 0); });
  };
  EXPECT_EQ(branches("abcabc", "a?c*"), 0);
  EXPECT_EQ(branches("xxxxxx", "*ab"), 0);
  EXPECT_EQ(branches("xaxaxxax", "*ab"), 3);
  EXPECT_EQ(branches(std::string(5000, 'a').c_str(), "*b"), 0);
  EXPECT_LE(branches(std::string(5000, 'a').c_str(), "*aaab"), 5000);
}

/// Lets every allocation of an operation fail in turn, and looks at the string each time.
void ExpectUnchangedByFailure(char const* what, std::function<void(XoString&)> const& operation) {
  int failures = 0;
  for (int allowed = 0;; ++allowed) {
    XoString string = Narrow("abc def\xDF", kLatin2, 9);
    char const* const text = string.text;
    bool failed = false;
    succeeding = allowed;
    try {
      operation(string);
    } catch (std::bad_alloc const&) {
      failed = true;
    }
    succeeding = -1;
    if (!failed) break;
    ++failures;
    EXPECT_EQ(string.text, text) << what;
    EXPECT_EQ(TextOf(string), "abc def\xDF") << what;
    EXPECT_EQ(string.size, 9) << what;
    EXPECT_EQ(string.codeSet, kLatin2) << what;
    EXPECT_EQ(string.language, 9) << what;
  }
  EXPECT_GT(failures, 0) << what;
}

TEST(TextAllocation, ATextIsUnchangedWhereThereIsNoMemory) {
  XoString const other = Wide(u"x\u011By", kUnicode, 3);
  std::vector<unsigned short> const units = Units(u"xyz");
  ExpectUnchangedByFailure("=", [&](XoString& s) { s = other; });
  ExpectUnchangedByFailure("= bytes", [](XoString& s) { s = "xyz"; });
  ExpectUnchangedByFailure("= units", [&](XoString& s) { s = units.data(); });
  ExpectUnchangedByFailure("+=", [&](XoString& s) { s += other; });
  ExpectUnchangedByFailure("<<", [](XoString& s) { s << 17; });
  ExpectUnchangedByFailure("Insert", [&](XoString& s) { s.Insert(other, 1); });
  ExpectUnchangedByFailure("Replace", [&](XoString& s) { s.Replace(other, 1); });
  ExpectUnchangedByFailure("Cut", [](XoString& s) { s.Cut(1, 2); });
  ExpectUnchangedByFailure("Expand", [](XoString& s) { s.Expand(50); });
  ExpectUnchangedByFailure("Fill", [](XoString& s) { s.Fill(5, 'x'); });
  ExpectUnchangedByFailure("ToUpper", [](XoString& s) { s.ToUpper(); });
  ExpectUnchangedByFailure("MapToCodeSet", [](XoString& s) { s.MapToCodeSet(kUnicode); });
  ExpectUnchangedByFailure("SetCodeSet", [](XoString& s) { s.SetCodeSet(kUnicode); });
  ExpectUnchangedByFailure(
      "CopyMapped", [&](XoString& s) { s.CopyMapped(XoString("a text that is longer"), kKoi8); });
  ExpectUnchangedByFailure("Find", [](XoString& s) { s.Find('d', 0, 0); });
  ExpectUnchangedByFailure("Copy", [](XoString& s) { s.Copy(1, 2); });
}

}  // namespace
}  // namespace xo::test

#endif
