// The list sort's engine: the case folding of stored UTF-8, the ranking of texts and numbers, the
// radix sort under them, and the ranks a column keeps and extends as rows are appended. Each is
// checked against a plain reference (QString folding, std::sort) on hand-picked and seeded random
// data.
#include "mixedtexts.h"

#include "lists/foldedtexts.h"
#include "lists/keptranks.h"
#include "lists/radixsort.h"
#include "lists/textranks.h"

#include <QTest>

#include <algorithm>
#include <map>

namespace {
using mixedtexts::folded;

// Dense ranks of values by a plain sort: equal values share a rank.
template <typename T> std::vector<uint32_t> referenceRanks(const std::vector<T>& values) {
    std::vector<T> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    std::vector<uint32_t> out;
    for (const T& v : values)
        out.push_back(uint32_t(std::lower_bound(sorted.begin(), sorted.end(), v) - sorted.begin()));
    return out;
}

// Texts of one kind: mixed alphabets, one long shared prefix with short tails, few values (one
// piece each), or texts holding NUL bytes (some differing only in trailing NULs).
std::vector<std::string> texts(const QString& kind, int count, quint32 seed) {
    QRandomGenerator rng(seed);
    std::vector<std::string> out;
    for (int i = 0; i < count; ++i) {
        if (kind == QLatin1String("mixed")) {
            out.push_back(mixedtexts::randomText(rng).toStdString());
        } else if (kind == QLatin1String("prefixed")) {
            out.push_back((QStringLiteral("Synthetic Equipment Beam Mark ") + mixedtexts::randomText(rng, 1) +
                           QString::number(rng.bounded(5000)))
                              .toStdString());
        } else if (kind == QLatin1String("few")) {
            out.push_back(mixedtexts::randomText(rng, 1).toStdString());
        } else {
            std::string s = mixedtexts::randomText(rng, 1).toStdString();
            s.append(rng.bounded(3), '\0');
            if (rng.bounded(2))
                s += mixedtexts::randomText(rng, 1).toStdString();
            out.push_back(s);
        }
    }
    return out;
}

// Ranks over a vector of texts (already folded) or numbers, counting the rows it is asked to rank.
class VectorSource : public ranks::RankSource {
public:
    std::vector<std::string> text;
    std::vector<uint64_t> number; // used when not empty
    size_t ranked = 0;

    uint32_t rank(const ranks::Rows& rows, uint32_t* out) override {
        ranked += rows.size();
        if (!number.empty()) {
            std::vector<uint64_t> k;
            keys(rows, k);
            return ranks::RankKeys(k.data(), k.size(), out);
        }
        ranks::FoldedTexts t;
        for (size_t i = 0; i < rows.size(); ++i)
            t.addFolded(text[rows[i]]);
        return ranks::RankTexts(t, out);
    }
    int compare(size_t a, size_t b) override {
        if (!number.empty())
            return number[a] < number[b] ? -1 : number[a] > number[b] ? 1 : 0;
        return text[a].compare(text[b]);
    }
    bool keys(const ranks::Rows& rows, std::vector<uint64_t>& out) override {
        if (number.empty())
            return false;
        out.clear();
        for (size_t i = 0; i < rows.size(); ++i)
            out.push_back(number[rows[i]]);
        return true;
    }
};

std::vector<uint32_t> ranksOf(const ranks::ColumnRanks& r) {
    std::vector<uint32_t> out;
    for (size_t i = 0; i < r.rows(); ++i)
        out.push_back(r[i]);
    return out;
}

// The rows of order stably sorted by a value per row, as the list must order them.
template <typename T>
std::vector<uint32_t> referenceOrder(std::vector<uint32_t> order, const std::vector<T>& value,
                                     bool descending) {
    std::stable_sort(order.begin(), order.end(), [&](uint32_t a, uint32_t b) {
        return descending ? value[b] < value[a] : value[a] < value[b];
    });
    return order;
}

std::vector<uint64_t> numbers(const QString& kind, int count, quint32 seed) {
    QRandomGenerator64 rng(seed);
    std::vector<uint64_t> out;
    for (int i = 0; i < count; ++i) {
        const uint64_t r = rng.generate();
        if (kind == QLatin1String("equal"))
            out.push_back(42);
        else if (kind == QLatin1String("few"))
            out.push_back((r % 7) << 40);
        else if (kind == QLatin1String("wide")) // two bytes taking every value: sorted byte by byte
            out.push_back(r & 0xFF00FF00ull);
        else if (kind == QLatin1String("digits")) // ASCII digits in the low bytes, like text keys
            out.push_back(0x3030303030303030ull + ((r % 10) << 8) + ((r >> 8) % 10) +
                          (((r >> 16) % 10) << 24));
        else
            out.push_back(r);
    }
    return out;
}
} // namespace

