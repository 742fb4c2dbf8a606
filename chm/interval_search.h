#pragma once

// Finds the reset intervals of a stream whose reset table is lost.

#include "bytes/byte_source.h"
#include "chm/compressed_section.h"

namespace scrivo {

// Fills section->starts by decoding the stream from its start: an interval starts where the one
// before it ends. Stops at the first one that cannot be decoded, which is the last one entered. The
// other members of `*section` have to be set.
void FindIntervals(const ByteSource& source, CompressedSection* section);

}  // namespace scrivo
