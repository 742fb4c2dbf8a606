#include "compiler/line_count.h"

#include <cmath>

namespace scrivo {

int EstimateProgress(std::int64_t line_breaks, std::int32_t files_count) {
  const double expected_lines = static_cast<double>(files_count) + 10;
  if (expected_lines <= 0) return 0;
  const double progress = std::nearbyint(static_cast<double>(line_breaks) / expected_lines * 100);
  return progress > 100 ? 99 : static_cast<int>(progress);
}

}  // namespace scrivo
