#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/base/random_test.hpp"
#include "tests/xotypes/inline_bytes.hpp"

namespace xo::test {
namespace {

template <class Text>
class InlineString : public RandomTest {
 protected:
  XoTypeMgr manager;
  static constexpr char id = kId<Text>;
  static constexpr bool caseless = kIgnoresCase<Text>;

  unsigned SizeOf(std::vector<Text>& texts, unsigned char format) const {
    return manager.DiskLenGet(id, texts.data(), format, static_cast<unsigned>(texts.size()),
                              kMemory);
  }

  ByteList Stored(std::vector<Text>& texts, unsigned char format) const {
    unsigned const size = SizeOf(texts, format & 15);
    PlacedBytes const target(ByteList(size, kUntouched), 1);
    EXPECT_EQ(
        manager.Store(id, target.Data(), texts.data(), format, static_cast<unsigned>(texts.size())),
        size);
    return ByteList(target.Data(), target.Data() + size);
  }

  struct LoadResult {
    unsigned result;
    std::vector<Text> texts;
  };
  LoadResult Loaded(ByteList const& stored, unsigned char format, unsigned count) const {
    PlacedBytes const source(stored, 1);
    std::vector<Text> texts(count, Text("held before"));
    unsigned const result = manager.Load(id, texts.data(), source.Data(), format, count);
    return {result, std::move(texts)};
  }
  LoadResult Translated(ByteList const& stored, unsigned char format, unsigned count) const {
    PlacedBytes const source(stored, 1);
    std::vector<Text> texts(count, Text("held before"));
    unsigned const result = manager.Translate(id, texts.data(), kMemory, 0, source.Data(), format,
                                              static_cast<unsigned>(stored.size()), count);
    return {result, std::move(texts)};
  }

  Produced ToDisk(std::vector<Text>& texts, unsigned char format, unsigned room) const {
    PlacedBytes const target(ByteList(room, kUntouched), 1);
    unsigned const result = manager.Translate(id, target.Data(), format, room, texts.data(),
                                              kMemory, 0, static_cast<unsigned>(texts.size()));
    return {result, ByteList(target.Data(), target.Data() + room)};
  }
  Produced DiskToDisk(ByteList const& stored, unsigned char from, unsigned char to,
                      unsigned room) const {
    PlacedBytes const source(stored, 1), target(ByteList(room, kUntouched), 1);
    unsigned const result = manager.Translate(id, target.Data(), to, room, source.Data(), from,
                                              static_cast<unsigned>(stored.size()), 1);
    EXPECT_TRUE(std::equal(stored.begin(), stored.end(), source.Data()));
    return {result, ByteList(target.Data(), target.Data() + room)};
  }

