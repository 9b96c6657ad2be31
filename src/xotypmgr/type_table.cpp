#include "src/xotypevl/odmg_bounds.hpp"
#include "src/xotypevl/temporal_bounds.hpp"
#include "src/xotypmgr/blob_row_builder.hpp"
#include "src/xotypmgr/identifier_row_builders.hpp"
#include "src/xotypmgr/odmg_row_builders.hpp"
#include "src/xotypmgr/row_builders.hpp"
#include "src/xotypmgr/string_row_builders.hpp"
#include "xotypcmp.hpp"
#include "xotypeconvert.hpp"
#include "xotypes.hpp"

/// The table of types on one page. Every row is complete before any code of the process runs, as
/// the addresses in it are known when the library is linked and loaded, and is written afterwards
/// by the exchange operations of `XoTypeMgr` alone.
namespace xo {
namespace {

template <class ValueType, class FamilyType, XCompare* CompareFunction, XoConvertTo* ConvertTo,
          XoConvertFrom* ConvertFrom>
struct Scalar {
  using Value = ValueType;
  using Family = FamilyType;
  static constexpr XCompare* kCompare = CompareFunction;
  static constexpr XoConvertTo* kConvertTo = ConvertTo;
  static constexpr XoConvertFrom* kConvertFrom = ConvertFrom;
};

using Char =
    Scalar<o_char, CharFamily, CharCompare, CharConvertToXoString, CharConvertFromXoString>;
using Byte =
    Scalar<o_u1b, CharFamily, ByteCompare, O_U1BConvertToXoString, O_U1BConvertFromXoString>;
using Short =
    Scalar<o_2b, ShortFamily, ShortCompare, ShortConvertToXoString, ShortConvertFromXoString>;
using Word =
    Scalar<o_u2b, ShortFamily, WordCompare, WordConvertToXoString, WordConvertFromXoString>;
using Long = Scalar<o_4b, LongFamily, LongCompare, LongConvertToXoString, LongConvertFromXoString>;
using Dword =
    Scalar<o_u4b, LongFamily, DwordCompare, DwordConvertToXoString, DwordConvertFromXoString>;
using Int = Scalar<o_4b, IntFamily, IntCompare, IntConvertToXoString, IntConvertFromXoString>;
using Unsigned = Scalar<o_u4b, UnsignedFamily, UnsignedCompare, UnsignedConvertToXoString,
                        UnsignedConvertFromXoString>;
using LongLong =
    Scalar<o_8b, LongLongFamily, O_8BCompare, O_8BConvertToXoString, O_8BConvertFromXoString>;
using UnsignedLongLong =
    Scalar<o_u8b, LongLongFamily, O_U8BCompare, O_U8BConvertToXoString, O_U8BConvertFromXoString>;
using Double = Scalar<o_double, DoubleFamily, DoubleCompare, DoubleConvertToXoString,
                      DoubleConvertFromXoString>;
using Float =
    Scalar<o_float, FloatFamily, FloatCompare, FloatConvertToXoString, FloatConvertFromXoString>;
using Int64 =
    Scalar<XoInt64, Int64Family, Int64Compare, Int64ConvertToXoString, Int64ConvertFromXoString>;
using Boolean = Scalar<XoBoolean, CharFamily, BooleanCompare, BooleanConvertToXoString,
                       BooleanConvertFromXoString>;

constinit TypeDescriptor charRow = MakeScalarRow<Char>("o_char", "Xo1B_T", "%c");
constinit TypeDescriptor shortRow = MakeScalarRow<Short>("o_2b", "Xo2B_T", "%hd");
constinit TypeDescriptor longRow = MakeScalarRow<Long>("o_4b", "Xo4B_T", "%ld");
constinit TypeDescriptor doubleRow = MakeScalarRow<Double>("o_double", "XoDOUBLE_T", "%.17g");
constinit TypeDescriptor floatRow = MakeScalarRow<Float>("o_float", "XoFLOAT_T", "%.17g");
constinit TypeDescriptor wordRow = MakeScalarRow<Word>("o_u2b", "XoU2B_T", "%hu");
constinit TypeDescriptor dwordRow = MakeScalarRow<Dword>("o_u4b", "XoU4B_T", "%lu");
constinit TypeDescriptor intRow = MakeScalarRow<Int>("int", "XoINT_T", "%d");
constinit TypeDescriptor unsignedRow = MakeScalarRow<Unsigned>("unsigned", "XoUNSIGNED_T", "%u");
constinit TypeDescriptor enumRow = WithoutGetValue(MakeScalarRow<Int>("enum", "XoENUM_T", "%d"));
constinit TypeDescriptor byteRow = MakeScalarRow<Byte>("o_u1b", "XoU1B_T", "%c");
constinit TypeDescriptor stringRow = MakeStringRow();
constinit TypeDescriptor dateRow = MakeTemporalRow<DateLayout, XoDATE_T>(
    "XoDate", "XoDATE_T", "%a %e.%b %Y", XoDateCompare, EvaluateDate);
constinit TypeDescriptor timeRow = MakeTemporalRow<TimeLayout, XoTIME_T>(
    "XoTime", "XoTIME_T", "%I:%M:%S %p", XoTimeCompare, EvaluateTime);
constinit TypeDescriptor blockIdRow = MakeScalarRow<Dword>("BlockId", "XoBLOCKID_T", "#%lu");
constinit TypeDescriptor objectIdRow =
    MakeNumberedRow<XoOBJID_T, XoObjId>("XoObjId", "XoOBJID_T", "(%H-%L#%B)");
constinit TypeDescriptor classIdRow =
    MakeIdentifierRow<XoCLID_T, XoClassId>("XoClassId", "XoCLID_T", "(%Cv%V)");
constinit TypeDescriptor referenceRow =
    MakeNumberedRow<XoREF_T, XoRef>("XoRef", "XoREF_T", "(%D:%H-%L#%B, %C)");
constinit TypeDescriptor blobRow = MakeBlobRow();
constinit TypeDescriptor dateTimeRow = MakeTemporalRow<DateTimeLayout, XoDATIME_T>(
    "XoDateTime", "XoDATIME_T", "%a %e.%b %Y %I:%M:%S %p", XoDateTimeCompare, EvaluateDateTime);
constinit TypeDescriptor weightedStringRow =
    MakeInlineStringRow<XoIString>("XoIString", "XoISTRING_T", XoIStringCompare,
                                   XoIStringConvertToXoString, XoIStringConvertFromXoString);
constinit TypeDescriptor weightedCaseStringRow = MakeInlineStringRow<XoCaseIString>(
    "XoCaseIString", "XoCASEISTRING_T", XoCaseIStringCompare, XoCaseIStringConvertToXoString,
    XoCaseIStringConvertFromXoString);
constinit TypeDescriptor odmgDateRow = MakeOdmgRecordRow<D_DATE_T, OdmgDateLayout, FoldOdmgDate>(
    "d_Date", "D_DATE_T", "%a %b %e", d_DateCompare, EvaluateOdmgDate);
constinit TypeDescriptor odmgTimeRow = MakeOdmgRecordRow<D_TIME_T, OdmgTimeLayout, FoldOdmgTime>(
    "d_Time", "D_TIME_T", "%I:%M:%S %p", d_TimeCompare, EvaluateOdmgTime);
constinit TypeDescriptor odmgTimestampRow =
    MakeOdmgRecordRow<D_TIMESTAMP_T, OdmgTimestampLayout, FoldOdmgTimestamp>(
        "d_Timestamp", "D_TIMESTAMP_T", "%a %b %e %I:%M:%S %p", d_TimestampCompare,
        EvaluateOdmgTimestamp);
constinit TypeDescriptor odmgIntervalRow = MakeOdmgIntervalRow<D_INTERVAL_T>(
    "d_Interval", "D_INTERVAL_T", "%e days, %I hours, %M minutes, %S seconds");
constinit TypeDescriptor int64Row = MakeInt64Row<Int64>("XoInt64", "XoINT64_T", "%S");
constinit TypeDescriptor booleanRow = MakeBooleanRow<Boolean>("XoBoolean", "XoBOOLEAN_T", "noop");
constinit TypeDescriptor nullCharRow =
    MakeNullRow<XoNull_char, CharFamily>("XoNull_char", "XoNULL_1B_T", "%c");
constinit TypeDescriptor nullByteRow =
    MakeNullRow<XoNull_uchar, CharFamily>("XoNull_uchar", "XoNULL_U1B_T", "%c");
constinit TypeDescriptor nullShortRow =
    MakeNullRow<XoNull_short, ShortFamily>("XoNull_short", "XoNULL_2B_T", "%hd");
constinit TypeDescriptor nullWordRow =
    MakeNullRow<XoNull_ushort, ShortFamily>("XoNull_ushort", "XoNULL_U2B_T", "%hu");
constinit TypeDescriptor nullIntRow =
    MakeNullRow<XoNull_int, IntFamily>("XoNull_int", "XoNULL_INT_T", "%d");
constinit TypeDescriptor nullUnsignedRow =
    MakeNullRow<XoNull_unsigned, UnsignedFamily>("XoNull_unsigned", "XoNULL_UNSIGNED_T", "%u");
constinit TypeDescriptor nullLongRow =
    MakeNullRow<XoNull_long, LongFamily>("XoNull_long", "XoNULL_4B_T", "%ld");
constinit TypeDescriptor nullDwordRow =
    MakeNullRow<XoNull_ulong, LongFamily>("XoNull_ulong", "XoNULL_U4B_T", "%lu");
constinit TypeDescriptor nullFloatRow =
    MakeNullRow<XoNull_float, FloatFamily>("XoNull_float", "XoNULL_FLOAT_T", "%.17g");
constinit TypeDescriptor nullDoubleRow =
    MakeNullRow<XoNull_double, DoubleFamily>("XoNull_double", "XoNULL_DOUBLE_T", "%.17g");
constinit TypeDescriptor nullInt64Row =
    MakeNullRow<XoNull_XoInt64, Int64Family>("XoNull_XoInt64", "XoNULL_XOINT64_T", "%S");
constinit TypeDescriptor sealRow = MakeSealRow();
constinit TypeDescriptor dateTimeNRow = MakeTemporalRow<DateTimeNLayout, XoDATIME_N_T>(
    "XoDateTimeN", "XoDATIME_N_T", "%X", XoDateTimeNCompare, EvaluateDateTimeN);
constinit TypeDescriptor timeSpanRow = MakeTemporalRow<TimeSpanLayout, XoTIMESPAN_T>(
    "XoTimeSpan", "XoTIMESPAN_T", "%V", XoTimeSpanCompare, EvaluateTimeSpan);
constinit TypeDescriptor longLongRow = MakeScalarRow<LongLong>("o_8b", "Xo8B_T", "%I64d");
constinit TypeDescriptor unsignedLongLongRow =
    MakeScalarRow<UnsignedLongLong>("o_u8b", "XoU8B_T", "%I64u");
constinit TypeDescriptor nullLongLongRow =
    MakeNullRow<XoNull_8b, LongLongFamily>("XoNull_8b", "XoNULL_8B_T", "%I64d");
constinit TypeDescriptor nullUnsignedLongLongRow =
    MakeNullRow<XoNull_u8b, LongLongFamily>("XoNull_u8b", "XoNULL_U8B_T", "%I64u");
constinit TypeDescriptor illegalRow = MakeEmptyRow("illegal", "XoRES_T", "illegal", 0, 1);

/// The string row of databases of an older generation. All other rows serve both generations.
constinit TypeDescriptor olderStringRow = MakeOlderStringRow();

}  // namespace
}  // namespace xo

