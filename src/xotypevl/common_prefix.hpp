#pragma once

#include "src/xotypevl/evaluated_text.hpp"

namespace xo {

/// A text, and how many of its characters take part.
struct TextPart {
  EvaluatedText const* text;
  unsigned short characters;
};

/// The texts that stand for a value, and the end keys of an index.
struct FourTexts {
  TextPart valueLow;
  TextPart valueHigh;
  TextPart rangeLow;
  TextPart rangeHigh;
};

/// Numbers in place of the texts.
struct FourEstimates {
  double valueLow;
  double valueHigh;
  double rangeLow;
  double rangeHigh;
};

/// Turns texts into numbers that lie as the texts do. What all four begin with is skipped first:
/// an estimate has digits for three letters only. `ignored` are bits of letters that do not make a
/// difference in that.
///
/// Texts that are all orders, as keys are, take a way of their own.
FourEstimates EstimateTexts(FourTexts const& texts, unsigned short ignored);

/// The same on the way that all texts can take.
FourEstimates EstimateAnyTexts(FourTexts const& texts, unsigned short ignored);

}  // namespace xo
