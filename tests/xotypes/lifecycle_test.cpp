#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypes/scalar_rows.hpp"

namespace xo::test {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kAddressSanitizer = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kAddressSanitizer = true;
#else
constexpr bool kAddressSanitizer = false;
#endif
#else
constexpr bool kAddressSanitizer = false;
#endif

struct LivingRow {
  char id;
  unsigned width;
};

class ScalarLifecycle : public RandomTest, public testing::WithParamInterface<LivingRow> {
 protected:
  char const id = GetParam().id;
  unsigned const width = GetParam().width;
  TypeDescriptor const& row = *CurrentTypeTable[int{id}];
  XoTypeMgr manager;
};

INSTANTIATE_TEST_SUITE_P(
    Scalars, ScalarLifecycle,
    testing::ValuesIn(RowValues(ScalarRows{},
                                [](auto row) {
                                  return LivingRow{row.kId, sizeof(typename decltype(row)::Value)};
                                })),
    RowName{});

TEST_P(ScalarLifecycle, CreateGivesAlignedMemoryForEveryElement) {
  for (unsigned count : {0u, 1u, 2u, 7u, 1000u, 100000u}) {
    void* const values = manager.Create(id, count);
    ASSERT_NE(values, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(values) % width, 0u);
    std::memset(values, 0x5A, std::size_t{count} * width);
    EXPECT_EQ(manager.Delete(id, values, count), nullptr);
  }
}

TEST_P(ScalarLifecycle, DeleteIgnoresTheCount) {
  for (unsigned count : {0u, 1u, 0xFFFFFFFFu}) {
    void* const values = row.Create(5);
    EXPECT_EQ(row.Delete(values, count), nullptr);
  }
}

TEST_P(ScalarLifecycle, DeleteIgnoresNull) {
  EXPECT_EQ(row.Delete(nullptr, 0), nullptr);
  EXPECT_EQ(manager.Delete(id, nullptr, 9), nullptr);
}

TEST_P(ScalarLifecycle, ConstructorZeroesItsElementsAndNoOthers) {
  std::size_t const step = width;
  for (unsigned count : {0u, 1u, 2u, 3u, 8u, 61u}) {
    for (unsigned ignored : {0u, 1u, 0xFFFFFFFFu}) {
      std::vector<unsigned char> memory((count + 2) * step, 0xA5);
      row.Constructor(memory.data() + step, count, ignored);
      auto const begin = memory.begin() + static_cast<std::ptrdiff_t>(step);
      EXPECT_EQ(static_cast<std::size_t>(std::count(memory.begin(), memory.end(), 0xA5)), 2 * step);
      EXPECT_EQ(std::count(begin, memory.end() - static_cast<std::ptrdiff_t>(step), 0),
                static_cast<std::ptrdiff_t>(count * step));
    }
  }
}

TEST_P(ScalarLifecycle, DestructorDoesNothing) {
  auto const before = Bytes(std::size_t{5} * width);
  auto memory = before;
  row.Destructor(memory.data(), 5, 0);
  row.Destructor(memory.data(), 0, 1);
  EXPECT_EQ(memory, before);
}

TEST_P(ScalarLifecycle, AssignmentAndCopyTakeArraysOrFillFromTheFirst) {
  std::size_t const step = width;
  for (auto* assign : {row.Assignment, row.Copy}) {
    for (unsigned count : {0u, 1u, 2u, 3u, 8u, 61u, 500u}) {
      for (int fill : {0, 1, -1, 256}) {
        SCOPED_TRACE(testing::Message() << count << " elements, fill " << fill);
        // One element is all that a fill may read.
        auto source = Bytes((fill != 0 ? std::min(count, 1u) : count) * step);
        auto const sourceBefore = source;
        auto target = Bytes((count + 2) * step);
        auto expected = target;
        for (std::size_t i = 0; i < count; ++i)
          std::memcpy(expected.data() + (i + 1) * step, source.data() + (fill != 0 ? 0 : i * step),
                      step);
        assign(target.data() + step, source.data(), count, fill);
        EXPECT_EQ(target, expected);
        EXPECT_EQ(source, sourceBefore);
      }
    }
  }
}

TEST_P(ScalarLifecycle, DiskSizeFollowsFromTheCount) {
  MemFile empty(nullptr, 0);
  for (unsigned count : {0u, 1u, 2u, 5u, 1000u}) {
    EXPECT_EQ(row.NullSizeGet(count), count * width);
    for (unsigned format = 0; format < 256; ++format) {
      auto const byte = static_cast<unsigned char>(format);
      EXPECT_EQ(manager.DiskLenGet(id, nullptr, byte, count, 8), count * width);
      EXPECT_EQ(manager.DiskLenGet(id, nullptr, 1, count, byte), count * width);
      // The file is not read: a null one serves, and an empty one as well.
      EXPECT_EQ(manager.DiskLenGetFromMemFile(id, nullptr, byte, count), count * width);
      EXPECT_EQ(manager.DiskLenGetFromMemFile(id, &empty, byte, count), count * width);
    }
  }
}

TEST_P(ScalarLifecycle, StoreAndLoadAreEachOthersInverse) {
  for (unsigned format = 0; format < 256; ++format) {
    auto const byte = static_cast<unsigned char>(format);
    unsigned const count = Below(20);
    auto memory = Bytes(count * width);
    std::vector<unsigned char> disk(memory.size()), back(memory.size());
    EXPECT_EQ(manager.Store(id, disk.data(), memory.data(), byte, count), count * width);
    EXPECT_EQ(manager.Load(id, back.data(), disk.data(), byte, count), count * width);
    EXPECT_EQ(back, memory);
  }
}

/// What the new-handler of the next test has seen.
int handlerCalls;

void HelpNever() {
  if (++handlerCalls == 3) std::set_new_handler(nullptr);
}

/// Installs a new-handler for the length of a scope.
class ScopedNewHandler {
 public:
  explicit ScopedNewHandler(std::new_handler handler) : before(std::set_new_handler(handler)) {}
  ~ScopedNewHandler() { std::set_new_handler(before); }
  ScopedNewHandler(ScopedNewHandler const&) = delete;
  ScopedNewHandler& operator=(ScopedNewHandler const&) = delete;

