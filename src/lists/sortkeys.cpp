#include "lists/sortkeys.h"

#include <QDate>
#include <QTime>

#include <cmath>

QString InvertDigits(const QString& text) {
    QString out = text;
    for (QChar& c : out) {
        const char16_t u = c.unicode();
        if (u >= u'0' && u <= u'9')
            c = QChar(char16_t(u'9' - (u - u'0')));
        else if (u == u'-')
            c = QLatin1Char(' ');
    }
    return out;
}

bool ParseListNumber(QStringView text, double* value) {
    // Blanks, one sign, digits with grouping commas (not before the first digit), one point, an
    // exponent. That covers every number the list writes; "N/A", "-" and the empty text are not.
    qsizetype i = 0, n = text.size();
    while (i < n && text[i] == u' ')
        ++i;
    while (n > i && text[n - 1] == u' ')
        --n;
    QByteArray plain;
    plain.reserve(n - i);
    if (i < n && (text[i] == u'-' || text[i] == u'+'))
        plain.append(char(text[i++].unicode()));
    bool digits = false, point = false;
    int significant = 0;
    bool leading = true;
    for (; i < n; ++i) {
        const char16_t c = text[i].unicode();
        if (c >= u'0' && c <= u'9') {
            digits = true;
            if (c != u'0' || !leading) {
                leading = false;
                ++significant;
            }
            plain.append(char(c));
        } else if (c == u',' && digits && !point) {
            continue;
        } else if (c == u'.' && !point) {
            point = true;
            plain.append('.');
        } else {
            break;
        }
    }
    if (!digits)
        return false;
    if (i < n && (text[i] == u'e' || text[i] == u'E')) {
        plain.append('e');
        ++i;
        if (i < n && (text[i] == u'-' || text[i] == u'+'))
            plain.append(char(text[i++].unicode()));
        bool expDigits = false;
        for (; i < n && text[i] >= u'0' && text[i] <= u'9'; ++i) {
            plain.append(char(text[i].unicode()));
            expDigits = true;
        }
        if (!expDigits)
            return false;
    }
    if (i != n)
        return false;
    bool ok = false;
    double v = plain.toDouble(&ok);
    if (!ok || !std::isfinite(v))
        return false;
    if (significant > 15) // a double keeps 15 digits; the list's keys were written from those
        v = QString::number(v, 'e', 14).toDouble();
    *value = v;
    return true;
}

namespace {
// v >= 0 written with 30 integer digits (more when it has more), ".", and 30 decimals, from the 15
// significant digits a double holds.
QString fixedKey(double v) {
    QString intPart, fraction;
    if (v != 0.0) {
        const QString e = QString::number(v, 'e', 14); // d.dddddddddddddde+XX
        const qsizetype ePos = e.indexOf(QLatin1Char('e'));
        QString digits = e.left(ePos);
        digits.remove(QLatin1Char('.'));
        const int exp = e.mid(ePos + 1).toInt();
        if (exp >= 0) {
            if (digits.size() <= exp + 1) {
                intPart = digits + QString(exp + 1 - digits.size(), QLatin1Char('0'));
            } else {
                intPart = digits.left(exp + 1);
                fraction = digits.mid(exp + 1);
            }
        } else {
            fraction = QString(-exp - 1, QLatin1Char('0')) + digits;
        }
    }
    if (intPart.size() < 30)
        intPart = QString(30 - intPart.size(), QLatin1Char('0')) + intPart;
    fraction = fraction.left(30);
    fraction += QString(30 - fraction.size(), QLatin1Char('0'));
    return intPart + QLatin1Char('.') + fraction;
}
} // namespace

QString NumberSortText(const QString& cellText) {
    double v = 0;
    if (!ParseListNumber(cellText, &v))
        return QString();
    if (v >= 0)
        return fixedKey(v);
    return QLatin1Char('&') + InvertDigits(fixedKey(0 - v));
}

