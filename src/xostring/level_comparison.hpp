#pragma once

#include <list>

#include "src/xostring/order_keys.hpp"
#include "xostrcmp.hpp"
#include "xostringiterator.hpp"

/// The comparison of two texts in levels, with wildcards in the second one.
namespace xo {

/// What the levels below the letters have come to in a comparison.
struct LevelDifferences {
  int accent = 0;
  int caseOf = 0;
  int ignorable = 0;

  /// Takes the keys of one step on each side; gives the difference of letters.
  int Take(unsigned key1, unsigned key2) {
    // The operands stand the other way round: lower case comes before upper case.
    if (caseOf == 0) caseOf = Difference(CaseLevel(key2), CaseLevel(key1));
    // Accents are read from the end: the last difference stands.
    int const accents = Difference(AccentLevel(key1), AccentLevel(key2));
    if (accents != 0) accent = accents;
    return Difference(LetterLevel(key1), LetterLevel(key2));
  }

  /// The outcome of texts without a difference of letters.
  int Outcome(unsigned short cmpOp) const {
    if (accent != 0 && (cmpOp & kCmpIgnoreAccents) == 0) return accent;
    if (caseOf != 0 && (cmpOp & kCmpIgnoreCase) == 0) return caseOf;
    return ignorable;
  }
};

/// Where a star of the pattern may take up the text again: the pattern behind the star, as far as
/// it has been followed from a place of the text, and what else a comparison from there needs.
struct WildcardBranch {
  XoStringIterator iterator;
  LevelDifferences levels;
  unsigned seen;
};

/// The state of one comparison. `Run` repeats nine small steps until an outcome is there: they move
/// both cursors on to the next significant order, or one wildcard, and take the differences.
class LevelComparison {
 public:
  /// `before` are the differences of what stands before the cursors; `count` is the number of
  /// orders to read of each side.
  LevelComparison(XoStringIterator const& first, XoStringIterator const& second,
                  unsigned short cmpOp, short count, LevelDifferences before = {});

  /// The outcome. Where spaces are skipped, `positional`, unless null, receives the difference of
  /// letters of each step that lies within `count`.
  int Run(int* positional);

 private:
  /// A cursor and what it read last.
  struct Slot {
    XoStringIterator& iterator;
    unsigned seen;
    unsigned short order = 0;
    unsigned key = 0;
    /// The space or symbol that it stopped on, to be compared at the last level, or 0.
    unsigned short ignorable = 0;
    /// Whether an asterisk or question mark stops it.
    bool isPattern;
  };

  bool Reads(unsigned short bit) const { return (cmpOp & bit) != 0; }
  bool IsWildcard(Slot const& slot) const;
  bool IsSignificant(Slot const& slot) const;
  bool InStarMode() const { return starTarget != 0; }
  bool StandsOnQuestion() const;

  void AdvanceOrderSlot(Slot& slot);

  // The steps of a step, in their order.
  void Align();
  void FixGroup();
  bool CollectAndStartStars();
  void WalkBranches();
  void TakeDifferences();
  void KeepIgnorableDifference();
  void BackOut();
  void TellPosition(int* positional) const;
  bool IsAtEnd() const;

  int Result() const { return letterDiff != 0 ? letterDiff : levels.Outcome(cmpOp); }
  void RestoreLevels(LevelDifferences const& saved);

  unsigned short const cmpOp;
  unsigned const count;
  short const signedCount;
  /// Without a count, texts are read to their ends, however long they are.
  bool const isCounted;
  bool const wildcards;
  unsigned const mask;
  unsigned short const asterisk;
  unsigned short const question;

  XoStringIterator iterator1;
  XoStringIterator iterator2;
  Slot slot1{iterator1, 0, 0, 0, 0, false};
  Slot slot2{iterator2, 0, 0, 0, 0, true};
  unsigned short updateGroup = 1;

  int letterDiff = 0;
  LevelDifferences levels;
  int pendingDiff = 0;

  /// The pattern behind the last asterisk, and what held there. Of the levels saved, those of
  /// accent and case come back.
  XoStringIterator starIterator;
  unsigned starSeen = 0;
  LevelDifferences savedLevels;
  /// Masked key of the pattern's first order behind the asterisk; not 0 in star mode.
  unsigned starTarget = 0;
  bool afterStarIsQuestion = false;
  /// Oldest first.
  std::list<WildcardBranch> branches;
};

}  // namespace xo
