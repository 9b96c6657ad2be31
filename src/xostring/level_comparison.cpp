#include "src/xostring/level_comparison.hpp"

#include "src/xostring/order_keys.hpp"
#include "src/xostring/text_units.hpp"
#include "xostrcmp.hpp"

namespace xo {
namespace {

/// The bits of a key that an operator compares.
constexpr unsigned MaskOf(unsigned short cmpOp) {
  unsigned mask = 0xFFFFFFFF;
  if ((cmpOp & kCmpIgnoreAccents) != 0) mask &= ~0x1Fu;
  if ((cmpOp & kCmpIgnoreCase) != 0) mask &= ~0x60u;
  return mask;
}

}  // namespace

LevelComparison::LevelComparison(XoStringIterator const& first, XoStringIterator const& second,
                                 unsigned short cmpOp_, short count_, LevelDifferences before)
    : cmpOp(cmpOp_),
      count(static_cast<unsigned short>(count_)),
      signedCount(count_),
      isCounted(count_ != -1),
      wildcards((cmpOp_ & kCmpNoWildcards) == 0),
      mask(MaskOf(cmpOp_)),
      asterisk(AsteriskOrder()),
      question(QuestionOrder()),
      iterator1(first),
      iterator2(second),
      levels(before) {}

int LevelComparison::Run(int* positional) {
  do {
    Align();
    FixGroup();
    if (wildcards && CollectAndStartStars()) break;
    WalkBranches();
    TakeDifferences();
    KeepIgnorableDifference();
    BackOut();
    TellPosition(positional);
  } while (!IsAtEnd());
  return Result();
}

bool LevelComparison::IsWildcard(Slot const& slot) const {
  return wildcards && slot.isPattern && slot.order != 0 &&
         (slot.order == asterisk || slot.order == question);
}

bool LevelComparison::IsSignificant(Slot const& slot) const {
  return slot.order >= kFirstSignificantOrder || slot.iterator.orderGroup >= kUntabledGroup;
}

bool LevelComparison::StandsOnQuestion() const { return wildcards && slot2.order == question; }

/// Moves a cursor on to its next stop: a significant order, the end, a wildcard of the pattern, or
/// a space or symbol that is not skipped.
void LevelComparison::AdvanceOrderSlot(Slot& slot) {
  slot.ignorable = 0;
  for (;;) {
    ++slot.seen;
    slot.order = isCounted && slot.seen > count ? static_cast<unsigned short>(0)
                                                : slot.iterator.GetNextOrder(updateGroup);
    slot.key = KeyOf(slot.order, slot.iterator.orderGroup);
    if (slot.order == 0 || IsWildcard(slot) || IsSignificant(slot)) return;
    bool const skipped = Reads(slot.order < kFirstSymbolOrder ? kCmpSkipSpaces : kCmpSkipSymbols);
    if (!skipped) {
      slot.ignorable = slot.order;
      return;
    }
  }
}

/// Brings both cursors to a significant order or the end; behind a star, to the next stop of each.
/// Spaces and symbols on the way are paired off as they are met; they count at the last level and
/// never as letters.
void LevelComparison::Align() {
  pendingDiff = 0;
  AdvanceOrderSlot(slot1);
  AdvanceOrderSlot(slot2);
  for (;;) {
    if (IsWildcard(slot2) || InStarMode()) return;
    if (slot1.ignorable == 0 && slot2.ignorable == 0) return;
    int const difference = int{slot1.ignorable} - int{slot2.ignorable};
    if (difference != 0) pendingDiff = difference;
    bool const readFirst = slot1.ignorable != 0;
    bool const readSecond = slot2.ignorable != 0;
    slot1.ignorable = 0;
    slot2.ignorable = 0;
    if (readFirst) AdvanceOrderSlot(slot1);
    if (readSecond) AdvanceOrderSlot(slot2);
  }
}

/// A key of sort orders does not tell groups but for its first: the first step has fixed it.
void LevelComparison::FixGroup() {
  if (iterator1.codeSet == kSortOrderSet || iterator2.codeSet == kSortOrderSet) updateGroup = 0;
}

/// Notes where the open star could take up the text, and opens a star that the pattern has come to.
/// True when the pattern ends in a star: what follows in the text does not matter.
bool LevelComparison::CollectAndStartStars() {
  if ((slot1.key != 0 && (slot1.key & mask) == starTarget) ||
      (slot1.order != 0 && afterStarIsQuestion)) {
    branches.push_back({starIterator, levels, starSeen});
  }
  if (slot2.order != asterisk) return false;

  branches.clear();
  savedLevels = levels;
  while (slot2.order == asterisk) {
    starIterator = iterator2;
    starSeen = slot2.seen;
    AdvanceOrderSlot(slot2);
  }
  if (slot2.order == 0) {
    KeepIgnorableDifference();
    return true;
  }
  starTarget = slot2.key & mask;
  afterStarIsQuestion = slot2.order == question;
  return false;
}

/// Follows every branch by one order, and drops those that do not go with the text.
void LevelComparison::WalkBranches() {
  for (auto branch = branches.begin(); branch != branches.end();) {
    Slot slot3{branch->iterator, branch->seen, 0, 0, 0, true};
    AdvanceOrderSlot(slot3);
    branch->seen = slot3.seen;
    bool const differs = (slot3.key & mask) != (slot1.key & mask);
    if (differs && (slot1.order == 0 || slot3.order != question)) {
      branch = branches.erase(branch);
    } else {
      ++branch;
    }
  }
}

void LevelComparison::TakeDifferences() {
  if (StandsOnQuestion()) {
    letterDiff = slot1.order != 0 ? 0 : -1;
    return;
  }
  letterDiff = levels.Take(slot1.key, slot2.key);
}

void LevelComparison::KeepIgnorableDifference() {
  if (pendingDiff != 0) levels.ignorable = pendingDiff;
}

/// Where the step broke a candidate for the open star, goes on with the next one.
void LevelComparison::BackOut() {
  if (!wildcards || !InStarMode() || slot1.order == 0) return;
  int measure = Reads(kCmpIgnoreCase) ? levels.accent : levels.accent | levels.caseOf;
  if (Reads(kCmpIgnoreAccents)) measure = Reads(kCmpIgnoreCase) ? letterDiff : levels.caseOf;
  if (measure == 0) return;
  if (!branches.empty()) {
    WildcardBranch const& oldest = branches.front();
    iterator2 = oldest.iterator;
    RestoreLevels(oldest.levels);
    slot2.seen = oldest.seen;
    branches.pop_front();
  } else {
    iterator2 = starIterator;
    RestoreLevels(savedLevels);
    slot2.seen = starSeen;
  }
  letterDiff = 0;
}

void LevelComparison::RestoreLevels(LevelDifferences const& saved) {
  levels.accent = saved.accent;
  levels.caseOf = saved.caseOf;
}

void LevelComparison::TellPosition(int* positional) const {
  if (positional == nullptr || !Reads(kCmpSkipSpaces)) return;
  int const limit = signedCount;
  if (static_cast<int>(slot1.seen) <= limit && static_cast<int>(slot2.seen) <= limit) {
    *positional = letterDiff;
  }
}

bool LevelComparison::IsAtEnd() const {
  if (letterDiff != 0 || slot1.order == 0) return true;
  return slot2.order == 0 && !InStarMode();
}

}  // namespace xo
