#include <gtest/gtest.h>

#include <cstring>

#include "tests/base/random_test.hpp"
#include "tests/xoblob/blob_bytes.hpp"

namespace xo::test {
namespace {

constexpr unsigned char kFormats[] = {FormLittle, FormBig, FormLittle | FormatIndexKey,
                                      FormBig | 0x40};

bool IsBig(unsigned char format) { return (format & 15) == FormBig; }

class BlobRows : public RandomTest {
 protected:
  std::vector<BlobText> AnyContents(unsigned most = 5) {
    std::vector<BlobText> contents(Below(most));
    for (BlobText& content : contents) {
      if (OneIn(4)) continue;
      content.emplace();
      for (unsigned i = Below(OneIn(4) ? 300 : 7); i != 0; --i) {
        *content += static_cast<char>(Byte());
      }
    }
    return contents;
  }
};

TEST(BlobStore, TotalCountsAWordForEachElementAndItsBytes) {
  Blobs blobs({{}, "abc"});
  ByteList const expected = {11, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 3, 0, 0, 0, 'a', 'b', 'c'};
  ByteList disk(15);
  EXPECT_EQ(BlobRow().SizeGet(blobs.Get(), 8, 1, 2), 15u);
  EXPECT_EQ(BlobRow().Store(disk.data(), blobs.Get(), FormLittle, 2), 15u);
  EXPECT_EQ(disk, expected);
}

TEST(BlobStore, OfNoElementsIsATotalOfZero) {
  Exact const disk(ByteList(4, 0x55));
  EXPECT_EQ(BlobRow().Store(disk, nullptr, FormLittle, 0), 4u);
  EXPECT_EQ(std::memcmp(disk, "\0\0\0\0", 4), 0);
  EXPECT_EQ(BlobRow().SizeGet(nullptr, 8, 1, 0), 4u);
  EXPECT_EQ(BlobRow().Load(nullptr, disk, FormLittle, 0), 4u);
}

TEST(BlobSizes, NullSizesLeaveOutTheTotal) {
  EXPECT_EQ(BlobRow().NullSizeGet(0), 0u);
  EXPECT_EQ(BlobRow().NullSizeGet(3), 12u);
}

TEST(BlobSizes, OfARecordComeFromItsTotal) {
  for (unsigned char format : std::initializer_list<unsigned char>{0x01, 0x02, 0x81}) {
    ByteList record;
    PutWord(record, 100, IsBig(format));
    Exact const disk(record);
    EXPECT_EQ(BlobRow().SizeGet(disk, format, 1, 7), 104u);
  }
  Exact const null(ByteList(4, 0xFF));
  EXPECT_EQ(BlobRow().SizeGet(null, FormLittle, 1, 1), 4u);
}

TEST(BlobSizes, OfAFileNeedAWholeWord) {
  ByteList record = StoredBlobs({"abc", {}});
  MemFile file(record.data(), static_cast<unsigned>(record.size()));
  EXPECT_EQ(BlobRow().SizeGetFromMemFile(&file, FormLittle, 2), record.size());
  for (unsigned there : {0u, 1u, 3u}) {
    MemFile cut(record.data(), there);
    EXPECT_EQ(BlobRow().SizeGetFromMemFile(&cut, FormLittle, 2), 0u);
  }
  // A file holds stored values, whatever the format says.
  EXPECT_EQ(BlobRow().SizeGetFromMemFile(&file, FormMemory, 2), record.size());
}

TEST_F(BlobRows, LoadGivesBackWhatStoreWrote) {
  for (int turn = 0; turn < 2000; ++turn) {
    auto const contents = AnyContents();
    unsigned char const format = kFormats[Below(4)];
    ByteList const expected = StoredBlobs(contents, IsBig(format));
    auto const size = static_cast<unsigned>(expected.size());
    Blobs blobs(contents);
    Exact const disk{ByteList(size)};
    ASSERT_EQ(BlobRow().SizeGet(blobs.Get(), 8, format, blobs.Count()), size);
    ASSERT_EQ(BlobRow().Store(disk, blobs.Get(), format, blobs.Count()), size);
    ASSERT_EQ(std::memcmp(disk, expected.data(), size), 0);
    ASSERT_EQ(BlobRow().SizeGet(disk, format, format, blobs.Count()), size);
    Blobs back(std::vector<BlobText>(contents.size(), OneIn(2) ? BlobText("old") : BlobText()));
    ASSERT_EQ(BlobRow().Load(back.Get(), disk, format, back.Count()), size);
    for (std::size_t i = 0; i < contents.size(); ++i) ASSERT_EQ(Content(back[i]), contents[i]);
  }
}

TEST(BlobLoad, StopsAtLengthsThatDoNotAddUp) {
  auto const load = [](ByteList const& record, Blobs& blobs) {
    return BlobRow().Load(blobs.Get(), Exact(record), FormLittle, blobs.Count());
  };
  ByteList record = StoredBlobs({"abc", "de"});
  record[11] = 3;  // the second element, which passes the total
  Blobs blobs({"1", "2"});
  EXPECT_EQ(load(record, blobs), 0u);
  EXPECT_EQ(Content(blobs[0]), "abc");
  EXPECT_EQ(Content(blobs[1]), "2");
  for (std::uint32_t length : {0x80000000u, 0xFFFFFFFEu, 0x7FFFFFFFu}) {
    record = StoredBlobs({"abc"});
    ByteList word;
    PutWord(word, length);
    std::copy(word.begin(), word.end(), record.begin() + 4);
    Blobs one({"1"});
    EXPECT_EQ(load(record, one), 0u);
    EXPECT_EQ(Content(one[0]), "1");
  }
  // A negative total is not looked behind.
  Blobs one({"1"});
  EXPECT_EQ(load({0, 0, 0, 0x80}, one), 0u);
  EXPECT_EQ(load({0xFF, 0xFF, 0xFF, 0xFF}, one), 0u);
  EXPECT_EQ(load({3, 0, 0, 0, 9, 9, 9}, one), 0u);
  EXPECT_EQ(Content(one[0]), "1");
}

TEST(BlobLoad, TakesATotalThatIsLargerThanItsElements) {
  ByteList record = StoredBlobs({"abc"});
  record[0] = 9;
  record.push_back(1);
  record.push_back(2);
  Blobs one({BlobText()});
  EXPECT_EQ(BlobRow().Load(one.Get(), Exact(record), FormLittle, 1), 13u);
  EXPECT_EQ(Content(one[0]), "abc");
}

TEST_F(BlobRows, TranslateReadsNothingBehindTheSource) {
  for (int turn = 0; turn < 300; ++turn) {
    auto const contents = AnyContents();
    ByteList const record = StoredBlobs(contents);
    for (std::size_t there = 1; there <= std::min<std::size_t>(record.size(), 60); ++there) {
      ByteList cut(record.begin(), record.begin() + static_cast<std::ptrdiff_t>(there));
      if (OneIn(3)) cut[Below(static_cast<unsigned>(there))] = Byte();
      Blobs back(std::vector<BlobText>(contents.size(), BlobText("old")));
      unsigned const read = BlobRow().Translate(back.Get(), 8, 0, Exact(cut), FormLittle,
                                                static_cast<unsigned>(there), back.Count());
      ASSERT_LE(read, there);
    }
  }
}

TEST_F(BlobRows, TranslateWritesNothingBehindTheTarget) {
  for (int turn = 0; turn < 300; ++turn) {
    auto const contents = AnyContents();
    Blobs blobs(contents);
    ByteList const record = StoredBlobs(contents, true);
    for (std::size_t room = 1; room <= record.size() + 3; room += 1 + Below(5)) {
      Exact const target{ByteList(room, 0x55)};
      std::size_t const written = std::min(room, record.size());
      ASSERT_EQ(BlobRow().Translate(target, FormBig, static_cast<unsigned>(room), blobs.Get(), 8, 0,
                                    blobs.Count()),
                written);
      ASSERT_EQ(std::memcmp(target, record.data(), written), 0);
    }
  }
}

TEST(BlobTranslate, CopiesBetweenOneFormAsItIs) {
  Blobs source({"abc", {}}), target({{}, "x"});
  EXPECT_EQ(BlobRow().Translate(target.Get(), 8, 0, source.Get(), 8, 0, 2), 16u);
  EXPECT_EQ(Content(target[0]), "abc");
  EXPECT_EQ(Content(target[1]), BlobText());
  Exact const record(StoredBlobs({"abc"}));
  Exact const copy(ByteList(13, 0x55));
  EXPECT_EQ(BlobRow().Translate(copy, FormBig, 13, record, FormLittle, 11, 1), 11u);
  EXPECT_EQ(std::memcmp(copy, record, 11), 0);
  EXPECT_EQ(std::memcmp(static_cast<unsigned char*>(static_cast<void*>(copy)) + 11, "\0\0", 2), 0);
  EXPECT_EQ(BlobRow().Translate(copy, FormBig, 5, record, FormLittle, 11, 1), 5u);
}

/// Nine times the sum, plus the byte; elements XORed; times the multiplier of all hashes.
unsigned ExpectedHash(std::vector<BlobText> const& contents) {
  unsigned folds = 0;
  for (BlobText const& content : contents) {
    unsigned fold = 0;
    for (char byte : content.value_or("")) fold = fold * 9 + static_cast<unsigned char>(byte);
    folds ^= fold;
  }
  return folds * 1103515245u;
}

TEST_F(BlobRows, HashIsThatOfTheBytesInEveryForm) {
  for (int turn = 0; turn < 1000; ++turn) {
    auto const contents = AnyContents();
    Blobs blobs(contents);
    int error = 9;
    ASSERT_EQ(BlobRow().Hash(8, 0, blobs.Get(), blobs.Count(), error), ExpectedHash(contents));
    ASSERT_EQ(error, 0);
    for (unsigned char format : kFormats) {
      ByteList const record = StoredBlobs(contents, IsBig(format));
      auto const size = static_cast<unsigned>(record.size());
      for (unsigned length : {0u, size}) {
        ASSERT_EQ(BlobRow().Hash(format, length, Exact(record), blobs.Count(), error),
                  ExpectedHash(contents));
        ASSERT_EQ(error, 0);
      }
    }
  }
}

TEST_F(BlobRows, HashOfACutOrDamagedRecordReadsNoFurther) {
  for (int turn = 0; turn < 300; ++turn) {
    auto const contents = AnyContents();
    ByteList const record = StoredBlobs(contents);
    for (std::size_t there = 1; there < std::min<std::size_t>(record.size(), 60); ++there) {
      ByteList cut(record.begin(), record.begin() + static_cast<std::ptrdiff_t>(there));
      int error = 9;
      auto const length = static_cast<unsigned>(there);
      auto const count = static_cast<unsigned>(contents.size());
      BlobRow().Hash(FormLittle, length, Exact(cut), count, error);
      ASSERT_EQ(error, count == 0 ? 0 : ERR_TM_LENGTH_EXCEEDED);
      cut[Below(length)] = Byte();
      BlobRow().Hash(FormLittle, length, Exact(cut), count, error);
    }
  }
}

TEST(BlobHash, GoesByTheTotalWhereThereIsNoLength) {
  ByteList record = StoredBlobs({"abc"});
  record[4] = 200;
  int error = 0;
  EXPECT_EQ(BlobRow().Hash(FormLittle, 0, Exact(record), 1, error), ExpectedHash({"abc"}));
  EXPECT_EQ(error, ERR_TM_LENGTH_EXCEEDED);
  EXPECT_EQ(BlobRow().Hash(FormLittle, 0, nullptr, 0, error), 0u);
  EXPECT_EQ(error, 0);
}

TEST(BlobText, PrintsItsLength) {
  Blobs blobs({"abc", {}, ""});
  XoTypeMgr const manager;
  auto const print = [&](unsigned index, char const* format) -> std::string {
    XoString out("before");
    return manager.PrintToXoString(XoBLOB_T, out, &blobs[index], format, 1).StrGet();
  };
  EXPECT_EQ(print(0, nullptr), "[BLOB,len=3]");
  EXPECT_EQ(print(1, nullptr), "{NULL}");
  EXPECT_EQ(print(2, nullptr), "[BLOB,len=0]");
  EXPECT_EQ(print(0, "%L%%%L%x%"), "3%3%x%");
  EXPECT_EQ(print(0, ""), "");
  XoString out;
  EXPECT_STREQ(BlobRow().PrintToXoString(out, &blobs[0], nullptr, 1).StrGet(), "[BLOB,len=3]");
  XoString list;
  EXPECT_STREQ(manager.PrintToXoString(XoBLOB_T, list, blobs.Get(), "%L", 3).StrGet(),
               "3,{NULL},0");
}

TEST(BlobText, ScansTheBytesOfTheText) {
  XoBlob blob;
  XoString text("abc"), null("{NULL}x"), empty("");
  EXPECT_EQ(BlobRow().ScanFromXoString(&blob, text, nullptr, 1), &blob);
  EXPECT_EQ(Content(blob), "abc");
  EXPECT_EQ(BlobRow().ScanFromXoString(&blob, null, nullptr, 1), &blob);
  EXPECT_EQ(blob.IsNullValue(), 1);
  EXPECT_EQ(BlobRow().ScanFromXoString(&blob, empty, nullptr, 1), &blob);
  EXPECT_EQ(Content(blob), "");
  EXPECT_EQ(BlobRow().ScanFromXoString(nullptr, text, nullptr, 1), nullptr);
  XoString wide(XoString::GetDefault16CodeSet(), 0);
  wide += text;
  BlobRow().ScanFromXoString(&blob, wide, nullptr, 1);
  EXPECT_EQ(blob.Length(), 6);
  EXPECT_EQ(std::memcmp(blob.body->data, wide.StrGet(), 6), 0);
}

TEST(BlobText, ConvertsNullToNull) {
  XoTypeMgr manager;
  Blobs blobs({"abc", {}});
  XoTypeConvertData* const strings = manager.ConvertTo(XoBLOB_T, blobs.Get(), 2);
  EXPECT_STREQ(strings->GetString(0)->StrGet(), "[BLOB,len=3]");
  EXPECT_EQ(strings->GetString(1)->IsNullValue(), 1);
  auto* const back = static_cast<XoBlob*>(manager.ConvertFrom(XoBLOB_T, strings, 3));
  EXPECT_EQ(Content(back[0]), "[BLOB,len=3]");
  EXPECT_EQ(back[1].IsNullValue(), 1);
  EXPECT_EQ(back[2].IsNullValue(), 1);
  manager.Delete(XoBLOB_T, back, 3);
  delete strings;
}

TEST(BlobText, ConvertsInAnExchangedFormat) {
  XoTypeMgr manager;
  char const* const before = manager.ExchangeFormat(XoBLOB_T, "%L bytes");
  Blobs blobs({"abc"});
  XoTypeConvertData* const strings = manager.ConvertTo(XoBLOB_T, blobs.Get(), 1);
  EXPECT_STREQ(strings->GetString(0)->StrGet(), "3 bytes");
  delete strings;
  manager.ExchangeFormat(XoBLOB_T, before);
}

TEST(BlobObjects, AreEmptyWhenNewAndNullWhereAsked) {
  for (unsigned count : {0u, 1u, 3u}) {
    auto* made = static_cast<XoBlob*>(BlobRow().Create(count));
    for (unsigned i = 0; i < std::max(count, 1u); ++i) EXPECT_EQ(Content(made[i]), "");
    EXPECT_EQ(BlobRow().Delete(made, count), nullptr);
    made = static_cast<XoBlob*>(BlobRow().DefaultValue(count, 0));
    for (unsigned i = 0; i < std::max(count, 1u); ++i) EXPECT_EQ(BlobRow().IsNull(made + i), 0);
    BlobRow().Delete(made, count);
    made = static_cast<XoBlob*>(BlobRow().DefaultValue(count, 1));
    for (unsigned i = 0; i < std::max(count, 1u); ++i) EXPECT_EQ(BlobRow().IsNull(made + i), 1);
    BlobRow().Delete(made, count);
  }
  XoBlob blob;
  EXPECT_EQ(BlobRow().SetNull(&blob), 0);
  EXPECT_EQ(BlobRow().IsNull(&blob), 1);
  EXPECT_EQ(BlobRow().GetValue(&blob, 1, 8, kNextValue), ERR_TM_NOT_SUPPORTED);
}

TEST(BlobObjects, DestructorLeavesNullInTheMemory) {
  alignas(XoBlob) unsigned char raw[2 * sizeof(XoBlob)];
  BlobRow().Constructor(raw, 2, 0);
  BlobRow().Destructor(raw, 2, 0);
  unsigned char const zero[sizeof raw] = {};
  EXPECT_EQ(std::memcmp(raw, zero, sizeof raw), 0);
}

TEST(BlobObjects, AssignAndCopyAllOrTheFirst) {
  Blobs source({"abc", {}}), target({"1", "2", "3"});
  BlobRow().Assignment(target.Get(), source.Get(), 2, 0);
  EXPECT_EQ(Content(target[1]), BlobText());
  BlobRow().Assignment(target.Get(), source.Get(), 3, 1);
  EXPECT_EQ(Content(target[2]), "abc");
  alignas(XoBlob) unsigned char raw[3 * sizeof(XoBlob)];
  BlobRow().Copy(raw, source.Get(), 2, 0);
  EXPECT_EQ(BlobRow().IsNull(raw + sizeof(XoBlob)), 1);
  BlobRow().Destructor(raw, 2, 0);
  BlobRow().Copy(raw, source.Get(), 3, 1);
  EXPECT_EQ(BlobRow().IsNull(raw + 2 * sizeof(XoBlob)), 0);
  BlobRow().Destructor(raw, 3, 0);
  BlobRow().Constructor(raw, 3, 0);
  EXPECT_EQ(BlobRow().IsNull(raw + 2 * sizeof(XoBlob)), 0);
  BlobRow().Destructor(raw, 3, 0);
}

}  // namespace
}  // namespace xo::test
