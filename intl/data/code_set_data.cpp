// Written by intl/tools/generate.py from Unicode 15.0.0 and CLDR 41. Do not edit.
// clang-format off
#include "intl/data/tables.hpp"

namespace xo::intl {

// The bounds let addresses of elements be constants.
XO_EXPORT extern CharOrderEntry const kOrderEntries[27179];
extern LetterHead const kLetterHeads[9984];
extern CodeSetTables const kCodeSetTables[39];

namespace {

constinit OrderTable const kOrderTables[] = {
  {kOrderEntries + 0, nullptr, kLetterHeads + 0},
  {kOrderEntries + 256, nullptr, kLetterHeads + 256},
  {kOrderEntries + 512, nullptr, kLetterHeads + 512},
  {kOrderEntries + 768, nullptr, kLetterHeads + 768},
  {kOrderEntries + 1024, nullptr, kLetterHeads + 1024},
  {kOrderEntries + 1280, nullptr, kLetterHeads + 1280},
  {kOrderEntries + 1536, nullptr, kLetterHeads + 1536},
  {kOrderEntries + 1792, nullptr, kLetterHeads + 1792},
  {kOrderEntries + 2048, nullptr, kLetterHeads + 2048},
  {kOrderEntries + 2304, nullptr, kLetterHeads + 2304},
  {kOrderEntries + 2560, nullptr, kLetterHeads + 2560},
  {kOrderEntries + 2816, nullptr, kLetterHeads + 2816},
  {kOrderEntries + 3072, nullptr, kLetterHeads + 3072},
  {kOrderEntries + 3328, nullptr, kLetterHeads + 3328},
  {kOrderEntries + 3584, nullptr, kLetterHeads + 3584},
  {kOrderEntries + 3840, nullptr, kLetterHeads + 3840},
  {kOrderEntries + 4096, nullptr, kLetterHeads + 4096},
  {kOrderEntries + 4352, nullptr, kLetterHeads + 4352},
  {kOrderEntries + 4608, nullptr, kLetterHeads + 4608},
  {kOrderEntries + 4864, nullptr, kLetterHeads + 4864},
  {kOrderEntries + 5120, nullptr, kLetterHeads + 5120},
  {kOrderEntries + 5376, nullptr, kLetterHeads + 5376},
  {kOrderEntries + 5632, nullptr, kLetterHeads + 5632},
  {kOrderEntries + 5888, nullptr, kLetterHeads + 5888},
  {kOrderEntries + 6144, nullptr, kLetterHeads + 6144},
  {kOrderEntries + 6400, nullptr, kLetterHeads + 6400},
  {kOrderEntries + 6656, nullptr, kLetterHeads + 6656},
  {kOrderEntries + 6912, nullptr, kLetterHeads + 6912},
  {kOrderEntries + 7168, nullptr, kLetterHeads + 7168},
  {kOrderEntries + 7424, nullptr, kLetterHeads + 7424},
  {kOrderEntries + 7680, nullptr, kLetterHeads + 7680},
  {kOrderEntries + 7936, kUnicodeBlocks, kLetterHeads + 7936},
};

}  // namespace

constinit XoCodeSet const kCodeSets[] = {
  {1, "ISO-8859-1", &kOrderTables[0], &kCodeSetTables[0]},
  {2, "ISO-8859-2", &kOrderTables[1], &kCodeSetTables[1]},
  {3, "ISO-8859-3", &kOrderTables[2], &kCodeSetTables[2]},
  {4, "ISO-8859-4", &kOrderTables[3], &kCodeSetTables[3]},
  {5, "ISO-8859-5", &kOrderTables[4], &kCodeSetTables[4]},
  {6, "ISO-8859-6", &kOrderTables[5], &kCodeSetTables[5]},
  {7, "ISO-8859-7", &kOrderTables[6], &kCodeSetTables[6]},
  {8, "ISO-8859-8", &kOrderTables[7], &kCodeSetTables[7]},
  {9, "ISO-8859-9", &kOrderTables[8], &kCodeSetTables[8]},
  {10, "ISO-8859-13", &kOrderTables[9], &kCodeSetTables[9]},
  {11, "ISO-8859-15", &kOrderTables[10], &kCodeSetTables[10]},
  {12, "IBM866", &kOrderTables[11], &kCodeSetTables[11]},
  {13, "windows-1250", &kOrderTables[12], &kCodeSetTables[12]},
  {14, "windows-1251", &kOrderTables[13], &kCodeSetTables[13]},
  {15, "windows-1252", &kOrderTables[14], &kCodeSetTables[14]},
  {16, "windows-1253", &kOrderTables[15], &kCodeSetTables[15]},
  {17, "windows-1254", &kOrderTables[16], &kCodeSetTables[16]},
  {18, "windows-1255", &kOrderTables[17], &kCodeSetTables[17]},
  {19, "windows-1256", &kOrderTables[18], &kCodeSetTables[18]},
  {20, "windows-1257", &kOrderTables[19], &kCodeSetTables[19]},
  {21, "windows-1258", &kOrderTables[20], &kCodeSetTables[20]},
  {22, "KOI8-R", &kOrderTables[21], &kCodeSetTables[21]},
  {23, "KOI8-U", &kOrderTables[22], &kCodeSetTables[22]},
  {24, "IBM437", &kOrderTables[23], &kCodeSetTables[23]},
  {25, "IBM850", &kOrderTables[24], &kCodeSetTables[24]},
  {26, "IBM852", &kOrderTables[25], &kCodeSetTables[25]},
  {27, "ISO-8859-16", &kOrderTables[26], &kCodeSetTables[26]},
  {28, "ISO-8859-10", &kOrderTables[27], &kCodeSetTables[27]},
  {29, "ISO-8859-11", &kOrderTables[28], &kCodeSetTables[28]},
  {30, "ISO-8859-14", &kOrderTables[29], &kCodeSetTables[29]},
  {31, "windows-874", &kOrderTables[30], &kCodeSetTables[30]},
  {32, "IBM037", nullptr, &kCodeSetTables[31]},
  {33, "IBM273", nullptr, &kCodeSetTables[32]},
  {34, "IBM500", nullptr, &kCodeSetTables[33]},
  {35, "IBM1140", nullptr, &kCodeSetTables[34]},
  {225, "JIS X 0208", nullptr, &kCodeSetTables[35]},
  {226, "GB 2312", nullptr, &kCodeSetTables[36]},
  {227, "KS X 1001", nullptr, &kCodeSetTables[37]},
  {228, "Big5", nullptr, &kCodeSetTables[38]},
  {253, "Unicode", &kOrderTables[31], nullptr},
  {254, "sort orders", nullptr, nullptr},
};
constinit unsigned const kCodeSetCount = 41;

constinit unsigned char const kCodeSetPlaces[256] = {
  255, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25,
  26, 27, 28, 29, 30, 31, 32, 33, 34, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
  255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
  255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
  255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
  255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
  255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
  255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
  255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
  255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
  255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
  255, 255, 255, 255, 255, 255, 35, 36, 37, 38, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255,
  255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 39, 40, 255,
};

}  // namespace xo::intl
