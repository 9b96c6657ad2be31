#include <cstdlib>
#include <new>
#include <string>

#include "tests/xotypcmp/stored_records.hpp"

// Where a program's own allocation functions replace those of the libraries that it loads, they
// count what those ask for. Sanitizers have their own, and a Windows library keeps those that it
// was linked with.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
#if !defined(__has_feature)
#define XO_COUNTS_ALLOCATIONS 1
#elif !__has_feature(address_sanitizer)
#define XO_COUNTS_ALLOCATIONS 1
#endif
#endif

#if defined(XO_COUNTS_ALLOCATIONS)

namespace {
// One thread alone compares.
unsigned long allocations = 0;
}  // namespace

extern "C" {
void* __libc_malloc(std::size_t size);
void* malloc(std::size_t size) noexcept {
  ++allocations;
  return __libc_malloc(size);
}
}

namespace xo::test {
namespace {

/// Allocations that a comparison makes.
unsigned long Allocated(StoredBytes one, StoredBytes two, unsigned char format,
                        unsigned short cmpOp, unsigned count = 1) {
  XoTypeMgr const manager;
  int status = 0;
  unsigned long const before = allocations;
  manager.Cmp(XoSTRING_T, static_cast<unsigned>(one.size()), one.data(),
              static_cast<unsigned>(two.size()), two.data(), cmpOp, count, format, status);
  return allocations - before;
}

/// Records, keys and older records of texts below 254 bytes, whole and cut.
template <class Check>
void ForEachOperand(Check check) {
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    for (unsigned const length : {0u, 1u, 5u, 100u, 126u, 253u}) {
      std::string const text(length, 'a');
      std::vector<unsigned> const orders(length / 2, Lower('a'));
      std::vector<unsigned> const units(length / 2, u'a');
      for (StoredBytes const& record :
           {Record(text, format), Record(text, format, 0), Key(orders, format),
            WideRecord(units, format), OlderRecord({text}, format)}) {
        for (std::size_t const missing : {0u, 1u, 2u, 3u}) {
          check(CutTo(record, record.size() - std::min(missing, record.size() - 1)), format);
        }
      }
    }
  }
}

TEST(ComparisonMemory, AllocationsAreCounted) {
  unsigned long const before = allocations;
  std::free(std::malloc(10));
  delete new XoString("abc");
  EXPECT_GE(allocations - before, 3u);
}

TEST(ComparisonMemory, WithWildcardsOffNothingIsAllocated) {
  ForEachOperand([](StoredBytes const& operand, unsigned char format) {
    for (unsigned short const cmpOp : Operators{0x10, 0x70, 0x90, 0x290, 0x100}) {
      EXPECT_EQ(Allocated(operand, operand, format, cmpOp), 0u);
      EXPECT_EQ(Allocated(operand, Record("aab", format), format, cmpOp), 0u);
      EXPECT_EQ(Allocated(Key(Orders("aab"), format), operand, format, cmpOp), 0u);
    }
  });
}

TEST(ComparisonMemory, KeysOfAnyLengthAreComparedWithoutAny) {
  for (unsigned const length : {126u, 127u, 128u, 1000u, 32000u}) {
    StoredBytes const key = Key(std::vector<unsigned>(length, Lower('a')));
    // Half an order at its end.
    StoredBytes half = key;
    half.insert(half.end() - 2, kHyphen);
    ++half[0];
    for (StoredBytes const& one : {key, half}) {
      for (StoredBytes const& two : {key, half}) {
        EXPECT_EQ(Allocated(one, two, kKeyLittle, kLiteral), 0u) << length;
      }
    }
  }
}

TEST(ComparisonMemory, OfAPatternNothingIsAllocatedUntilAStarHasACandidate) {
  ForEachOperand([](StoredBytes const& operand, unsigned char format) {
    for (char const* pattern : {"aab", "a?b", "*", "a*", "b*", "*b", "?*"}) {
      EXPECT_EQ(Allocated(operand, Record(pattern, format), format, 0), 0u) << pattern;
    }
  });
  EXPECT_GT(Allocated(Record("xaab"), Record("*ab"), kLittle, 0), 0u)
      << "each place where the text could match is kept";
}

TEST(ComparisonMemory, ArraysAreComparedWithoutAny) {
  for (unsigned char const format : Formats{kLittle, kBig, kKeyLittle, kKeyBig}) {
    StoredBytes const array = Record(std::string(253, 'a'), format) +
                              WideRecord({'a', 'b'}, format) + Key(Orders("abc"), format);
    EXPECT_EQ(Allocated(array, array, format, kLiteral, 3), 0u);
  }
}

TEST(ComparisonMemory, StringsInMemoryAreComparedWithoutAny) {
  XoString one[] = {XoString("abc"), XoString("abd")};
  XoString two[] = {XoString("abc"), XoString("ABD")};
  XoTypeMgr const manager;
  unsigned long const before = allocations;
  manager.Cmp(XoSTRING_T, one, two, kLiteral, 2, FormMemory);
  EXPECT_EQ(allocations - before, 0u);
}

}  // namespace
}  // namespace xo::test

#else

TEST(ComparisonMemory, IsCountedElsewhere) { GTEST_SKIP(); }

#endif
