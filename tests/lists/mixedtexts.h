#pragma once
// Seeded random texts from mixed alphabets for the sort tests, and the plain order they are checked
// against: texts compared by their case-folded code points (the bytes of the folded UTF-8; a QString
// comparison would put letters beyond the BMP before U+E000..U+FFFF).
#include <QRandomGenerator>
#include <QString>
#include <QStringList>

#include <string>

namespace mixedtexts {

// Pieces that fold alike or nearly so in several alphabets: diacritics, Greek final sigma, Cyrillic,
// CJK, letters beyond the BMP (Deseret), fullwidth letters, the Kelvin sign, sharp and long s, words
// sharing long prefixes, digits, blanks.
inline const QStringList& pieces() {
    static const QStringList p = {QStringLiteral("Élan"),
                                  QStringLiteral("élan"),
                                  QStringLiteral("ELAN"),
                                  QStringLiteral("elan"),
                                  QStringLiteral("Ørsted"),
                                  QStringLiteral("Šárka"),
                                  QStringLiteral("sarka"),
                                  QStringLiteral("ΣΟΦΟΣ"),
                                  QStringLiteral("σοφος"),
                                  QStringLiteral("Σοφός"),
                                  QStringLiteral("Звезда"),
                                  QStringLiteral("ЗВЕЗДА"),
                                  QStringLiteral("星舰"),
                                  QStringLiteral("星"),
                                  QString::fromUcs4(U"\U00010400"),
                                  QString::fromUcs4(U"\U00010428"),
                                  QStringLiteral("Ａ"),
                                  QStringLiteral("ａ"),
                                  QStringLiteral("\u212Aelvin"),
                                  QStringLiteral("kelvin"),
                                  QStringLiteral("straße"),
                                  QStringLiteral("STRASSE"),
                                  QStringLiteral("ſtrasse"),
                                  QStringLiteral("ẞ"),
                                  QStringLiteral("Synthetic Equipment Beam "),
                                  QStringLiteral("synthetic equipment beam"),
                                  QStringLiteral("0"),
                                  QStringLiteral("00"),
                                  QStringLiteral("1"),
                                  QStringLiteral(" "),
                                  QStringLiteral("-")};
    return p;
}

// Zero to four pieces; with few pieces many texts repeat or are prefixes of one another.
inline QString randomText(QRandomGenerator& rng, int pieceCount = -1) {
    const QStringList& p = pieces();
    const int n = pieceCount >= 0 ? pieceCount : int(rng.bounded(5));
    QString t;
    for (int i = 0; i < n; ++i)
        t += p[int(rng.bounded(p.size()))];
    return t;
}

inline std::string folded(const QString& text) {
    return text.toCaseFolded().toStdString();
}

} // namespace mixedtexts