namespace {
template <typename View> bool readInt(View s, qsizetype& i, int minDigits, int maxDigits, int* out) {
    int v = 0, d = 0;
    while (i < s.size() && d < maxDigits && s[i] >= u'0' && s[i] <= u'9') {
        v = v * 10 + (s[i].unicode() - '0');
        ++i;
        ++d;
    }
    *out = v;
    return d >= minDigits;
}

template <typename View> bool parseTime(View s, qsizetype& i, int* h, int* m, int* sec) {
    *sec = 0;
    if (!readInt(s, i, 1, 2, h) || i >= s.size() || s[i] != u':')
        return false;
    ++i;
    if (!readInt(s, i, 2, 2, m))
        return false;
    if (i < s.size() && s[i] == u':') {
        ++i;
        if (!readInt(s, i, 2, 2, sec))
            return false;
        if (i < s.size() && s[i] == u'.') { // fractions of a second are dropped
            ++i;
            int ignored;
            readInt(s, i, 1, 9, &ignored);
        }
    }
    qsizetype j = i;
    while (j < s.size() && s[j] == u' ')
        ++j;
    if (j + 1 < s.size() && (s[j] == u'A' || s[j] == u'a' || s[j] == u'P' || s[j] == u'p') &&
        (s[j + 1] == u'M' || s[j + 1] == u'm')) {
        if (*h < 1 || *h > 12)
            return false;
        const bool pm = s[j] == u'P' || s[j] == u'p';
        *h = (*h % 12) + (pm ? 12 : 0);
        i = j + 2;
    }
    return *h < 24 && *m < 60 && *sec < 60;
}
// "yyyy-mm-dd hh:nn:ss", the form the database keeps, read without the general parser.
template <typename View> bool storedForm(View s, qint64* key) {
    static constexpr char shape[] = "dddd-dd-dd dd:dd:dd";
    if (s.size() != 19)
        return false;
    int v[6] = {0, 0, 0, 0, 0, 0};
    int field = 0;
    for (int i = 0; i < 19; ++i) {
        const char16_t c = s[i].unicode();
        if (shape[i] == 'd') {
            if (c < '0' || c > '9')
                return false;
            v[field] = v[field] * 10 + (c - '0');
        } else if (c != char16_t(shape[i])) {
            return false;
        } else {
            ++field;
        }
    }
    const int y = v[0], mo = v[1], d = v[2];
    if (y < 100 || mo < 1 || mo > 12 || d < 1 || (d > 28 && !QDate::isValid(y, mo, d)) || v[3] > 23 ||
        v[4] > 59 || v[5] > 59)
        *key = -1;
    else
        *key = ((((qint64(y) * 100 + mo) * 100 + d) * 100 + v[3]) * 100 + v[4]) * 100 + v[5];
    return true;
}

template <typename View> qint64 dateKey(View text) {
    qint64 stored;
    if (storedForm(text, &stored))
        return stored;
    qsizetype i = 0;
    const View s = text.trimmed();
    if (s.isEmpty())
        return -1;
    int y = 1899, mo = 12, d = 30, h = 0, mi = 0, sec = 0; // a time alone is on day zero
    int a = 0;
    const qsizetype start = i;
    bool timeOnly = false;
    if (!readInt(s, i, 1, 4, &a))
        return -1;
    if (i < s.size() && s[i] == u':') {
        timeOnly = true;
        i = start;
        if (!parseTime(s, i, &h, &mi, &sec))
            return -1;
    } else if (i - start == 4 && i < s.size() && s[i] == u'-') {
        y = a;
        ++i;
        if (!readInt(s, i, 1, 2, &mo) || i >= s.size() || s[i] != u'-')
            return -1;
        ++i;
        if (!readInt(s, i, 1, 2, &d))
            return -1;
    } else if (i < s.size() && s[i] == u'/') {
        mo = a;
        ++i;
        if (!readInt(s, i, 1, 2, &d) || i >= s.size() || s[i] != u'/')
            return -1;
        ++i;
        const qsizetype ys = i;
        if (!readInt(s, i, 2, 4, &y) || i - ys == 3)
            return -1;
        if (i - ys == 2) // two-digit years: 00-29 are 2000-2029, 30-99 are 1930-1999
            y += y < 30 ? 2000 : 1900;
    } else {
        return -1;
    }
    if (!timeOnly && i < s.size()) {
        if (s[i] != u' ' && s[i] != u'T')
            return -1;
        while (i < s.size() && (s[i] == u' ' || s[i] == u'T'))
            ++i;
        if (!parseTime(s, i, &h, &mi, &sec))
            return -1;
    }
    if (i != s.size())
        return -1;
    if (y < 100 || y > 9999 || !QDate::isValid(y, mo, d))
        return -1;
    return ((((qint64(y) * 100 + mo) * 100 + d) * 100 + h) * 100 + mi) * 100 + sec;
}
} // namespace

qint64 DateSortKey(QStringView text) {
    return dateKey(text);
}
qint64 DateSortKey(QLatin1StringView text) {
    return dateKey(text);
}

QString DateSortText(const QString& cellText) {
    const qint64 k = DateSortKey(cellText);
    return k < 0 ? QString() : QString::number(k).rightJustified(14, QLatin1Char('0'));
}