  std::string AnyText(unsigned longest) {
    std::string text;
    for (unsigned left = Below(longest + 1); left != 0; --left) {
      text += OneIn(4) ? static_cast<char>(1 + Below(255)) : "aAsS\xDF\x8C\xE9 "[Below(8)];
    }
    return text;
  }
};
using BothClasses = ::testing::Types<XoIString, XoCaseIString>;
TYPED_TEST_SUITE(InlineString, BothClasses);

// Store and load.

TYPED_TEST(InlineString, StoresOneHeaderForAllTexts) {
  std::vector<TypeParam> texts = {"ab", "", "c"};
  ByteList const run = Hex("61 62 00 00 63 00");
  EXPECT_EQ(this->Stored(texts, kLittle), Hex("40 06 00") + run);
  EXPECT_EQ(this->Stored(texts, kBig), Hex("40 00 06") + run);
}

TYPED_TEST(InlineString, NoTextsStoreTheHeaderAlone) {
  std::vector<TypeParam> texts;
  EXPECT_EQ(this->Stored(texts, kLittle), Hex("40 00 00"));
  EXPECT_EQ(this->Loaded(Hex("40 00 00"), kLittle, 0).result, 3u);
}

TYPED_TEST(InlineString, TagShowsHighBitsOfTheFormatAsTheClassReadsThem) {
  std::vector<TypeParam> texts = {"a"};
  for (unsigned high = 0; high < 256; high += 16) {
    for (unsigned const nibble : {1u, 2u}) {
      auto const format = static_cast<unsigned char>(high | nibble);
      bool const other = TestFixture::caseless ? high != 0 : high >= 128;
      EXPECT_EQ(this->Stored(texts, format)[0], other ? 1 : 0x40) << unsigned{format};
    }
  }
}

TYPED_TEST(InlineString, LoadsWhatWasStored) {
  for (unsigned char const format : {kLittle, kBig}) {
    for (int round = 0; round < 300; ++round) {
      std::vector<TypeParam> texts(this->Below(5));
      for (TypeParam& text : texts) text = TypeParam(this->AnyText(9).c_str());
      ByteList const stored = this->Stored(texts, format);
      auto const loaded = this->Loaded(stored, format, static_cast<unsigned>(texts.size()));
      ASSERT_EQ(loaded.result, stored.size());
      for (std::size_t index = 0; index < texts.size(); ++index) {
        ASSERT_STREQ(loaded.texts[index].StrGet(), texts[index].StrGet());
        ASSERT_EQ(loaded.texts[index].weighted, 0);
        ASSERT_EQ(loaded.texts[index].text == nullptr, texts[index].text == nullptr);
      }
    }
  }
}

TYPED_TEST(InlineString, LoadingAKeyTakesItsWeightsAndItsMark) {
  ByteList const key = Inline(0xC0, WeightsOf<TypeParam>("A\xDF"));
  auto const loaded = this->Loaded(key, kLittle, 1);
  EXPECT_EQ(loaded.result, key.size());
  EXPECT_EQ(Ended(loaded.texts[0].StrGet()), WeightsOf<TypeParam>("A\xDF"));
  EXPECT_EQ(loaded.texts[0].weighted, 0x80);
  EXPECT_TRUE(loaded.texts[0] == TypeParam("A\xDF"));
}

TYPED_TEST(InlineString, LoadStaysInsideThePayload) {
  // Fewer texts than asked for, a text without its end, and a length that is too small.
  auto const fewer = this->Loaded(Hex("40 02 00 61 00"), kLittle, 3);
  EXPECT_EQ(fewer.result, 5u);
  EXPECT_STREQ(fewer.texts[0].StrGet(), "a");
  EXPECT_EQ(fewer.texts[1].text, nullptr);
  EXPECT_EQ(fewer.texts[2].text, nullptr);
  auto const open = this->Loaded(Hex("40 02 00 61 62"), kLittle, 2);
  EXPECT_EQ(open.result, 5u);
  EXPECT_STREQ(open.texts[0].StrGet(), "ab");
  EXPECT_EQ(open.texts[1].text, nullptr);
  auto const small = this->Loaded(Hex("40 01 00 61 62 00"), kLittle, 1);
  EXPECT_EQ(small.result, 4u);
  EXPECT_STREQ(small.texts[0].StrGet(), "a");
}

TYPED_TEST(InlineString, LoadOfEveryCutRecordStaysInside) {
  std::vector<TypeParam> texts = {"ab", "", "c"};
  for (unsigned char const format : {kLittle, kBig}) {
    ByteList const stored = this->Stored(texts, format);
    for (std::size_t size = 1; size <= stored.size(); ++size) {
      ByteList const cut(stored.begin(), stored.begin() + static_cast<std::ptrdiff_t>(size));
      auto const loaded = this->Translated(cut, format, 3);
      std::string const first = loaded.texts[0].StrGet();
      EXPECT_EQ(first, std::string("ab").substr(0, size < 3 ? 0 : size - 3)) << size;
      EXPECT_EQ(loaded.texts[2].Len(), size >= 8 ? 1u : 0u) << size;
    }
  }
}

// Sizes.

TYPED_TEST(InlineString, EmptyTextsTakeAHeaderAndAByteEach) {
  for (unsigned const count : {0u, 1u, 7u}) {
    EXPECT_EQ(CurrentTypeTable[static_cast<std::size_t>(TestFixture::id)]->NullSizeGet(count),
              count + 3);
  }
}

TYPED_TEST(InlineString, SizeCountsTextsOrTheirWeights) {
  std::vector<TypeParam> texts = {"a\xDF", ""};
  EXPECT_EQ(this->SizeOf(texts, kLittle), 3u + 3 + 1);
  EXPECT_EQ(this->SizeOf(texts, kLittleKey), 3u + 4 + 1);
  EXPECT_EQ(this->SizeOf(texts, 0x88), 0u);
  texts[0].weighted = 0x80;
  EXPECT_EQ(this->SizeOf(texts, kLittleKey), 3u + 3 + 1);
  ByteList stored = Inline(0x40, Hex("61 DF 00 00"), kBig);
  auto const sizeOf = [&](unsigned char format) {
    PlacedBytes const source(stored, 1);
    return this->manager.DiskLenGet(TestFixture::id, source.Data(), format, 1, kBig);
  };
  EXPECT_EQ(sizeOf(kBig), 7u);
  EXPECT_EQ(sizeOf(kLittleKey), 8u);
  EXPECT_EQ(sizeOf(0x88), 0u);
  stored[0] = 0xC0;
  EXPECT_EQ(sizeOf(kLittleKey), 7u);
}

TYPED_TEST(InlineString, SizeFromAFileReadsThePayload) {
  auto const sizeIn = [&](ByteList bytes, unsigned char format) {
    MemFile file(bytes.data(), static_cast<unsigned>(bytes.size()));
    return this->manager.DiskLenGetFromMemFile(TestFixture::id, &file, format, 1);
  };
  EXPECT_EQ(sizeIn(Hex("40 02 01 61 00"), kLittle), 3u + 0x102);
  EXPECT_EQ(sizeIn(Hex("40 02 01 61 00"), kBig), 3u + 0x201);
  EXPECT_EQ(sizeIn(Hex("40 02 00"), kLittle), 5u);
  EXPECT_EQ(sizeIn(Hex("40 02"), kLittle), 5u);
  EXPECT_EQ(sizeIn(Hex("40"), kLittle), 3u);
  EXPECT_EQ(sizeIn({}, kLittle), 0u);
}

// Keys.

TYPED_TEST(InlineString, KeyOfATextHoldsItsWeights) {
  std::vector<TypeParam> texts = {"Ab\xDF", "passed over"};
  ByteList const weights = WeightsOf<TypeParam>("Ab\xDF");
  ASSERT_EQ(weights.size(), 5u);
  for (unsigned char const format : {kLittleKey, kBigKey}) {
    ByteList const key = Inline(0xC0, weights, format);
    EXPECT_EQ(this->ToDisk(texts, format, 8), (Produced{8, key}));
    EXPECT_EQ(this->ToDisk(texts, format, 10), (Produced{8, Filled(key, 10, 0)}));
  }
  texts = {""};
  EXPECT_EQ(this->ToDisk(texts, kLittleKey, 5), (Produced{4, Hex("C0 01 00 00 00")}));
}

TYPED_TEST(InlineString, KeyOfATextIsCutToTheRoom) {
  std::vector<TypeParam> texts = {"12\xDF"};
  EXPECT_EQ(this->ToDisk(texts, kLittleKey, 6), (Produced{6, Hex("C0 03 00 31 32 00")}));
  EXPECT_EQ(this->ToDisk(texts, kLittleKey, 4), (Produced{4, Hex("C0 01 00 00")}));
  // Of the sharp s the first weight.
  Produced const split = this->ToDisk(texts, kLittleKey, 7);
  EXPECT_EQ(split.result, 7u);
  EXPECT_EQ(split.target[5], TestFixture::caseless ? 0x9D : 0x9C);
  EXPECT_EQ(split.target[6], 0);
  // Nothing is written beyond a room that is too small for a header.
  EXPECT_EQ(this->ToDisk(texts, kLittleKey, 3).target, Hex("C0 01 00"));
  EXPECT_EQ(this->ToDisk(texts, kBigKey, 2).target, Hex("C0 00"));
  EXPECT_EQ(this->ToDisk(texts, kLittleKey, 1).target, Hex("C0"));
  EXPECT_EQ(this->ToDisk(texts, kLittleKey, 0).target, ByteList());
}

TYPED_TEST(InlineString, KeyOfWeightsTakesThemAsTheyAre) {
  std::vector<TypeParam> texts = {"\xDF\x54"};
  texts[0].weighted = 0x80;
  EXPECT_EQ(this->ToDisk(texts, kLittleKey, 6), (Produced{6, Hex("C0 03 00 DF 54 00")}));
}

TYPED_TEST(InlineString, KeyOfStoredTextsMapsEveryByteThatIsThere) {
  // Terminators map to themselves; the result counts the last one in one class alone.
  ByteList const stored = Inline(0x40, Hex("31 DF 00 32 00"));
  unsigned char const s = TestFixture::caseless ? 0x9D : 0x9C;
  ByteList const weights = {0x31, s, s, 0, 0x32, 0};
  unsigned const besides = TestFixture::caseless ? 4 : 3;
  EXPECT_EQ(this->DiskToDisk(stored, kLittle, kLittleKey, 12),
            (Produced{6 + besides, Filled(Inline(0xC0, weights), 12, 0)}));
  EXPECT_EQ(this->DiskToDisk(stored, kLittle, kBigKey, 10),
            (Produced{6 + besides, Inline(0xC0, weights, kBigKey) + ByteList{0}}));
  EXPECT_EQ(this->DiskToDisk(Inline(1, Hex("31 00")), kLittle, kLittleKey, 6),
            (Produced{2 + besides, Hex("C1 02 00 31 00 00")}));
}

TYPED_TEST(InlineString, KeyOfStoredTextsCountsWhatDoesNotFit) {
  ByteList const stored = Inline(0x40, Hex("31 32 33 00"));
  unsigned const besides = TestFixture::caseless ? 4 : 3;
  EXPECT_EQ(this->DiskToDisk(stored, kLittle, kLittleKey, 6),
            (Produced{2 + besides, Hex("C0 04 00 31 32 00")}));
  EXPECT_EQ(this->DiskToDisk(stored, kLittle, kLittleKey, 4),
            (Produced{besides, Hex("C0 04 00 00")}));
  for (unsigned room = 0; room < 4; ++room) {
    EXPECT_EQ(this->DiskToDisk(stored, kLittle, kBigKey, room).target,
              Filled(Hex("C0 00 04"), room, 0));
  }
}

TYPED_TEST(InlineString, StoredKeysAreCopiedAsTheyStand) {
  for (unsigned char const tag : Formats{0x80, 0xC0, 0xC1, 0xFF}) {
    ByteList const key = Inline(tag, Hex("54 DF 00"));
    EXPECT_EQ(this->DiskToDisk(key, kLittle, kBigKey, 8), (Produced{6, Filled(key, 8, 0)}));
    EXPECT_EQ(this->DiskToDisk(key, kLittle, kLittleKey, 4),
              (Produced{4, ByteList(key.begin(), key.begin() + 4)}));
  }
}

TYPED_TEST(InlineString, KeysForMemoryDoNotExist) {
  std::vector<TypeParam> texts = {"a"};
  EXPECT_EQ(this->ToDisk(texts, 0x88, 6), (Produced{0, ByteList(6, kUntouched)}));
  EXPECT_EQ(this->DiskToDisk(Inline(0x40, Ended("a")), kLittle, 0x88, 6),
            (Produced{0, ByteList(6, kUntouched)}));
}

TYPED_TEST(InlineString, KeysOfTextAndOfItsRecordHoldTheSameWeights) {
  for (int round = 0; round < 500; ++round) {
    std::vector<TypeParam> texts = {TypeParam(this->AnyText(12).c_str())};
    unsigned const size = this->SizeOf(texts, kLittleKey);
    Produced const direct = this->ToDisk(texts, kLittleKey, size);
    ASSERT_EQ(direct.result, size);
    Produced const stored =
        this->DiskToDisk(this->Stored(texts, kLittle), kLittle, kLittleKey, size + 1);
    ASSERT_EQ(ByteList(stored.target.begin(), stored.target.end() - 1), direct.target);
    ASSERT_EQ(direct.target, Inline(0xC0, WeightsOf<TypeParam>(texts[0].StrGet())));
  }
}

TYPED_TEST(InlineString, KeysComeBackAsTextOrAsWeights) {
  ByteList const key = Inline(0xC0, WeightsOf<TypeParam>("aB\xDF\xE9") + WeightsOf<TypeParam>("x"));
  auto const back = this->Translated(key, kLittleKey, 2);
  EXPECT_EQ(back.result, key.size());
  if (TestFixture::caseless) {
    EXPECT_STREQ(back.texts[0].StrGet(),
                 "AB\xDF"
                 "E");
    EXPECT_EQ(back.texts[0].weighted, 0);
  } else {
    EXPECT_EQ(Ended(back.texts[0].StrGet()), WeightsOf<TypeParam>("aB\xDF\xE9"));
    EXPECT_EQ(back.texts[0].weighted, 0x80);
  }
  EXPECT_TRUE(back.texts[0] == TypeParam("aB\xDF\xE9"));
  EXPECT_TRUE(back.texts[1] == TypeParam("x"));
}

// Translation without keys.

TYPED_TEST(InlineString, TranslationOntoDiskStoresPlainText) {
  std::vector<TypeParam> texts = {"ab", "c"};
  ByteList const stored = Inline(0x40, Hex("61 62 00 63 00"));
  EXPECT_EQ(this->ToDisk(texts, kLittle, 8), (Produced{8, stored}));
  EXPECT_EQ(this->ToDisk(texts, 0x41, 8), (Produced{8, stored}));
  // Never beyond the room.
  for (unsigned room = 0; room < 8; ++room) {
    EXPECT_EQ(this->ToDisk(texts, kLittle, room).target,
              ByteList(stored.begin(), stored.begin() + static_cast<int>(room)));
  }
}

TYPED_TEST(InlineString, RecordsAreCopiedWithoutConversion) {
  ByteList const stored = Inline(0x40, Hex("61 62 00"));
  EXPECT_EQ(this->DiskToDisk(stored, kLittle, kBig, 8), (Produced{6, Filled(stored, 8, 0)}));
  EXPECT_EQ(this->DiskToDisk(stored, kBig, kLittle, 4),
            (Produced{4, ByteList(stored.begin(), stored.begin() + 4)}));
}

TYPED_TEST(InlineString, MemoryIsAssigned) {
  TypeParam source[2] = {"ab", "c"}, target[2] = {"x", "y"};
  source[1].weighted = 0x80;
  EXPECT_EQ(this->manager.Translate(TestFixture::id, target, kMemory, 0, source, kMemory, 0, 2),
            32u);
  EXPECT_STREQ(target[0].StrGet(), "ab");
  EXPECT_STREQ(target[1].StrGet(), "c");
  EXPECT_EQ(target[1].weighted, 0x80);
}

// The rest of the row.

TYPED_TEST(InlineString, AllTextsHashAlike) {
  TypeParam text("a");
  for (unsigned const count : {0u, 1u, 5u}) {
    int error = 77;
    EXPECT_EQ(this->manager.Hash(TestFixture::id, 3, &text, count, kLittle, error), 0u);
    EXPECT_EQ(error, 0);
  }
}

TYPED_TEST(InlineString, ArraysLiveThroughTheManager) {
  for (unsigned const count : {0u, 1u, 3u}) {
    void* const values = this->manager.Create(TestFixture::id, count);
    auto* const texts = static_cast<TypeParam*>(values);
    for (unsigned index = 0; index < std::max(count, 1u); ++index) {
      EXPECT_EQ(texts[index].text, nullptr);
      EXPECT_EQ(texts[index].weighted, 0);
      texts[index] = TypeParam("text that the deletion frees");
    }
    EXPECT_EQ(this->manager.Delete(TestFixture::id, values, count), nullptr);
    void* const defaults = this->manager.DefaultValue(TestFixture::id, count, 1);
    EXPECT_EQ(static_cast<TypeParam*>(defaults)->text, nullptr);
    this->manager.Delete(TestFixture::id, defaults, count);
  }
}

}  // namespace
}  // namespace xo::test
