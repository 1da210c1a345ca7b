#pragma once
// The sort keys of the list's column-click: numeric columns sort by value and date columns by time,
// in the order of the fixed-width key texts below (the texts define the order; the sort computes
// numeric keys that agree with them).
#include <QLatin1StringView>
#include <QString>
#include <QStringView>

// "0"<->"9", "1"<->"8", "2"<->"7", "3"<->"6", "4"<->"5", "-" becomes a blank; anything else is kept.
QString InvertDigits(const QString& text);

// The key text of a numeric cell: 30 integer digits "." 30 decimals for v >= 0,
// "&" + InvertDigits of that for -v when v < 0, and empty when the text is not a number.
QString NumberSortText(const QString& cellText);

// Reads a cell text as a number (blanks around, a sign, digit grouping commas,
// a decimal point, an exponent). False for anything else ("N/A", "-", empty).
bool ParseListNumber(QStringView text, double* value);

// A date cell as its "YYYYMMDDHhNnSs" key (e.g. 20240315142005); -1 when the text is not a date.
// Accepts "yyyy-mm-dd[ hh:nn[:ss]]" (also with "T"), "m/d/yyyy[ h:nn[:ss][ AM|PM]]" and a time alone.
qint64 DateSortKey(QStringView text);
qint64 DateSortKey(QLatin1StringView text); // the same over 8-bit (ASCII) text
// The same key as the list wrote it: 14 digits, or empty for an invalid date.
QString DateSortText(const QString& cellText);
