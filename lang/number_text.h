#pragma once

#include <string>

namespace orva {

/// `value` rounded to `decimals` places (0..9), halves to even.
double roundedTo(double value, int decimals);

/// `value` with exactly `decimals` places (0..9) and "." as the decimal point, whatever the locale;
/// "inf", "-inf", "nan" for what is no number. What rounds to zero has no minus sign.
std::string fixedText(double value, int decimals);

/// A level in dB with one decimal; "-" for what is not heard.
std::string levelText(double levelDb);

/// `value` rounded to at most `decimals` places, without trailing zeros; otherwise like
/// fixedText().
std::string plainText(double value, int decimals);

/// The shortest decimal text that gives the same 32-bit float back.
std::string floatText(float value);

} // namespace orva
