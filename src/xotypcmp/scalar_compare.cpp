#include "src/xotypcmp/scalar_compare.hpp"

#include "src/xoint64/int64_family.hpp"
#include "xotypcmp.hpp"

int CharCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_char, xo::CharFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                    status);
}

int ByteCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_u1b, xo::CharFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                   status);
}

int ShortCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                 unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_2b, xo::ShortFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                   status);
}

int WordCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_u2b, xo::ShortFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                    status);
}

int LongCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_4b, xo::LongFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                  status);
}

int DwordCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                 unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_u4b, xo::LongFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                   status);
}

int IntCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
               unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_4b, xo::IntFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                 status);
}

int UnsignedCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                    unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_u4b, xo::UnsignedFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                       status);
}

int O_8BCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_8b, xo::LongLongFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                      status);
}

int O_U8BCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                 unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_u8b, xo::LongLongFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                       status);
}

int FloatCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                 unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_float, xo::FloatFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                      status);
}

int DoubleCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                  unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<o_double, xo::DoubleFamily>(format, len1, buf1, len2, buf2, cmpOp,
                                                        count, status);
}

int Int64Compare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                 unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<XoInt64, xo::Int64Family>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                      status);
}

int BooleanCompare(unsigned char format, unsigned len1, void* buf1, unsigned len2, void* buf2,
                   unsigned short cmpOp, unsigned count, int& status) {
  return xo::CompareScalars<XoBoolean, xo::CharFamily>(format, len1, buf1, len2, buf2, cmpOp, count,
                                                       status);
}
