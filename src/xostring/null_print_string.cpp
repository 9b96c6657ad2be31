#include "src/xostring/null_print_string.hpp"

namespace xo {
namespace {

XoString nullPrintString("{NULL}");

}  // namespace

XoString& NullPrintString() { return nullPrintString; }

}  // namespace xo
