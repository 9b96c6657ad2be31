#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>
#include <xotypemgr.hpp>

#include "tests/base/random_test.hpp"
#include "tests/xotypmgr/expected_rows.hpp"

/// Every operation of every row on the same values, and each way to a result against the others.
/// Where two ways differ on purpose, the rows stand in a list below with the reason, and the test
/// sees to it that they do differ.
namespace xo::test {
namespace {

using ByteList = std::vector<unsigned char>;

constexpr int kRows = 46;
constexpr unsigned char kMemory = FormMemory;
constexpr unsigned char kDiskForms[] = {FormLittle, FormBig, FormLittle | FormatIndexKey,
                                        FormBig | FormatIndexKey};
constexpr unsigned char kRecordForms[] = {FormLittle, FormBig};
constexpr unsigned short kPlain = 0x0010;

int Sign(int number) { return (number > 0) - (number < 0); }

/// Values of one row, made by the row.
class Values {
 public:
  Values(int row, unsigned length)
      : id(Id(row)), count(length), data(Manager().Create(id, count)) {}
  Values(int row, void* made, unsigned length) : id(Id(row)), count(length), data(made) {}
  ~Values() { Manager().Delete(id, data, count); }
  Values(Values const&) = delete;
  Values& operator=(Values const&) = delete;

  static XoTypeMgr& Manager() {
    static XoTypeMgr manager;
    return manager;
  }

  void* operator[](unsigned index) const { return Manager().GetArrayElement(id, data, index, 0); }
  void* All() const { return data; }

 private:
  char id;
  unsigned count;
  void* data;
};

class RowWalk : public RandomTest {
 protected:
  static constexpr unsigned kSamples = 40;
  /// The values of dated rows from here on are days and times that exist.
  static constexpr unsigned kFirstValid = 20;
  XoTypeMgr& manager = Values::Manager();

  static TypeDescriptor& Row(int row) { return *CurrentTypeTable[row]; }

  /// Fills live values of a row: the edges first, then random ones.
  void Fill(int row, Values& values) {
    for (unsigned i = 0; i < kSamples; ++i) FillOne(row, values[i], i);
  }

  void FillOne(int row, void* value, unsigned index) {
    if (row == XoSTRING_T) {
      *static_cast<XoString*>(value) = Text(index);
    } else if (row == XoISTRING_T) {
      *static_cast<XoIString*>(value) = XoIString(static_cast<char*>(Text(index).text));
    } else if (row == XoCASEISTRING_T) {
      *static_cast<XoCaseIString*>(value) = XoCaseIString(static_cast<char*>(Text(index).text));
    } else if (row == XoBLOB_T) {
      ByteList const bytes = Bytes(index);
      *static_cast<XoBlob*>(value) = XoBlob(bytes.data(), static_cast<int>(index));
    } else {
      ByteList const disk = Stored(row, index);
      manager.Load(Id(row), value, const_cast<unsigned char*>(disk.data()), FormLittle, 1);
    }
  }

  XoString Text(unsigned index) {
    if (index == 0) return XoString("");
    std::string text;
    for (unsigned i = Below(12) + 1; i != 0; --i) {
      text += "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 -"[Below(64)];
    }
    return XoString(text.c_str(), 1);
  }

  /// Stored bytes of a fixed row. A byte that says whether there is a value is 0 or 1.
  ByteList Stored(int row, unsigned index) {
    unsigned const size = Row(row).NullSizeGet(1);
    ByteList disk = Bytes(size);
    static constexpr unsigned char kEdges[] = {0x00, 0xFF, 0x7F, 0x80, 0x01};
    if (index < std::size(kEdges)) disk.assign(size, kEdges[index]);
    if (IsNullNumber(row)) disk.front() = index % 5 == 4 ? 1 : 0;
    if (index >= kFirstValid && IsDated(row)) MakeValid(row, disk);
    return disk;
  }

