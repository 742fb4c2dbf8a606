#pragma once

#include <string>

namespace scrivo {

// A number as decimal text, "." before the fraction, as short as reads back to the same single
// ("4080", "1234.5"), never with an exponent.
std::string TextOfSingle(float number);

// The number that a text is: an optional sign, decimal digits, a fraction, an exponent, blanks
// around it. Raises Error (kTypeMismatch) for any other text, also for one too large.
double NumberFromText(const std::string& text);

}  // namespace scrivo
