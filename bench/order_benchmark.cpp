#include <benchmark/benchmark.h>
#include <unicode/coleitr.h>
#include <unicode/locid.h>
#include <unicode/tblcoll.h>

#include <memory>
#include <string>
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

/// The orders of a text, as a comparison reads them: look-up, variant, contraction, expansion.
template <class Unit>
void ReadOrders(benchmark::State& state, Sample const& sample, unsigned char codeSet) {
  XoCodeSet const& set = *XoLanguageContext::QueryCodeSet(codeSet);
  OrderTable const& table = *set.orderTable;
  unsigned char const variants = XoLanguageContext::QueryLanguage(sample.language)->variantFlag;
  std::basic_string<Unit> text;
  for (char16_t const* each = sample.text; *each != 0; ++each) {
    text += static_cast<Unit>(set.MapCharacter(*each, 253));
  }
  std::size_t const size = text.size();
  auto const unit = [data = text.c_str()](std::size_t place) {
    return static_cast<unsigned short>(sizeof(Unit) == 1 ? data[place] & 0xFF : data[place]);
  };
  for (auto _ : state) {
    unsigned sum = 0;
    for (std::size_t place = 0; place < size; ++place) {
      unsigned short const code = unit(place);
      CharOrderEntry const* entry = sizeof(Unit) == 1
                                        ? table.FindNarrow(static_cast<unsigned char>(code))
                                        : table.FindWide(code);
      // The text ends in a zero, which contracts with nothing.
      if (entry->IsPlain(variants, unit(place + 1))) {
        sum += entry->order;
        continue;
      }
      if (entry->order == 0) {
        sum += code;
        continue;
      }
      if (entry->MayVary(variants)) {
        CharOrderEntry const* const own = entry->Variant(sample.language);
        if (own != nullptr) entry = own;
      }
      while (entry->HasContractions() && place + 1 < size) {
        CharOrderEntry const* const longer = entry->Contraction(unit(place + 1));
        if (longer == nullptr) break;
        entry = longer;
        ++place;
      }
      sum += entry->order;
      if (entry->HasExpansion()) {
        XoWCharList const& more = entry->Expansion();
        for (unsigned index = 0; index < more.count; ++index) sum += more.values[index];
      }
    }
    benchmark::DoNotOptimize(sum);
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