  static bool IsNullNumber(int row) { return (row >= 28 && row <= 38) || row == 44 || row == 45; }
  static bool IsDated(int row) {
    return row == XoDATE_T || row == XoTIME_T || (row >= 22 && row <= 24) || row == XoDATIME_T ||
           row == XoDATIME_N_T || row == XoTIMESPAN_T;
  }

  /// Fields of a day and a time of day that exist.
  void MakeValid(int row, ByteList& disk) {
    std::size_t at = 0;
    auto const put = [&](unsigned value) { disk[at++] = static_cast<unsigned char>(value); };
    if (row == 23) {
      put(0);
      put(0);
    } else if (row != XoTIME_T) {
      put(208 + Below(40));
      put(7);
      put(1 + Below(12));
      put(1 + Below(28));
    }
    if (row == XoDATE_T || row == 22) return;
    if (row == 24) {
      put(0);
      put(0);
    }
    put(Below(24));
    put(Below(60));
    put(Below(60));
    if (row == 23 || row == 24) put(0);
    if (row == XoDATIME_N_T || row == XoTIMESPAN_T) disk[at + 3] &= 0x1F;
  }

  unsigned SizeOf(int row, void* value, unsigned char form) {
    return manager.DiskLenGet(Id(row), value, form, 1, kMemory);
  }

  ByteList Store(int row, void* value, unsigned char form) {
    ByteList disk(SizeOf(row, value, form) + 8, 0xEE);
    unsigned const size = manager.Store(Id(row), disk.data(), value, form, 1);
    EXPECT_LE(size, disk.size()) << row;
    disk.resize(size);
    return disk;
  }

  ByteList Translated(int row, void* value, unsigned char form) {
    ByteList disk(600, 0xEE);
    unsigned const size =
        manager.Translate(Id(row), disk.data(), form, 600, value, kMemory, Row(row).MemLen, 1);
    EXPECT_LE(size, disk.size()) << row;
    disk.resize(size);
    return disk;
  }

  int Compare(int row, void* a, void* b, unsigned char form) {
    return manager.Cmp(Id(row), a, b, kPlain, 1, form);
  }

  /// With the lengths told, so that nothing behind a record is looked at.
  int CompareRecords(int row, ByteList& a, ByteList& b, unsigned char form) {
    int status = 0;
    return manager.Cmp(Id(row), static_cast<unsigned>(a.size()), a.data(),
                       static_cast<unsigned>(b.size()), b.data(), kPlain, 1, form, status);
  }

  unsigned Hash(int row, void* data, unsigned char form) {
    int error = 0;
    return manager.Hash(Id(row), 0, data, 1, form, error);
  }

  /// Rows that may differ, and why.
  using Exceptions = std::map<int, char const*>;

  /// Why stored values of a row order otherwise than values in memory.
  static Exceptions OrderExceptions(unsigned char form) {
    Exceptions rows = {
        {XoREF_T, "leaves the database in memory out, and the class on disk"},
        {D_DATE_T, "goes by the number of the day in memory, and by unsigned fields on disk"},
        {D_TIME_T, "goes by the moment in memory, and by the fields with the zone first on disk"},
        {D_TIMESTAMP_T, "has both"},
    };
    if (FormNibble(form) == FormBig) {
      rows[XoOBJID_T] = "reads the bytes on disk from the last one down";
      rows[XoCLID_T] = "reads the bytes of each number on disk from the second one down";
    }
    return rows;
  }

  static Exceptions HashExceptions(unsigned char form) {
    if (FormNibble(form) == FormLittle) {
      return {{XoSEAL_T, "reads the words, whose bytes are always swapped, as they lie"}};
    }
    return {{XoDATE_T, "reads the year as it lies"},
            {XoBOOLEAN_T, "extends the byte by its sign only where it is read as it lies"}};
  }

