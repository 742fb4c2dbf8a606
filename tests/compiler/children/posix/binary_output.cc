#include "tests/compiler/children/binary_output.h"

void UseBinaryOutput() {}
