#include <gtest/gtest.h>

#include <string>
#include <xotypemgr.hpp>

#include "tests/xotypes/text_support.hpp"
#include "tests/xotypmgr/row_probe.hpp"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace xo::test {
namespace {

/// The older operations leave their carriers; the sanitizer is not to count those.
struct LeftCarriers {
#if defined(__SANITIZE_ADDRESS__)
  LeftCarriers() { __lsan_disable(); }
  ~LeftCarriers() { __lsan_enable(); }
#else
  LeftCarriers() {}
#endif
};

class OlderManager : public XoTypeMgr {
 public:
  std::string Flatten(void* values, char type, unsigned count) {
    LeftCarriers const left;
    XoString* const whole = ConvertToXoStringOld(values, type, count);
    if (whole == nullptr) return "<none>";
    return Text(*whole);
  }

  void* Unflatten(XoString& text, char type, unsigned count) {
    LeftCarriers const left;
    return ConvertFromXoStringOld(&text, type, count);
  }
};

TEST(OlderConversion, ASeparatorFollowsEveryElement) {
  OlderManager manager;
  o_4b values[] = {1, -2, 30};
  EXPECT_EQ(manager.Flatten(values, 2, 3),
            "1\x01-2\x01"
            "30\x01");
  EXPECT_EQ(manager.Flatten(values, 2, 1), "1\x01");
  EXPECT_EQ(manager.Flatten(values, 2, 0), "");
  EXPECT_EQ(manager.Flatten(values, XoRES_T, 1), "<none>");
}

/// Converts values to the strings of a test, whatever they are.
std::vector<XoString> givenStrings;
XoTypeConvertData* GiveStrings(void*, unsigned count) {
  return XoTypeConvertData::Make(XoSTRING_T, count, givenStrings.data(), nullptr);
}

TEST(OlderConversion, TheSeparatorIsInNoneOfTheStrings) {
  RowKeeper const row(CurrentTypeTable[2]);
  row->ConvertTo = GiveStrings;
  OlderManager manager;
  givenStrings = {XoString("a\x01"), XoString("\x02"), XoString("c")};
  EXPECT_EQ(manager.Flatten(nullptr, 2, 3),
            "a\x01\x03\x02\x03"
            "c\x03");

  std::string all;
  for (int unit = 1; unit < 255; ++unit) all += static_cast<char>(unit);
  givenStrings = {XoString(all.c_str())};
  EXPECT_EQ(manager.Flatten(nullptr, 2, 1), all + ",");
  givenStrings = {XoString(all.substr(0, 253).c_str())};
  EXPECT_EQ(manager.Flatten(nullptr, 2, 1), all);
  // A null string and one without text have nothing but their separator.
  givenStrings = {NullString(), XoString()};
  EXPECT_EQ(manager.Flatten(nullptr, 2, 2), "\x01\x01");
}

TEST(OlderConversion, AMissingStringLeavesItsSeparator) {
  RowKeeper const row(CurrentTypeTable[2]);
  row->ConvertTo = [](void*, unsigned) {
    return XoTypeConvertData::Make(XoSTRING_T, 1, givenStrings.data(), nullptr);
  };
  givenStrings = {XoString("a")};
  EXPECT_EQ(OlderManager().Flatten(nullptr, 2, 3), "a\x01\x01\x01");
}

TEST(OlderConversion, ManyLongStringsEndWhereAStringDoes) {
  RowKeeper const row(CurrentTypeTable[2]);
  row->ConvertTo = GiveStrings;
  OlderManager manager;
  givenStrings.assign(20, XoString(std::string(5000, 'x').c_str()));
  EXPECT_EQ(manager.Flatten(nullptr, 2, 20).size(), 65531u);
}

template <class Value>
std::vector<Value> Unflatten(XoString text, char type, unsigned count) {
  OlderManager manager;
  void* const values = manager.Unflatten(text, type, count);
  EXPECT_EQ(text.Len(), 0);
  auto const* const first = static_cast<Value*>(values);
  std::vector<Value> const result(first, first + count);
  manager.Delete(type, values, count);
  return result;
}

TEST(OlderConversion, TheLastCharacterNamesTheSeparator) {
  EXPECT_EQ(Unflatten<o_4b>("1\x01-2\x01"
                            "30\x01",
                            2, 3),
            (std::vector<o_4b>{1, -2, 30}));
  EXPECT_EQ(Unflatten<o_4b>("1;2;", 2, 2), (std::vector<o_4b>{1, 2}));
  EXPECT_EQ(Unflatten<o_4b>("1;2;", 2, 4), (std::vector<o_4b>{1, 2, 0, 0}));
  EXPECT_EQ(Unflatten<o_4b>("", 2, 2), (std::vector<o_4b>{0, 0}));
  EXPECT_EQ(Unflatten<o_4b>(",", 2, 1), (std::vector<o_4b>{0}));
  EXPECT_EQ(Unflatten<o_4b>("12", 2, 2), (std::vector<o_4b>{1, 0}));
  unsigned short const wide[] = {'7', 0x3B1, '8', 0x3B1, 0};
  EXPECT_EQ(Unflatten<o_4b>(XoString(wide), 2, 2), (std::vector<o_4b>{7, 8}));
}

std::vector<std::string> givenPieces;
XoTypeMgr* givenOwner = nullptr;

TEST(OlderConversion, ThePieceBehindTheLastSeparatorIsEmpty) {
  RowKeeper const row(CurrentTypeTable[2]);
  row->ConvertFrom = [](XoTypeConvertData* strings, unsigned count) -> void* {
    EXPECT_EQ(count, 7u);
    givenOwner = strings->manager;
    for (unsigned piece = 0; piece < strings->count; ++piece) {
      givenPieces.push_back(Text(*strings->GetString(static_cast<int>(piece))));
    }
    return &givenPieces;
  };
  OlderManager manager;
  XoString text("a;;bc;");
  EXPECT_EQ(manager.Unflatten(text, 2, 7), &givenPieces);
  EXPECT_EQ(givenPieces, (std::vector<std::string>{"a", "", "bc", ""}));
  EXPECT_EQ(givenOwner, &manager);
  EXPECT_EQ(text.Len(), 0);
  givenPieces.clear();
  EXPECT_EQ(manager.Unflatten(text, 2, 7), &givenPieces);
  EXPECT_EQ(givenPieces, std::vector<std::string>{""});
  row->ConvertFrom = nullptr;
  EXPECT_EQ(manager.Unflatten(text, 2, 7), nullptr);
}

TEST(OlderConversion, APieceMayBeLongerThanASignedCount) {
  std::string const piece(40000, '7');
  EXPECT_EQ(Unflatten<XoString>((piece + ";8;").c_str(), XoSTRING_T, 2),
            (std::vector<XoString>{piece.c_str(), "8"}));
}

TEST(OlderConversion, ComesBack) {
  OlderManager manager;
  o_double values[] = {0.1, -1e300, 3};
  XoString const text(manager.Flatten(values, 3, 3).c_str());
  EXPECT_EQ(Unflatten<o_double>(text, 3, 3), (std::vector<o_double>{0.1, -1e300, 3}));
}

// The buffer of a string says nothing of what its text leaves room for.
TEST(ManagerText, AnArrayIsAppendedToAShortTextInALargeBuffer) {
  XoTypeMgr const manager;
  XoString out(std::string(65531, 'x').c_str());
  out.CopyMapped("a", out.codeSet);
  ASSERT_EQ(out.size, 65532u);
  o_4b values[] = {1, 2, 3};
  manager.PrintToXoString(2, out, values, "%d", 3);
  EXPECT_EQ(Text(out), "a1,2,3");
}

TEST(ManagerText, EmptySlotsAreTolerated) {
  RowKeeper const row(CurrentTypeTable[2]);
  row->ConvertTo = nullptr;
  row->ConvertFrom = nullptr;
  row->PrintToXoString = nullptr;
  row->ScanFromXoString = nullptr;
  XoTypeMgr manager;
  o_4b value = 5;
  XoString text("7");
  EXPECT_EQ(manager.ConvertTo(2, &value, 1), nullptr);
  OwnStrings strings({"8"});
  EXPECT_EQ(manager.ConvertFrom(2, strings.Get(), 1), nullptr);
  EXPECT_EQ(strings.Get()->manager, &manager);
  EXPECT_EQ(&manager.PrintToXoString(2, text, &value, nullptr, 1), &text);
  EXPECT_EQ(manager.ScanFromXoString(2, &value, text, nullptr, 1), &value);
  EXPECT_EQ(manager.SetNullValue(2, &value), 0);
  EXPECT_EQ(value, 5);
  EXPECT_STREQ(text.StrGet(), "7");
}

TEST(ManagerText, TheIllegalRowLeavesTheText) {
  XoTypeMgr const manager;
  o_4b value = 5;
  XoString text("7");
  EXPECT_EQ(&manager.PrintToXoString(XoRES_T, text, &value, nullptr, 1), &text);
  EXPECT_STREQ(text.StrGet(), "7");
  EXPECT_EQ(manager.ScanFromXoString(XoRES_T, &value, text, nullptr, 1), nullptr);
  EXPECT_EQ(value, 5);
}

TEST(ManagerNull, WhatARowReportsIsReturned) {
  RowKeeper const row(CurrentTypeTable[2]);
  row->SetNull = [](void* value) {
    *static_cast<o_4b*>(value) = -9;
    return 4711;
  };
  XoTypeMgr manager;
  o_4b value = 5;
  EXPECT_EQ(manager.SetNullValue(2, &value), 4711);
  EXPECT_EQ(value, -9);
  // A row that says that it has none is taken at its word.
  row->SetNull = [](void*) { return ERR_TM_NOT_SUPPORTED; };
  EXPECT_EQ(manager.SetNullValue(2, &value), 0);
  EXPECT_EQ(value, 0);
}

TEST(ManagerNull, TheConvertedValueIsFilledIn) {
  RowKeeper const row(CurrentTypeTable[2]);
  row->Assignment = [](void* target, void* source, unsigned count, int fill) {
    EXPECT_EQ(*static_cast<o_4b*>(source), 0);
    *static_cast<o_4b*>(target) = static_cast<o_4b>(count * 10) + fill;
  };
  o_4b value = 5;
  EXPECT_EQ(XoTypeMgr().SetNullValue(2, &value), 0);
  EXPECT_EQ(value, 11);
}

TEST(ManagerNull, WithoutAssignmentTheNullTextIsScanned) {
  RowKeeper const row(CurrentTypeTable[2]);
  row->Assignment = nullptr;
  row->ScanFromXoString = [](void* target, XoString& text, char const* format, unsigned count) {
    *static_cast<o_4b*>(target) = static_cast<o_4b>(text.Len() * 100u + count);
    EXPECT_STREQ(format, "%ld");
    return target;
  };
  XoTypeMgr manager;
  o_4b value = 5;
  EXPECT_EQ(manager.SetNullValue(2, &value), 0);
  EXPECT_EQ(value, 601);
  row->ScanFromXoString = nullptr;
  EXPECT_EQ(manager.SetNullValue(2, &value), 0);
  EXPECT_EQ(value, 601);
}

}  // namespace
}  // namespace xo::test
