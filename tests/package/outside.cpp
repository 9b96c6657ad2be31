// Compiles with nothing but the public header, and uses every public name.
#include <cstdio>
#include <cstring>
#include <xotypemgr.hpp>

namespace {

int failures = 0;

void Expect(bool held, char const* what) {
  if (held) return;
  std::printf("failed: %s\n", what);
  ++failures;
}

void UseTypes() {
  static_assert(sizeof(o_char) == 1 && sizeof(o_u1b) == 1 && sizeof(o_2b) == 2);
  static_assert(sizeof(o_u2b) == 2 && sizeof(o_4b) == 4 && sizeof(o_u4b) == 4);
  static_assert(sizeof(o_8b) == 8 && sizeof(o_u8b) == 8 && sizeof(o_float) == 4);
  static_assert(sizeof(o_double) == 8 && sizeof(BlockId) == 4 && sizeof(NextValueCode) == 1);
  static_assert(FoldTypeId(XoRES_T) == 46);
  static_assert(FormLittle == 1 && FormBig == 2 && FormMemory == 8 && FormatIndexKey == 0x80);
  static_assert(FormatNativeCodeSet == 0x40 && FormatDropCodeSet == 0x20);
  static_assert(CmpOpNoWildcards == 0x10 && CmpOpPrefixResult == 0x80 && CmpOpBinaryOrder == 0x100);
  static_assert(ERR_TM_NOT_SUPPORTED == -2999 && ERR_TM_NO_NEXT_VALUE == 2091);
  static_assert(ERR_TM_LENGTH_EXCEEDED == 2101 && ERR_TM_FIRST_KEY_CUT == 2114);
  static_assert(ERR_TM_SECOND_KEY_CUT == 2115);
}

/// Operations of the manager that the rest of this program does not call.
void NameOperations() {
  using Manager = XoTypeMgr;
  int (Manager::*compareWithStatus)(char, unsigned, void*, unsigned, void*, unsigned short,
                                    unsigned, unsigned char, int&) const = &Manager::Cmp;
  int (Manager::*compare)(char, void*, void*, unsigned short, unsigned, unsigned char) const =
      &Manager::Cmp;
  Expect(compareWithStatus != nullptr && compare != nullptr, "comparisons have these signatures");
  auto const named = [](auto... operations) { return (... && (operations != nullptr)); };
  Expect(named(&Manager::SetFactory, &Manager::FactoryLevel, &Manager::DefaultValue, &Manager::Load,
               &Manager::DiskLenGet, &Manager::Translate, &Manager::EvalAndBound,
               &Manager::IsNullValue, &Manager::LoadPtrGet, &Manager::StorePtrGet,
               &Manager::DestructorPtrGet, &Manager::AssignmentPtrGet, &Manager::CopyPtrGet,
               &Manager::IsNullPtrGet, &Manager::SetNullPtrGet, &Manager::ComparePtrGet,
               &Manager::MemLenGet, &Manager::IsFixed, &Manager::GetArrayElement, &Manager::NameGet,
               &Manager::TypeIdNameGet, &Manager::Name2XoTypeId, &Manager::IsValidType,
               &Manager::SupportsCapability, &Manager::SupportsNullValue, &Manager::ExchangeFormat,
               &Manager::ExchangePrintToXoStringFunc, &Manager::ExchangeScanFromXoStringFunc,
               &Manager::ExchangeXoTypeCmpFunc, &Manager::DiskIsNullValue),
         "operations are there");
}

void UseManager() {
  ___XoTypemgrContext(1);
  XoTypeMgr* const manager = DefaultTypeMgr(nullptr);
  Expect(manager != nullptr && manager == DefaultTypeManager, "the start makes a default manager");
  Expect(CurrentTypeTable[47] == nullptr && OlderTypeTable[28] == nullptr, "tables end in null");

  XCompare* const comparisons[] = {CharCompare,     ByteCompare,  ShortCompare, WordCompare,
                                   LongCompare,     DwordCompare, IntCompare,   FloatCompare,
                                   UnsignedCompare, O_8BCompare,  O_U8BCompare, DoubleCompare};
  char const types[] = {Xo1B_T,  XoU1B_T,   Xo2B_T,       XoU2B_T, Xo4B_T,  XoU4B_T,
                        XoINT_T, XoFLOAT_T, XoUNSIGNED_T, Xo8B_T,  XoU8B_T, XoDOUBLE_T};
  for (unsigned index = 0; index < sizeof types; ++index) {
    Expect(manager->CmpFuncPtrGet(types[index]) == comparisons[index], "rows compare as exported");
  }

  void* const values = manager->Create(Xo4B_T, 3);
  manager->ConstructorPtrGet(Xo4B_T)(values, 3, 0);
  Expect(manager->GetValue(Xo4B_T, values, 3, FormMemory, 'N') == 0, "a number has a successor");
  unsigned char disk[12];
  Expect(manager->Store(Xo4B_T, disk, values, FormBig, 3) == 12 && disk[3] == 1, "values store");
  int error = -1;
  Expect(manager->Hash(Xo4B_T, 12, disk, 3, FormBig, error) == 1103515245 && error == 0, "hash");
  MemFile file(disk, sizeof disk);
  unsigned length = 2;
  Expect(file.Seek(0, 1, &length, 0) == disk && length == 12, "a file is looked at in place");
  Expect(manager->DiskLenGetFromMemFile(Xo4B_T, &file, FormBig, 3) == 12, "size from a file");
  manager->Delete(Xo4B_T, values, 3);

  ___XoTypemgrContext(0);
  Expect(DefaultTypeManager == nullptr, "the stop frees the default manager");
}

void UseBaseServices() {
  unsigned char byte = 1, target[8] = {};
  unsigned char const source[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  using Store = unsigned(void*, void const*, unsigned char, unsigned);
  Store* const stores[] = {CharStore,  ShortStore,    LongStore,    IntStore,    IntLoad,
                           FloatStore, UnsignedStore, UnsignedLoad, DoubleStore, O_8BStore};
  for (Store* const store : stores) {
    Expect(store(target, source, FormLittle, 1) != 0 && target[0] == byte, "helpers store");
  }
  using StoreOne = unsigned(void*, void const*, unsigned char);
  StoreOne* const ones[] = {ShortStoreOne, LongStoreOne, O_8BStoreOne};
  for (StoreOne* const one : ones) Expect(one(target, source, FormBig) != 0, "helpers store one");
  using SizeGet = unsigned(void const*, unsigned char, unsigned char, unsigned);
  SizeGet* const sizes[] = {CharSizeGet,  ShortSizeGet,  LongSizeGet, IntSizeGet,
                            FloatSizeGet, DoubleSizeGet, O_8BSizeGet};
  for (SizeGet* const size : sizes) Expect(size(nullptr, 8, 1, 2) != 0, "helpers tell sizes");
  using NullSizeGet = unsigned(unsigned);
  NullSizeGet* const nullSizes[] = {CharNullSizeGet, ShortNullSizeGet, LongNullSizeGet,
                                    IntNullSizeGet,  FloatNullSizeGet, DoubleNullSizeGet,
                                    O_8BNullSizeGet};
  for (NullSizeGet* const size : nullSizes) Expect(size(2) != 0, "helpers tell null sizes");

  XoPlatform quiet{};
  quiet.assertFailed = [](char const*, char const*, int line) { return line; };
  quiet.memoryHandler = [](unsigned long long size) { return static_cast<int>(size); };
  XoPlatform const before = XoExchangePlatform(quiet);
  Expect(XOLA_assert("x", "y", 7) == 7 && XoCallMemoryHandler(8) == 8, "hooks are in force");
  XoExchangePlatform(before);

  bdate date{};
  btime time{};
  int fraction = -1;
  bksgetdate(&date);
  bksgettime(&time);
  bksgetsystemtime(&time, &date);
  bksGetHiresTime(date, time, fraction);
  bksGetHiresTimeUTC(date, time, fraction);
  Expect(date.year > 2000 && fraction >= 0 && time.utcOffset == 0, "the clock runs");
  Expect(bksgettimezone() != kTimeZoneUnknown, "the zone is known");

  XoMemoryConfig config;
  config.Set("key", 5, "section");
  DefaultConfig(&config);
  XoConfigSection const section{"section", nullptr};
  unsigned short value = 0;
  Expect(DefaultConfig(nullptr)->Lookup("key", &value, &section) == 1 && value == 5,
         "configuration");
}

void UseLanguages() {
  XoCodeSet const* const unicode = XoLanguageContext::QueryCodeSet(253);
  Expect(unicode->MapCharacter(0x80, 15) == 0x20AC && unicode->HasCharacter('a') != 0, "mapping");
  OrderTable const* const orders = unicode->orderTable;
  CharOrderEntry const* const entry = orders->GetEntry(0xDF);
  Expect(entry == orders->Find(0xDF) && entry->HasExpansion(), "sort orders");
  Expect(entry->Expansion().count == 1 && *entry->GroupOverride() == 2, "an expansion");
  XoWCharList const list{1, {7}};
  unsigned short value = 0;
  Expect(list.Get(0, &value) == 0 && value == 7 && list.Get(1, &value) == -2005, "a list");
  XoUnicodeProps const* const forms = unicode->GetUnicodeProps(0xDF, 0);
  Expect(forms->upperCase == 'S' && forms->upperExpansion.count == 1, "case forms");
  Expect(XoLanguageContext::QueryLanguage(1)->group == unicode->CodeSetGroup(1), "a language");
  Expect(XoLanguageContext::GetCollationVersion() != 0 &&
             XoLanguageContext::GetCollationFingerprint() ==
                 XoLanguageContext::ComputeCollationFingerprint(),
         "the collation's version");
}

void UseIdentity() {
  unsigned numbers[6];
  char const* texts[5];
  Expect(
      std::strcmp(XoDescribeDll(&numbers[0], &numbers[1], &numbers[2], &numbers[3], &numbers[4],
                                &texts[0], &texts[1], &texts[2], &numbers[5], &texts[3], &texts[4]),
                  "Xolara Typemanager") == 0,
      "the banner");
  GetXoTypeMgrInfo(nullptr, nullptr, &texts[0], nullptr, nullptr);
  Expect(std::strcmp(texts[0], "Xolara Typemanager 12.0.2.248.0 ") == 0, "the description");
  Expect(XoCheckDll(0) == 0 && CheckXoVersionNumber(12, 0, 2, 248, 0, 0) == 0, "versions match");
  Expect(&___XoTypeMgrOptions() == &XoTypeMgrOptions, "the option word");
  XoLanguageContext::SetDefaultLanguage(1);
  XoLanguageContext::SetDefaultCodeSet(XoLanguageContext::GetDefault8CodeSet());
  XoLanguageContext::SetDefaultCmpOp(XoLanguageContext::GetDefaultCmpOp());
  Expect(XoLanguageContext::GetDefaultCodeSet() == XoLanguageContext::GetNativeCodeSet() &&
             XoLanguageContext::GetDefault16CodeSet() == 253,
         "the code sets");
  Expect(XoLanguageContext::GetDefaultLanguage() == 1, "the language context");
  ___XoI18NContext(0);
}

class Doubling final : public XoCharOperation {
 public:
  XoChar Transform(XoChar const& character, XoStringIterator&) override { return character; }
};

void UseStrings() {
  XoString text(
      "Stra\xDF"
      "e");
  text << ' ' << 12 << 1.5 << "x";
  Expect(text.Len() == 13 && text.Find("12") == 7, "strings are built and searched");
  text.ToUpper().Trim().ReplaceAll('S', 's').Cut(0, 1).Insert("S", 0).Replace("T", 1);
  Doubling same;
  Expect(text.Transform(same).Copy(0, 4) == "STRA", "strings are edited");
  Expect(text.Left(2) < text.Right(2) || text[0].IsAlpha() != 0, "strings compare");
  Expect(XoString("*").EqualsIgnoreLanguage("*") != 0, "without regard to language");
  Expect(int(XoString("0x10")) == 16 && XoString::EmptyString().IsEmpty() != 0, "numbers are read");
  XoString item;
  XoString list("a, b");
  unsigned short place = 0;
  Expect(XoSplitList(list, item, ",", place) == 0 && item == "a", "lists are split");
  Expect(XoTypeMgr::GetNullPrintString() == "{NULL}", "null has a text");
  Expect(&XoTypeMgr::GetNullPrintString() == &NullPrintString, "which stands in one place");
  XoTypeMgr::SetNullPrintString("{NULL}");
  XoString::SetAsterisk(XoChar('*'));
  XoString::SetQuestion(XoChar('?'));
  XoString::SetEscape(XoChar('\\'));
}

void UseTextFunctions() {
  Expect(XoStrCmp(1, 1, "abc", 1, 1, "a*", 0) == 0, "patterns match");
  static_assert(kCmpNoWildcards == 0x10 && kCmpIgnoreCase == 0x20 && kCmpIgnoreAccents == 0x40);
  static_assert(kCmpSkipSpaces == 0x80 && kCmpPlainOrders == 0x100 && kCmpSkipSymbols == 0x200);
  XoStringIterator first("a");
  XoStringIterator second("b");
  Expect(CompareOrdersOnly(first, second, 1) < 0, "orders compare");
  Expect(BinaryCompare("a", "b", 0) < 0 && BinaryWildcardMatch("a?", "ab", -1) == 0, "bytes too");
  Expect(FindWildcard(1, 1, "ab*", 1, 10, nullptr, 1) == 2, "wildcards are found");
  Expect(AsteriskOrder() == 159 && QuestionOrder() == 122 && EscapeOrder() == 160, "their orders");
  XoStringIterator estimated("abc");
  Expect(StringPrefixEstimate(estimated, 3) > 0 && OrderKey(0, 2) == 0, "prefixes are estimated");
  XoString name;
  unsigned char character = 0;
  unsigned short digit = 0;
  unsigned short expand = 0;
  Expect(XoConvertOrderToString(13, 2, name) == 0, "orders have names");
  Expect(XoConvertOrderToChar(16138, 2, character) == 0 && character == '1', "and characters");
  Expect(XoExtractDigitFromOrder(16138, digit, expand) == 0 && digit == 1, "and digits");
  Expect(XoExtractSymbolFromOrder(159, digit) == 0 && digit == 79, "and numbers of symbols");
  Expect(HashString(1, 1, "a") == HashString(1, 1, "a"), "texts are hashed");
  Expect(HashXoString(name) != HashXoString7("x"), "and strings");
  char bytes[8] = {};
  char* encoded = nullptr;
  int size = 0;
  unsigned short wide[4] = {};
  Expect(XoMultiByte2WChar(wide, "a", 1) == 1 && XoWChar2MultiByte(bytes, L'a') == 1, "UTF-8");
  Expect(XoMultiByteStr2WCharStr(wide, 4, "ab", 2) == 2, "UTF-8 in units");
  Expect(XoMBS2XoString("ab", name, 2) == 2 && XoMBSLength(name) == 2, "UTF-8 in strings");
  Expect(XoMultiByteString2XoString("ab", name, 2) == 2, "by its other name");
  Expect(XoString2XoMBS(name, bytes, 8) == 2, "and out of them");
  Expect(XoString2MultiByteString(name, encoded, size) == 2 && size == 3, "with memory of its own");
  delete[] encoded;
}

}  // namespace

int main() {
  UseTypes();
  NameOperations();
  UseManager();
  UseBaseServices();
  UseLanguages();
  UseStrings();
  UseTextFunctions();
  UseIdentity();
  return failures == 0 ? 0 : 1;
}
