#include <benchmark/benchmark.h>
#include <unicode/coleitr.h>
#include <unicode/locid.h>
#include <unicode/tblcoll.h>

#include <memory>
#include <string>
#include <type_traits>
#include <xotypemgr.hpp>

namespace {

/// A sentence of each script and language; one iteration reads all orders of one of them.
struct Sample {
  char const* name;
  unsigned char language;
  unsigned char narrowSet;
  char16_t const* text;
};

constexpr Sample kEnglish{
    "English", 1, 1,
    u"All human beings are born free and equal in dignity and rights. They are endowed with reason "
    u"and conscience and should act towards one another in a spirit of brotherhood."};
constexpr Sample kGerman{
    "German", 2, 1,
    u"Alle Menschen sind frei und gleich an Würde und Rechten geboren. Sie sind mit Vernunft und "
    u"Gewissen begabt und sollen einander im Geiste der Brüderlichkeit begegnen."};
constexpr Sample kCzech{
    "Czech", 22, 2,
    u"Všichni lidé rodí se svobodní a sobě rovní co do důstojnosti a práv. Jsou nadáni rozumem a "
    u"svědomím a mají spolu jednat v duchu bratrství."};
constexpr Sample kGreek{
    "Greek", 37, 7,
    u"Όλοι οι άνθρωποι γεννιούνται ελεύθεροι και ίσοι στην αξιοπρέπεια και τα δικαιώματα. Είναι "
    u"προικισμένοι με λογική και συνείδηση."};
constexpr Sample kRussian{
    "Russian", 38, 14,
    u"Все люди рождаются свободными и равными в своем достоинстве и правах. Они наделены разумом и "
    u"совестью и должны поступать в отношении друг друга в духе братства."};

/// A text in the codes of a table, as code after code. It ends in a zero, which contracts with
/// nothing.
template <class Unit>
struct Codes {
  Unit const* data;
  std::size_t size;

  unsigned short operator[](std::size_t place) const {
    return static_cast<std::make_unsigned_t<Unit>>(data[place]);
  }
};

CharOrderEntry const* Find(OrderTable const& table, char code) {
  return table.FindNarrow(static_cast<unsigned char>(code));
}

CharOrderEntry const* Find(OrderTable const& table, char16_t code) { return table.FindWide(code); }

/// Sum of the orders that were read, and the place behind them.
struct Read {
  unsigned sum;
  std::size_t end;
};

/// The orders of an entry that is not plain, found at `place`: contraction and expansion.
template <class Unit>
[[gnu::noinline]] Read ReadLonger(CharOrderEntry const* entry, Codes<Unit> text,
                                  std::size_t place) {
  if (entry->order == 0) return {text[place], place + 1};
  for (++place; place < text.size && entry->HasContractions(); ++place) {
    CharOrderEntry const* const longer = entry->Contraction(text[place]);
    if (longer == nullptr) break;
    entry = longer;
  }
  unsigned sum = entry->order;
  if (entry->HasExpansion()) {
    XoWCharList const& more = entry->Expansion();
    for (unsigned index = 0; index < more.count; ++index) sum += more.values[index];
  }
  return {sum, place};
}

/// The orders of a text, as a comparison reads them: look-up, variant, contraction, expansion.
template <class Unit>
[[gnu::noinline]] unsigned ReadAll(OrderTable const& orders, XoLanguage const& language,
                                   Codes<Unit> text) {
  OrderTable const table = orders;  // a copy, so that the loop has its addresses in registers
  unsigned char const number = language.number;
  unsigned char const variants = language.variantFlag;
  unsigned sum = 0;
  for (std::size_t place = 0; place < text.size;) {
    unsigned short const next = text[place + 1];
    CharOrderEntry const* entry = Find(table, text.data[place]);
    if (!entry->IsPlain(variants, next)) {
      if (CharOrderEntry const* const own = entry->Variant(number)) entry = own;
      if (!entry->IsPlain(0, next)) {
        Read const longer = ReadLonger(entry, text, place);
        sum += longer.sum;
        place = longer.end;
        continue;
      }
    }
    sum += entry->order;
    ++place;
  }
  return sum;
}

template <class Unit>
void ReadOrders(benchmark::State& state, Sample const& sample, unsigned char codeSet) {
  XoCodeSet const& set = *XoLanguageContext::QueryCodeSet(codeSet);
  XoLanguage const& language = *XoLanguageContext::QueryLanguage(sample.language);
  std::basic_string<Unit> text;
  for (char16_t const* each = sample.text; *each != 0; ++each) {
    text += static_cast<Unit>(set.MapCharacter(*each, 253));
  }
  Codes<Unit> const codes{text.c_str(), text.size()};
  for (auto _ : state) {
    benchmark::DoNotOptimize(ReadAll(*set.orderTable, language, codes));
  }
  state.counters["ns a character"] = benchmark::Counter(
      static_cast<double>(text.size()) * 1e-9,
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void ReadIcuElements(benchmark::State& state, Sample const& sample) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale const locale =
      icu::Locale::forLanguageTag(XoLanguageContext::QueryLanguage(sample.language)->tag, status);
  std::unique_ptr<icu::Collator> const collator(icu::Collator::createInstance(locale, status));
  auto const& rules = dynamic_cast<icu::RuleBasedCollator const&>(*collator);
  icu::UnicodeString const text(sample.text);
  std::unique_ptr<icu::CollationElementIterator> const elements(
      rules.createCollationElementIterator(text));
  for (auto _ : state) {
    unsigned sum = 0;
    elements->reset();
    for (int32_t element = elements->next(status);
         element != icu::CollationElementIterator::NULLORDER; element = elements->next(status)) {
      sum += static_cast<unsigned>(element);
    }
    benchmark::DoNotOptimize(sum);
  }
}

void Register(Sample const& sample) {
  std::string const name = std::string("order look-up, ") + sample.name;
  auto const narrow = [&sample](benchmark::State& state) {
    ReadOrders<char>(state, sample, sample.narrowSet);
  };
  auto const wide = [&sample](benchmark::State& state) {
    ReadOrders<char16_t>(state, sample, 253);
  };
  auto const icu = [&sample](benchmark::State& state) { ReadIcuElements(state, sample); };
  benchmark::RegisterBenchmark((name + " in 8 bits/ours").c_str(), narrow);
  benchmark::RegisterBenchmark((name + " in 8 bits/ICU").c_str(), icu);
  benchmark::RegisterBenchmark((name + " in Unicode/ours").c_str(), wide);
  benchmark::RegisterBenchmark((name + " in Unicode/ICU").c_str(), icu);
}

[[maybe_unused]] int const registered = [] {
  for (Sample const* const sample : {&kEnglish, &kGerman, &kCzech, &kGreek, &kRussian}) {
    Register(*sample);
  }
  return 0;
}();

}  // namespace