 private:
  std::new_handler before;
};

TEST_P(ScalarLifecycle, ImpossibleCountsReachTheNewHandlerAndFail) {
  if (kAddressSanitizer) GTEST_SKIP() << "the sanitizer answers impossible allocations itself";
  // A count is a signed number, and these are negative: as a size, too large for every element.
  for (unsigned count : {0x80000000u, 0xFFFFFFFFu, 0xC0000000u, 0xFFFFFF00u}) {
    SCOPED_TRACE(count);
    handlerCalls = 0;
    ScopedNewHandler const scope(HelpNever);
    EXPECT_THROW(manager.Create(id, count), std::bad_alloc);
    EXPECT_EQ(handlerCalls, 3);
  }
}

TEST(ByteCreate, ZeroesWhatItGives) {
  XoTypeMgr const manager;
  for (char id : {char{0}, char{10}}) {
    for (unsigned count : {1u, 4u, 24u, 100u, 1000u, 70000u}) {
      // Memory that was used before is likely to be given again.
      for (int round = 0; round < 4; ++round) {
        auto* const values = static_cast<unsigned char*>(manager.Create(id, count));
        EXPECT_EQ(std::count(values, values + count, 0), static_cast<std::ptrdiff_t>(count));
        std::memset(values, 0xFF, count);
        manager.Delete(id, values, count);
      }
    }
  }
}

TEST(IntAssignment, FillTakesTheFirstElement) {
  int source[3] = {7, 8, 9};
  int target[4] = {1, 2, 3, 4};
  XoTypeMgr const manager;
  manager.AssignmentPtrGet(7)(target, source, 3, 1);
  EXPECT_EQ(target[0], 7);
  EXPECT_EQ(target[1], 7);
  EXPECT_EQ(target[2], 7);
  EXPECT_EQ(target[3], 4);
  manager.CopyPtrGet(7)(target, source, 3, 0);
  EXPECT_EQ(target[0], 7);
  EXPECT_EQ(target[1], 8);
  EXPECT_EQ(target[2], 9);
  EXPECT_EQ(target[3], 4);
}

}  // namespace
}  // namespace xo::test