TypeDescriptor* const CurrentTypeTable[] = {
    &xo::charRow,                  // 0
    &xo::shortRow,                 // 1
    &xo::longRow,                  // 2
    &xo::doubleRow,                // 3
    &xo::floatRow,                 // 4
    &xo::wordRow,                  // 5
    &xo::dwordRow,                 // 6
    &xo::intRow,                   // 7
    &xo::unsignedRow,              // 8
    &xo::enumRow,                  // 9
    &xo::byteRow,                  // 10
    &xo::stringRow,                // 11
    &xo::dateRow,                  // 12
    &xo::timeRow,                  // 13
    &xo::blockIdRow,               // 14
    &xo::objectIdRow,              // 15
    &xo::classIdRow,               // 16
    &xo::referenceRow,             // 17
    &xo::blobRow,                  // 18
    &xo::dateTimeRow,              // 19
    &xo::weightedStringRow,        // 20
    &xo::weightedCaseStringRow,    // 21
    &xo::odmgDateRow,              // 22
    &xo::odmgTimeRow,              // 23
    &xo::odmgTimestampRow,         // 24
    &xo::odmgIntervalRow,          // 25
    &xo::int64Row,                 // 26
    &xo::booleanRow,               // 27
    &xo::nullCharRow,              // 28
    &xo::nullByteRow,              // 29
    &xo::nullShortRow,             // 30
    &xo::nullWordRow,              // 31
    &xo::nullIntRow,               // 32
    &xo::nullUnsignedRow,          // 33
    &xo::nullLongRow,              // 34
    &xo::nullDwordRow,             // 35
    &xo::nullFloatRow,             // 36
    &xo::nullDoubleRow,            // 37
    &xo::nullInt64Row,             // 38
    &xo::sealRow,                  // 39
    &xo::dateTimeNRow,             // 40
    &xo::timeSpanRow,              // 41
    &xo::longLongRow,              // 42
    &xo::unsignedLongLongRow,      // 43
    &xo::nullLongLongRow,          // 44
    &xo::nullUnsignedLongLongRow,  // 45
    &xo::illegalRow,               // 46
    nullptr,
};

TypeDescriptor* const OlderTypeTable[] = {
    &xo::charRow,                // 0
    &xo::shortRow,               // 1
    &xo::longRow,                // 2
    &xo::doubleRow,              // 3
    &xo::floatRow,               // 4
    &xo::wordRow,                // 5
    &xo::dwordRow,               // 6
    &xo::intRow,                 // 7
    &xo::unsignedRow,            // 8
    &xo::enumRow,                // 9
    &xo::byteRow,                // 10
    &xo::olderStringRow,         // 11
    &xo::dateRow,                // 12
    &xo::timeRow,                // 13
    &xo::blockIdRow,             // 14
    &xo::objectIdRow,            // 15
    &xo::classIdRow,             // 16
    &xo::referenceRow,           // 17
    &xo::blobRow,                // 18
    &xo::dateTimeRow,            // 19
    &xo::weightedStringRow,      // 20
    &xo::weightedCaseStringRow,  // 21
    &xo::odmgDateRow,            // 22
    &xo::odmgTimeRow,            // 23
    &xo::odmgTimestampRow,       // 24
    &xo::odmgIntervalRow,        // 25
    &xo::int64Row,               // 26
    &xo::booleanRow,             // 27
    nullptr,
};