class TestSortRanks : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // Stored UTF-8, folded, is the UTF-8 of the QString folding: byte by byte for ASCII, eight bytes
    // at a time across the blocks' edges, code point by code point for the rest, through a QString
    // for text QString reads otherwise (malformed sequences, a leading byte-order mark).
    void foldUtf8_data() {
        QTest::addColumn<QByteArray>("utf8");
        auto row = [](const char* tag, const QByteArray& b) { QTest::newRow(tag) << b; };
        row("empty", QByteArray());
        row("ASCII, every capital", "ABCDEFGHIJKLMNOPQRSTUVWXYZ@[`{ az09");
        row("ASCII across 8-byte blocks", "Synthetic EQUIPMENT Beam MK-II 0000001 ZZ");
        row("Latin diacritics", QStringLiteral("ÉLAN Ørsted ŠÁRKA Ångström").toUtf8());
        row("Greek, final sigma", QStringLiteral("ΣΟΦΟΣ σοφος Ά").toUtf8());
        row("Cyrillic", QStringLiteral("ЗВЕЗДА Ёлка").toUtf8());
        row("CJK", QStringLiteral("星舰 Beam").toUtf8());
        row("beyond the BMP", QString::fromUcs4(U"\U00010400\U00010427 \U0001F600x").toUtf8());
        row("Kelvin sign, sharp and long s", QStringLiteral("\u212A ß ẞ ſ STRASSE").toUtf8());
        row("folding grows the text", QStringLiteral("ȺȾ").toUtf8());
        row("fullwidth", QStringLiteral("ＡＢＣ").toUtf8());
        row("NUL inside", QByteArray("a\0B\0", 4));
        row("non-ASCII right after a block", QStringLiteral("ABCDEFGHÉ").toUtf8());
        row("overlong", QByteArray("A\xC0\x80Z"));
        row("lone continuation", QByteArray("A\x80Z"));
        row("encoded surrogate", QByteArray("A\xED\xA0\x80Z"));
        row("beyond U+10FFFF", QByteArray("A\xF4\x90\x80\x80Z"));
        row("truncated at the end", QByteArray("AB\xE2\x82"));
        row("byte-order mark in front", QByteArray("\xEF\xBB\xBF"
                                                   "ABC"));
        row("byte-order mark inside", QByteArray("A\xEF\xBB\xBF"
                                                 "BC"));
    }
    void foldUtf8() {
        QFETCH(QByteArray, utf8);
        const std::string_view in(utf8.constData(), size_t(utf8.size()));
        const QByteArray expected = QString::fromUtf8(utf8).toCaseFolded().toUtf8();
        std::string out = "kept:";
        ranks::FoldUtf8(in, out);
        QCOMPARE(QByteArray::fromStdString(out), "kept:" + expected);
        ranks::FoldedTexts t;
        t.add(in);
        t.add(QString::fromUtf8(utf8));
        QCOMPARE(t.size(), size_t(2));
        t.forEach([&](size_t, uint32_t pos) {
            const std::string_view got = t.textAt(pos);
            QCOMPARE(QByteArray(got.data(), qsizetype(got.size())), expected);
        });
        QCOMPARE(t.hasNul(), expected.contains('\0'));
    }

    // Texts of every length among short ones: 254 and 255 bytes (the head grows), and a text longer
    // than a storage chunk, which the walk through the texts steps over.
    void rankTextsOfEveryLength() {
        const std::vector<std::string> raw = {"b",
                                              std::string(254, 'a'),
                                              std::string(5 << 20, 'A') + "x",
                                              std::string(255, 'a'),
                                              "a",
                                              std::string(255, 'a') + "B",
                                              "",
                                              "c"};
        ranks::FoldedTexts t;
        std::vector<std::string> reference;
        for (const std::string& s : raw) {
            t.add(s);
            reference.push_back(folded(QString::fromStdString(s)));
        }
        std::vector<std::string> walked;
        t.forEach([&](size_t i, uint32_t pos) {
            QCOMPARE(i, walked.size());
            walked.emplace_back(t.textAt(pos));
        });
        QVERIFY(walked == reference);
        std::vector<uint32_t> got(raw.size());
        QCOMPARE(ranks::RankTexts(t, got.data()), 8u);
        QCOMPARE(got, referenceRanks(reference));
    }

    // Random bytes: valid letters of every alphabet above, capitals, and stray bytes that make the
    // text malformed.
    void foldUtf8RandomBytes() {
        QRandomGenerator rng(7001);
        for (int i = 0; i < 20000; ++i) {
            QByteArray b;
            const int parts = int(rng.bounded(6));
            for (int p = 0; p < parts; ++p) {
                switch (rng.bounded(4)) {
                case 0:
                    b += mixedtexts::randomText(rng, 1).toUtf8();
                    break;
                case 1:
                    b += char('A' + rng.bounded(26));
                    break;
                case 2:
                    b += "Synthetic BEAM";
                    break;
                default:
                    b += char(0x80 + rng.bounded(0x80));
                }
            }
            std::string out;
            ranks::FoldUtf8(std::string_view(b.constData(), size_t(b.size())), out);
            QVERIFY2(QByteArray::fromStdString(out) == QString::fromUtf8(b).toCaseFolded().toUtf8(),
                     b.toHex().constData());
        }
    }

    // Ranks of texts equal those of a plain sort of the folded texts, for every path through the
    // ranking: small runs, few values counted, many sorted by radix, deep levels read one by one or
    // in sweeps, texts that differ only in trailing NUL bytes.
    void rankTexts_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("count");
        for (const char* kind : {"mixed", "prefixed", "few", "nul"})
            for (int count : {1, 20, 700, 30000})
                QTest::addRow("%s, %d", kind, count) << QString::fromLatin1(kind) << count;
    }
    void rankTexts() {
        QFETCH(QString, kind);
        QFETCH(int, count);
        const std::vector<std::string> raw = texts(kind, count, 4242 + quint32(count));
        ranks::FoldedTexts t;
        std::vector<std::string> reference;
        for (const std::string& s : raw) {
            t.add(s);
            reference.push_back(folded(QString::fromUtf8(s.data(), qsizetype(s.size()))));
        }
        std::vector<uint32_t> got(raw.size());
        const uint32_t groups = ranks::RankTexts(t, got.data());
        const std::vector<uint32_t> expected = referenceRanks(reference);
        QCOMPARE(got, expected);
        QCOMPARE(groups, expected.empty() ? 0u : *std::max_element(expected.begin(), expected.end()) + 1);
    }

    void rankKeys_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("count");
        for (const char* kind : {"equal", "few", "wide", "digits", "random"})
            for (int count : {0, 5, 100, 50000})
                QTest::addRow("%s, %d", kind, count) << QString::fromLatin1(kind) << count;
    }
    void rankKeys() {
        QFETCH(QString, kind);
        QFETCH(int, count);
        const std::vector<uint64_t> keys = numbers(kind, count, 99);
        std::vector<uint32_t> got(keys.size());
        ranks::RankKeys(keys.data(), keys.size(), got.data());
        QCOMPARE(got, referenceRanks(keys));
    }

    // The radix sort keeps equal keys in the order they came in, byte by byte and packed alike.
    void radixSortIsStable_data() { rankKeys_data(); }
    void radixSortIsStable() {
        QFETCH(QString, kind);
        QFETCH(int, count);
        const std::vector<uint64_t> keys = numbers(kind, count, 1234);
        std::vector<radix::KeyRow> v;
        for (size_t i = 0; i < keys.size(); ++i)
            v.push_back({keys[i], uint32_t(i), 0});
        radix::Scratch<radix::KeyRow> tmp;
        radix::sortKeyRows(v.data(), v.size(), tmp);
        for (size_t i = 1; i < v.size(); ++i) {
            const uint64_t a = keys[v[i - 1].row], b = keys[v[i].row];
            QVERIFY2(a < b || (a == b && v[i - 1].row < v[i].row), qPrintable(QString::number(i)));
            QCOMPARE(v[i - 1].key == v[i].key, a == b); // keys may be renumbered, never merged
        }
    }

    // Rows appended in slices and merged into the kept ranks give the ranks of ranking all at once,
    // whichever way each slice is merged: with the old values' representatives (a small first slice,
    // then many rows) or by searching the old values (few rows added to many).
    void appendedRowsMergeIntoTheRanks_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QList<int>>("slices");
        const QList<QList<int>> slicings = {
            {1, 1, 1, 1, 1, 1, 1, 1}, {5, 3000}, {3000, 7, 1, 200}, {400, 400, 400}};
        for (const char* kind : {"mixed", "prefixed", "few", "numbers"})
            for (const QList<int>& s : slicings) {
                QStringList names;
                for (int n : s)
                    names << QString::number(n);
                QTest::addRow("%s, slices %s", kind, qPrintable(names.join(u'+')))
                    << QString::fromLatin1(kind) << s;
            }
    }
    void appendedRowsMergeIntoTheRanks() {
        QFETCH(QString, kind);
        QFETCH(QList<int>, slices);
        int total = 0;
        for (int n : slices)
            total += n;
        VectorSource source;
        if (kind == QLatin1String("numbers")) {
            source.number = numbers(QStringLiteral("few"), total, 5);
            for (int i = 0; i < total; i += 3)
                source.number[size_t(i)] = uint64_t(i) << 20; // new values between the old ones
        } else {
            for (const std::string& s : texts(kind, total, 77))
                source.text.push_back(folded(QString::fromStdString(s)));
        }
        ranks::ColumnRanks kept;
        size_t covered = 0;
        for (int n : slices) {
            const size_t before = source.ranked, groupsBefore = kept.groups();
            covered += size_t(n);
            kept.cover(source, covered);
            QCOMPARE(kept.rows(), covered);
            // The new rows, and at most one row for each value ranked before.
            QVERIFY(source.ranked - before <= size_t(n) + groupsBefore);
            ranks::ColumnRanks atOnce;
            VectorSource fresh = source;
            atOnce.cover(fresh, covered);
            QCOMPARE(ranksOf(kept), ranksOf(atOnce));
            QCOMPARE(kept.groups(), atOnce.groups());
        }
    }

    // Sorting by kept ranks is stable in both directions and agrees with a plain stable sort of the
    // values; a first sort by numeric keys ranks on the way and gives the same.
    void sortByRanks_data() {
        QTest::addColumn<bool>("numeric");
        QTest::addColumn<bool>("descending");
        QTest::addColumn<bool>("everyRow");
        for (bool numeric : {false, true})
            for (bool descending : {false, true})
                for (bool everyRow : {false, true})
                    QTest::addRow("%s, %s, %s", numeric ? "numbers" : "texts",
                                  descending ? "descending" : "ascending",
                                  everyRow ? "every row" : "some rows")
                        << numeric << descending << everyRow;
    }
    void sortByRanks() {
        QFETCH(bool, numeric);
        QFETCH(bool, descending);
        QFETCH(bool, everyRow);
        constexpr int Rows = 5000;
        VectorSource source;
        if (numeric)
            source.number = numbers(QStringLiteral("few"), Rows, 3);
        else
            for (const std::string& s : texts(QStringLiteral("mixed"), Rows, 3))
                source.text.push_back(folded(QString::fromStdString(s)));
        // Some view order to keep ties in: a shuffle, or every third row of it.
        std::vector<uint32_t> order;
        for (uint32_t r = 0; r < Rows; ++r)
            order.push_back(r);
        QRandomGenerator rng(11);
        std::shuffle(order.begin(), order.end(), rng);
        if (!everyRow)
            order.erase(std::remove_if(order.begin(), order.end(), [](uint32_t r) { return r % 3; }),
                        order.end());
        const std::vector<uint32_t> expected = numeric ? referenceOrder(order, source.number, descending)
                                                       : referenceOrder(order, source.text, descending);
        ranks::KeptRanks kept;
        QCOMPARE(kept.sorted(0, 1, source, Rows, order, descending), expected); // first sort
        QVERIFY(kept.has(0, 1));
        const size_t ranked = source.ranked;
        QCOMPARE(kept.sorted(0, 1, source, Rows, order, descending), expected); // by the kept ranks
        QCOMPARE(source.ranked, ranked);
    }

    // The ranks of the two columns sorted last are kept, 4 bytes a row each; a column whose kind of
    // key changes is ranked afresh.
    void keptRanksOfTheLastTwoColumns() {
        constexpr size_t Rows = 1000;
        VectorSource source;
        for (const std::string& s : texts(QStringLiteral("mixed"), int(Rows), 8))
            source.text.push_back(folded(QString::fromStdString(s)));
        std::vector<uint32_t> order(Rows / 2); // not every row: ranked through cover()
        for (size_t i = 0; i < order.size(); ++i)
            order[i] = uint32_t(2 * i);
        ranks::KeptRanks kept;
        auto sortBy = [&](int column, int kind) {
            const size_t before = source.ranked;
            kept.sorted(column, kind, source, Rows, order, false);
            return source.ranked - before; // rows ranked for this sort
        };
        QCOMPARE(sortBy(0, 0), Rows);
        QCOMPARE(sortBy(1, 0), Rows);
        QCOMPARE(sortBy(0, 0), size_t(0));
        QCOMPARE(kept.bytes(), 2 * Rows * sizeof(uint32_t));
        QCOMPARE(sortBy(2, 0), Rows); // column 1 goes
        QVERIFY(!kept.has(1, 0) && kept.has(0, 0) && kept.has(2, 0));
        QCOMPARE(kept.bytes(), 2 * Rows * sizeof(uint32_t));
        QCOMPARE(sortBy(1, 0), Rows);
        QCOMPARE(sortBy(1, 2), Rows); // the same column, now dates
        QVERIFY(!kept.has(1, 0) && kept.has(1, 2));
    }
};

QTEST_MAIN(TestSortRanks)
#include "tst_sortranks.moc"
