#include "src/xotypevl/identity_bounds.hpp"

#include "src/xoidentifiers/identifier_records.hpp"
#include "src/xoseal/seal_record.hpp"
#include "src/xotypevl/element_bounds.hpp"
#include "src/xotypevl/number_bounds.hpp"

using namespace xo;

namespace {

/// Highest number of 16 bits. Estimates weigh a word with it as if it were their count: they are
/// kept as coarse as that.
constexpr double kWordWeight = 65535.0;
/// The same of 32 bits.
constexpr double kLongWeight = 4294967295.0;
/// Size of the space of references, over all of which they are taken to spread.
constexpr double kReferences = kLongWeight * kLongWeight;

double NumberOfObject(void const* record, unsigned char format) {
  XoObjId const id = ObjectIdRecord::Read(record, format);
  return id.high * kWordWeight + id.low;
}

/// The database weighs most.
double NumberOfReference(void const* record, unsigned char format) {
  XoRef const reference = ReferenceRecord::Read(record, format);
  return (reference.database * kWordWeight + reference.high) * kLongWeight + reference.low;
}

/// All 48 bits.
o_u8b NumberOfSeal(void const* record, unsigned char format) {
  XoSeal const seal =
      format == FormMemory ? LoadBytes<XoSeal>(record) : SealRecord::Read(record, format);
  return o_u8b{seal.top} << 32 | o_u8b{seal.middle} << 16 | seal.bottom;
}

/// As of 64-bit numbers, although a double holds these: a relation that excludes the value counts
/// one key at the end of the index.
float ShareOfSeal(unsigned short op, KeyNumbers<o_u8b> const& keys) {
  EndNumbers const ends{ToDouble(keys.low), ToDouble(keys.high)};
  double const number = ToDouble(keys.value);
  double const area = BoundRangeArea(op, number, number, ends.low, ends.high, kNumberStep);
  return ShareOfTotal(area == 0.0 && MeetsRange(op, keys) ? kNumberStep : area, ends.Total());
}

XoIdxBounds* BoundsAt(void* bounds) { return static_cast<XoIdxBounds*>(bounds); }

}  // namespace

float xo::EvaluateAsWhole(XoIdxBounds*, unsigned short&, void*, unsigned char, unsigned, void*,
                          XoEvalData*) {
  return 1.0F;
}

float XoClassId::EvalAndBound(XoIdxBounds*, unsigned short&, void*, unsigned char, unsigned, void*,
                              XoEvalData*) {
  return 1.0F;
}

float XoObjId::EvalAndBound(XoIdxBounds* range, unsigned short& op, void* value,
                            unsigned char format, unsigned count, void* bounds, XoEvalData*) {
  float share = 0.0F;
  if (HasBothEnds(range)) {
    double const number = NumberOfObject(value, format);
    share = ShareOfRange(op, number, number, NumbersOf(*range, [format](void const* key) {
                           return NumberOfObject(key, format);
                         }));
  }
  BoundRecord(BoundsAt(bounds), value, op, ObjectIdRecord::kDiskWidth * count);
  return share;
}

float XoRef::EvalAndBound(XoIdxBounds*, unsigned short& op, void* value, unsigned char format,
                          unsigned count, void* bounds, XoEvalData*) {
  op &= kRelationAndPattern;
  double const number = NumberOfReference(value, format);
  double area = 0.0;
  if ((op & kXoBoundBelow) != 0) area += number;
  if ((op & kXoBoundAbove) != 0) area += kReferences - (number + 1.0);
  if ((op & kXoBoundEqual) != 0) area += 1.0;
  BoundRecord(BoundsAt(bounds), value, op, ReferenceRecord::kDiskWidth * count);
  return static_cast<float>(area / kReferences);
}

float XoSeal::EvalAndBound(XoIdxBounds* range, unsigned short& op, void* value,
                           unsigned char format, unsigned count, void* bounds, XoEvalData*) {
  float share = 0.0F;
  if (HasBothEnds(range)) {
    share = ShareOfSeal(op, {NumberOfSeal(value, format), NumberOfSeal(range->low, format),
                             NumberOfSeal(range->high, format)});
  }
  BoundRecord(BoundsAt(bounds), value, op, SealRecord::kDiskWidth * count);
  return share;
}
