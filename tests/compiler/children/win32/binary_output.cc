#include "tests/compiler/children/binary_output.h"

#include <fcntl.h>
#include <io.h>

void UseBinaryOutput() {
  _setmode(1, _O_BINARY);
  _setmode(2, _O_BINARY);
}
