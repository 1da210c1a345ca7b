// The collation, LIKE and UTF-8 check that every connection registers, on their own and on the real
// schema: names, lookups, = and LIKE agree on one case folding, and a connection without them can
// still read whole tables.
#include "core/casefold.h"
#include "data/database.h"
#include "data/recordset.h"
#include "data/sqlfunctions.h"
#include "enginedb.h"
#include "tst_sampledata_db.h"

#include <QRandomGenerator>
#include <QTest>

namespace {
int sign(int v) {
    return (v > 0) - (v < 0);
}
} // namespace

class TestSqlFunctions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        m_dir = std::make_unique<QTemporaryDir>();
        m_path = enginedb::create(*m_dir);
        QVERIFY(!m_path.isEmpty());
        m_cn.open(enginedb::connectionFor(m_path));
    }
    void cleanup() {
        m_cn.close();
        m_dir.reset();
    }
    void compareFolded_data() {
        QTest::addColumn<QByteArray>("a");
        QTest::addColumn<QByteArray>("b");
        QTest::addColumn<int>("order");
        auto row = [](const char* tag, const QByteArray& a, const QByteArray& b, int order) {
            QTest::newRow(tag) << a << b << order;
        };
        row("ascii case", "Field Welder", "FIELD welder", 0);
        row("ascii order ignores case", "apple", "Banana", -1);
        row("latin", "Éclair", "éCLAIR", 0);
        row("sharp s is not ss", "straße", "strasse", 1);
        row("dotted capital I stays itself", "\u0130", "i", 1);
        row("malformed byte equals only itself", "a\xFF", "A\xFF", 0);
        row("empty", QByteArray(), "a", -1);
    }
    void compareFolded() {
        QFETCH(QByteArray, a);
        QFETCH(QByteArray, b);
        QFETCH(int, order);
        QCOMPARE(sign(CompareFolded(a, b)), order);
        QCOMPARE(sign(CompareFolded(b, a)), -order);
    }
    // Random texts of ASCII, Latin, Greek (sigmas), the Kelvin sign, sharp s and letters beyond the BMP,
    // seeded: the byte-wise collation orders them as their case foldings, character by character.
    void compareAgreesWithFoldedTexts() {
        const QList<char32_t> alphabet = {U'a',  U'A',  U'z',   U'Z', U'_',   U'0', 0xC9,    0xE9,    0x3A3,
                                          0x3C2, 0x3C3, 0x212A, U'k', 0x1E9E, 0xDF, 0x10400, 0x10428, 0x4E2D};
        QRandomGenerator rng(20261121);
        auto text = [&] {
            QList<char32_t> s(rng.bounded(5));
            for (char32_t& c : s)
                c = alphabet[rng.bounded(int(alphabet.size()))];
            return QString::fromUcs4(s.constData(), s.size());
        };
        for (int i = 0; i < 20000; ++i) {
            const QString a = text(), b = text();
            const QList<uint> fa = FoldCase(a).toUcs4(), fb = FoldCase(b).toUcs4();
            const int expected = fa < fb ? -1 : (fb < fa ? 1 : 0);
            if (sign(CompareFolded(a.toUtf8(), b.toUtf8())) != expected)
                QFAIL(qPrintable(a + " / " + b));
        }
    }
    void like_data() {
        QTest::addColumn<QByteArray>("pattern");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<uint>("escape");
        QTest::addColumn<bool>("match");
        auto row = [](const char* tag, const char* pattern, const char* text, char escape, bool match) {
            QTest::newRow(tag) << QByteArray(pattern) << QByteArray(text) << uint(escape) << match;
        };
        row("contains, any case", "%beam%", "Heavy BEAM II", 0, true);
        row("contains beyond ascii", "%ÉCLAIR%", "Mini éclair", 0, true);
        row("underscore is one character, not one byte", "_clair", "Éclair", 0, true);
        row("percent takes nothing too", "a%b", "ab", 0, true);
        row("backtracking", "%abd", "abcabd", 0, true);
        row("whole text, not a prefix", "beam", "beams", 0, false);
        row("escaped percent is no wildcard", "50!%", "500", '!', false);
        row("trailing escape matches nothing", "a!", "a", '!', false);
        row("sharp s is not ss", "%ss%", "straße", 0, false);
        row("beyond the BMP", "\U00010400_", "\U00010428x", 0, true);
    }
    void like() {
        QFETCH(QByteArray, pattern);
        QFETCH(QByteArray, text);
        QFETCH(uint, escape);
        QFETCH(bool, match);
        QCOMPARE(LikeFolded(pattern, text, char32_t(escape)), match);
        // The same through the engine's LIKE operator.
        Recordset rs;
        rs.open(QStringLiteral("SELECT IIF('%1' LIKE '%2'%3, 1, 0)")
                    .arg(QString::fromUtf8(text), QString::fromUtf8(pattern),
                         escape ? QStringLiteral(" ESCAPE '%1'").arg(QChar(escape)) : QString()),
                m_cn);
        QCOMPARE(rs.intValue(0) == 1, match);
    }
    void validUtf8_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("valid");
        for (const auto& [tag, bytes, valid] : {std::tuple{"ascii", "Field Welder", true},
                                                {"two to four bytes", "é \u4E2D \U00010400", true},
                                                {"stray continuation", "a\x80", false},
                                                {"cut short", "a\xE4\xB8", false},
                                                {"overlong slash", "\xC0\xAF", false},
                                                {"surrogate", "\xED\xA0\x80", false},
                                                {"above U+10FFFF", "\xF4\x90\x80\x80", false},
                                                {"latin-1 byte", "Caf\xE9", false}})
            QTest::newRow(tag) << QByteArray(bytes) << valid;
    }
    void validUtf8() {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, valid);
        QCOMPARE(IsValidUtf8(bytes), valid); // the name columns' check: see the schema's test
    }
    // A name stored in one case is the same record in another: the unique index refuses the second,
    // = and LIKE find the first (ASCII and Latin letters: see the schema's test of every name column).
    void namesAgreeOnTheFolding_data() {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("same");
        for (const auto& [stored, typed, same] : {std::tuple{"Σφαίρα", "ΣΦΑΊΡΑ", true},
                                                  {"\U00010400 Relic", "\U00010428 relic", true},
                                                  {"Eclair", "Éclair", false},
                                                  {"Straße", "STRASSE", false}})
            QTest::newRow(typed) << QString::fromUtf8(stored) << QString::fromUtf8(typed) << same;
    }
    void namesAgreeOnTheFolding() {
        QFETCH(QString, stored);
        QFETCH(QString, typed);
        QFETCH(bool, same);
        m_cn.execute("INSERT INTO ITEMS (ITEM_NAME, LVL) VALUES ('" + stored + "', 9)");
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME = '" + typed + "'"), long(same));
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE ITEM_NAME LIKE '" + typed + "'"), long(same));
        QCOMPARE(count("SELECT COUNT(*) FROM ITEMS WHERE LVL = 9 AND ITEM_NAME IN (SELECT '" + typed + "')"),
                 long(same));
        if (same) {
            QVERIFY_THROWS_EXCEPTION(VbError,
                                     m_cn.execute("INSERT INTO ITEMS (ITEM_NAME) VALUES ('" + typed + "')"));
            QCOMPARE(m_cn.errors().first().NativeError, long(SQLITE_CONSTRAINT_UNIQUE));
        } else {
            QCOMPARE(m_cn.execute("INSERT INTO ITEMS (ITEM_NAME) VALUES ('" + typed + "')"), 1L);
        }
    }
    void likeInStatements() {
        for (const char* name : {"Éclair Beam", "ÉCLAIR Lance", "Eclair Torch"})
            m_cn.execute(QStringLiteral("INSERT INTO EQUIPMENTS (EQUIPMENT_NAME) VALUES ('%1')")
                             .arg(QString::fromUtf8(name)));
        // The game channel's search: the keyword anywhere in the name, sorted without regard to case.
        Recordset rs;
        rs.open("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE EQUIPMENT_NAME LIKE '%éclair%' ORDER BY "
                "EQUIPMENTS.EQUIPMENT_NAME",
                m_cn);
        QStringList names;
        for (; !rs.eof(); rs.moveNext())
            names << rs.value(0).toString();
        QCOMPARE(names, QStringList({"Éclair Beam", "ÉCLAIR Lance"}));
        QCOMPARE(count("SELECT COUNT(*) FROM EQUIPMENTS WHERE EQUIPMENT_NAME LIKE NULL"), 0L);
        QVERIFY_THROWS_EXCEPTION(
            VbError, count("SELECT COUNT(*) FROM EQUIPMENTS WHERE EQUIPMENT_NAME LIKE 'a' ESCAPE 'xy'"));
    }
    // The in-use triggers compare with the column's collation: a lookup value in use in another case
    // cannot be deleted either.
    void lookupInUseWhateverItsCase() {
        m_cn.execute("INSERT INTO FACTIONS (FACTION) VALUES ('Église')");
        m_cn.execute("UPDATE MOBS SET FACTION = 'ÉGLISE' WHERE MOB_NAME = 'Void Eel'");
        QVERIFY_THROWS_EXCEPTION(VbError, m_cn.execute("DELETE FROM FACTIONS WHERE FACTION = 'église'"));
        QCOMPARE(m_cn.errors().first().NativeError, long(SQLITE_CONSTRAINT_TRIGGER));
        QCOMPARE(count("SELECT COUNT(*) FROM FACTIONS"), 1L);
    }
    // Without the program's functions (as the plain sqlite3 shell opens the file) whole tables still
    // read; comparing names needs the collation, and writing a name needs the check's function.
    void plainConnectionReadsWholeTables() {
        m_cn.close();
        RawDb shell(m_path, false);
        QCOMPARE(shell.column("SELECT EQUIPMENT_NAME FROM EQUIPMENTS WHERE LVL = 3"),
                 QStringList{"Hunter's Lance"});
        QVERIFY(shell.error().isEmpty());
        QVERIFY(shell.rows("SELECT LVL FROM EQUIPMENTS WHERE EQUIPMENT_NAME = 'x'").isEmpty());
        QCOMPARE(shell.error(), QStringLiteral("no such collation sequence: VOSK_NOCASE"));
        QVERIFY(!shell.exec("UPDATE EQUIPMENTS SET TYPE = 'Beam' WHERE rowid = 1"));
        QCOMPARE(shell.error(), QStringLiteral("unknown function: VOSK_VALID_UTF8()"));
    }

private:
    long count(const QString& sql) { return enginedb::count(sql, m_cn); }
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_path;
    Database m_cn;
};

QTEST_GUILESS_MAIN(TestSqlFunctions)
#include "tst_sqlfunctions.moc"
