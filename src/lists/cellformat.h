#pragma once
// How the list writes numbers into its cells.
#include <QString>

// "###,###,##0": 1234567 -> "1,234,567", 0 -> "0", -1234 -> "-1,234".
QString FormatWholeNumber(qint64 value);
// The same into out, reusing its buffer (the list formats cells in long loops).
void FormatWholeNumberInto(qint64 value, QString& out);
// Rounded to 2 decimals (ties to even) and written without trailing zeros: 2.5 -> "2.5",
// 3.14159 -> "3.14", 3.0 -> "3", -0.001 -> "0".
QString FormatFractionNumber(double value);
void FormatFractionNumberInto(double value, QString& out);
double RoundTo2(double value);
// A number written the way CStr wrote one: up to 15 significant digits, "E+" exponents for very
// large or small values.
QString VbNumberText(double value);

// The word a price stands for, or an empty text for an ordinary price. A purchase price of -2 is
// "Mission Reward", -1 "Loot Only", 0 "Unknown" (read as a whole number); a manufacturing fee below 0 is
// "Not Manufacturable" and 0 "Unknown". The lists and the record views show the same words.
QString PriceWord(double value, bool manufactureFee);
