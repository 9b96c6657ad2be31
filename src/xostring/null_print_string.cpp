#include "xostring.hpp"

XoString NullPrintString("{NULL}");