  /// Rows whose default format does not show everything, and `more`.
  static Exceptions WithText(Exceptions more) {
    Exceptions rows = {
        {XoDATE_T, "takes no day that is none"},
        {XoTIME_T, "takes no time that is none"},
        {XoBLOB_T, "writes the length alone"},
        {XoDATIME_T, "takes no day or time that is none"},
        {D_DATE_T, "leaves the year out"},
        {D_TIME_T, "leaves the zone and the hundredths out"},
        {D_TIMESTAMP_T, "leaves the year, the zone and the hundredths out"},
        {D_INTERVAL_T, "cuts days to a byte and fractions away"},
        {XoDATIME_N_T, "takes no day or time that is none"},
        {XoTIMESPAN_T, "writes a span in the usual units alone"},
    };
    rows.merge(more);
    return rows;
  }

  using Agreement = std::function<bool(int row, void* first, void* second)>;
  /// Whether two ways agree on all values of all rows but those in `exceptions`, and differ on some
  /// value of each of those.
  void ExpectAgreement(Agreement const& agree, Exceptions const& exceptions) {
    for (int row = 0; row < kRows; ++row) {
      Values values(row, kSamples);
      Fill(row, values);
      int different = 0;
      for (unsigned i = 0; i < kSamples; ++i) {
        void* const first = values[i];
        void* const second = values[Below(kSamples)];
        if (agree(row, first, second)) continue;
        ++different;
        if (exceptions.count(row) == 0) {
          ADD_FAILURE() << kExpectedRows[row].name << " (" << row << "), value " << i;
          break;
        }
      }
      auto const known = exceptions.find(row);
      if (known != exceptions.end()) {
        EXPECT_NE(different, 0) << kExpectedRows[row].name << " agrees, against: " << known->second;
      }
    }
  }
};

TEST_F(RowWalk, StoreWritesAsManyBytesAsTheSizeSays) {
  for (unsigned char const form : kRecordForms) {
    ExpectAgreement(
        [&](int row, void* value, void*) {
          return Store(row, value, form).size() == SizeOf(row, value, form);
        },
        {});
  }
}

TEST_F(RowWalk, LoadGivesBackWhatStoreWrote) {
  for (unsigned char const form : kRecordForms) {
    ExpectAgreement(
        [&](int row, void* value, void*) {
          ByteList disk = Store(row, value, form);
          Values back(row, 1);
          unsigned const read = manager.Load(Id(row), back[0], disk.data(), form, 1);
          return read == disk.size() && Compare(row, back[0], value, kMemory) == 0 &&
                 Store(row, back[0], form) == disk;
        },
        {{XoSTRING_T, "an empty text loads as no text, which comes before one in memory"}});
  }
}

TEST_F(RowWalk, TranslateToDiskWritesWhatStoreWrites) {
  for (unsigned char const form : kRecordForms) {
    ExpectAgreement([&](int row, void* value,
                        void*) { return Translated(row, value, form) == Store(row, value, form); },
                    {});
  }
}

TEST_F(RowWalk, TranslateToMemoryGivesBackWhatLoadDoes) {
  for (unsigned char const form : kRecordForms) {
    ExpectAgreement(
        [&](int row, void* value, void*) {
          ByteList disk = Store(row, value, form);
          Values loaded(row, 1), translated(row, 1);
          unsigned const size = static_cast<unsigned>(disk.size());
          manager.Load(Id(row), loaded[0], disk.data(), form, 1);
          return manager.Translate(Id(row), translated[0], kMemory, Row(row).MemLen, disk.data(),
                                   form, size, 1) == size &&
                 Compare(row, loaded[0], translated[0], kMemory) == 0;
        },
        {});
  }
}

TEST_F(RowWalk, BothByteOrdersHoldOneValue) {
  ExpectAgreement(
      [&](int row, void* value, void*) {
        ByteList little = Store(row, value, FormLittle), big = Store(row, value, FormBig);
        Values first(row, 1), second(row, 1);
        manager.Load(Id(row), first[0], little.data(), FormLittle, 1);
        manager.Load(Id(row), second[0], big.data(), FormBig, 1);
        return little.size() == big.size() && Compare(row, first[0], second[0], kMemory) == 0;
      },
      {});
}

TEST_F(RowWalk, ValuesOrderInEachRecordAsInMemory) {
  for (unsigned char const form : kDiskForms) {
    ExpectAgreement(
        [&](int row, void* first, void* second) {
          ByteList a = Translated(row, first, form), b = Translated(row, second, form);
          int const inMemory = Sign(Compare(row, first, second, kMemory));
          return Sign(CompareRecords(row, a, b, form)) == inMemory &&
                 Sign(Compare(row, second, first, kMemory)) == -inMemory;
        },
        OrderExceptions(form));
  }
}

TEST_F(RowWalk, HashIsThatOfTheValueInEachForm) {
  for (unsigned char const form : kRecordForms) {
    ExpectAgreement(
        [&](int row, void* value, void*) {
          ByteList disk = Store(row, value, form);
          return Hash(row, disk.data(), form) == Hash(row, value, kMemory);
        },
        HashExceptions(form));
  }
}

TEST_F(RowWalk, EqualValuesHashAlike) {
  ExpectAgreement(
      [&](int row, void* value, void*) {
        Values copy(row, 1);
        Row(row).Assignment(copy[0], value, 1, 0);
        return Compare(row, copy[0], value, kMemory) == 0 &&
               Hash(row, copy[0], kMemory) == Hash(row, value, kMemory);
      },
      {});
}

TEST_F(RowWalk, AFileTellsTheSizeOfWhatIsStored) {
  for (unsigned char const form : kRecordForms) {
    ExpectAgreement(
        [&](int row, void* value, void*) {
          ByteList const disk = Store(row, value, form);
          MemFile file(disk.data(), static_cast<unsigned>(disk.size()));
          return manager.DiskLenGetFromMemFile(Id(row), &file, form, 1) == disk.size();
        },
        {});
  }
}

TEST_F(RowWalk, CopiesAndAssignmentsEqualTheirSource) {
  ExpectAgreement(
      [&](int row, void* first, void* second) {
        unsigned const size = Row(row).MemLen;
        Values assigned(row, 3), filled(row, 3);
        Row(row).Assignment(assigned.All(), first, 1, 0);
        Row(row).Assignment(filled.All(), second, 3, 1);
        bool same = Compare(row, assigned[0], first, kMemory) == 0;
        for (unsigned i = 0; i < 3; ++i)
          same = same && Compare(row, filled[i], second, kMemory) == 0;

        std::vector<std::max_align_t> raw(3 * size / sizeof(std::max_align_t) + 1);
        auto* const place = reinterpret_cast<unsigned char*>(raw.data());
        Row(row).Copy(place, filled.All(), 3, 0);
        for (unsigned i = 0; i < 3; ++i) {
          same = same && Compare(row, place + i * size, second, kMemory) == 0;
        }
        Row(row).Destructor(place, 3, 0);
        Row(row).Copy(place, first, 3, 1);
        for (unsigned i = 0; i < 3; ++i) {
          same = same && Compare(row, place + i * size, first, kMemory) == 0;
        }
        Row(row).Destructor(place, 3, 0);
        return same;
      },
      {});
}

TEST_F(RowWalk, WhatIsPrintedScansBack) {
  ExpectAgreement(
      [&](int row, void* value, void*) {
        XoString text;
        manager.PrintToXoString(Id(row), text, value, nullptr, 1);
        Values back(row, manager.DefaultValue(Id(row), 1, 0), 1);
        manager.ScanFromXoString(Id(row), back[0], text, nullptr, 1);
        return Compare(row, back[0], value, kMemory) == 0;
      },
      WithText({{XoBOOLEAN_T, "prints TRUE only of 1"}}));
}

TEST_F(RowWalk, DaysAndTimesThatExistScanBack) {
  for (int const row : {XoDATE_T, XoTIME_T, XoDATIME_T}) {
    Values values(row, kSamples), back(row, 1);
    Fill(row, values);
    for (unsigned i = kFirstValid; i < kSamples; ++i) {
      XoString text;
      manager.PrintToXoString(Id(row), text, values[i], nullptr, 1);
      manager.ScanFromXoString(Id(row), back[0], text, nullptr, 1);
      EXPECT_EQ(Compare(row, back[0], values[i], kMemory), 0)
          << kExpectedRows[row].name << ": " << static_cast<char*>(text.text);
    }
  }
}

TEST_F(RowWalk, WhatIsConvertedConvertsBack) {
  ExpectAgreement(
      [&](int row, void* value, void*) {
        XoTypeConvertData* const strings = manager.ConvertTo(Id(row), value, 1);
        void* const back = manager.ConvertFrom(Id(row), strings, 1);
        bool const same = Compare(row, back, value, kMemory) == 0;
        manager.Delete(Id(row), back, 1);
        delete strings;
        return same;
      },
      WithText({{XoBOOLEAN_T, "converts every other number than 0 to 1"},
                {XoU8B_T, "reads by way of a signed number"},
                {XoNULL_U8B_T, "reads by way of a signed number"}}));
}

TEST_F(RowWalk, TheSizeOfNullIsThatOfAStoredNull) {
  ExpectAgreement(
      [&](int row, void* value, void*) {
        manager.SetNullValue(Id(row), value);
        return Store(row, value, FormLittle).size() == Row(row).NullSizeGet(1);
      },
      {{XoBLOB_T, "counts the length of the element, not that of the record"}});
}

TEST_F(RowWalk, ANullIsNullWhereTheRowHasOne) {
  ExpectAgreement(
      [&](int row, void* value, void*) {
        manager.SetNullValue(Id(row), value);
        return (manager.IsNullValue(Id(row), value) != 0) ==
               (manager.SupportsNullValue(Id(row)) != 0);
      },
      {});
}

TEST_F(RowWalk, DefaultsAreNullOnlyWhereAskedFor) {
  for (int row = 0; row < kRows; ++row) {
    Values plain(row, manager.DefaultValue(Id(row), 3, 0), 3);
    Values null(row, manager.DefaultValue(Id(row), 3, 1), 3);
    ASSERT_NE(plain.All(), nullptr) << row;
    ASSERT_NE(null.All(), nullptr) << row;
    for (unsigned i = 0; i < 3; ++i) {
      EXPECT_EQ(Compare(row, plain[i], plain[0], kMemory), 0) << row;
      EXPECT_EQ(manager.IsNullValue(Id(row), null[i]) != 0, manager.SupportsNullValue(Id(row)) != 0)
          << row;
    }
  }
}

TEST_F(RowWalk, AStepGivesTheNextGreaterValueInMemoryAndOnDisk) {
  ExpectAgreement(
      [&](int row, void* value, void*) {
        Values next(row, 1);
        Row(row).Assignment(next[0], value, 1, 0);
        int const result = manager.GetValue(Id(row), next[0], 1, kMemory, kNextValue);
        int const order = Compare(row, next[0], value, kMemory);
        if (result != 0) return order == 0;
        ByteList disk = Store(row, value, FormLittle);
        disk.resize(disk.size() + 8);
        Values stepped(row, 1);
        bool const stored = manager.GetValue(Id(row), disk.data(), 1, FormLittle, kNextValue) == 0;
        manager.Load(Id(row), stepped[0], disk.data(), FormLittle, 1);
        return stored && order > 0 && Compare(row, stepped[0], next[0], kMemory) == 0;
      },
      {});
}

}  // namespace
}  // namespace xo::test
