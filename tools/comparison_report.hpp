#pragma once

#include <string>
#include <vector>
#include <xotypemgr.hpp>

namespace xo::tool {

/// The levels of a comparison, strongest first, as bits.
enum class Level : unsigned {
  Equal = 0,
  OrderKeys = 1,  ///< of a plain comparison, which has no levels
  Letters = 2,
  Accents = 4,
  Case = 8,
  SpacesAndSymbols = 16,
};

/// A sort order of a text, and the characters that it stands for; none for those that follow in an
/// expansion.
struct TextOrder {
  std::vector<unsigned short> characters;
  unsigned short order = 0;
  unsigned char group = 0;
};

/// How two texts compare, which level decides, and how their sort orders stand against each other.
class ComparisonReport {
 public:
  ComparisonReport(XoString const& first, XoString const& second, unsigned short cmpOp);

  std::string AsText(bool colour) const;
  std::string AsJson() const;

 private:
  static constexpr int kNone = -1;

  /// Orders, by their places, that the comparison holds against each other; one may be missing.
  struct Column {
    int first;
    int second;
    unsigned levels = 0;  ///< at which the two differ, a sum of `Level`
    bool isStar = false;  ///< the first is part of what an asterisk of the second stands for
  };

  void FindLevel();
  void PairKeys();
  void PairOrders();
  void PairPattern();
  void AddPair(int first, int second);
  unsigned LevelsOf(int first, int second) const;
  void FindDecider();

  bool IsSkipped(TextOrder const& order) const;
  bool IsStar(TextOrder const& order) const;
  bool IsQuestion(TextOrder const& order) const;
  bool MayStandFor(int first, int second) const;

  std::string Headline() const;
  std::string LevelsText(std::size_t column) const;

  XoString const& text1;
  XoString const& text2;
  unsigned short const cmpOp;
  unsigned char const usualGroup;
  std::vector<TextOrder> const orders1;
  std::vector<TextOrder> const orders2;
  int result;
  Level level = Level::Equal;
  std::vector<Column> columns;
  /// Orders behind the first difference of letters are not compared.
  bool isSettled = false;
  int decider = kNone;
};

}  // namespace xo::tool
