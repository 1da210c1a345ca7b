#include "data/database.h"
#include "data/recordset.h"
#include "data/sqltranslate.h"
#include "enginedb.h"

#include <QTest>

class TestSqlTranslate : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // One row per rule of the translation.
    void translates_data() {
        QTest::addColumn<QString>("jet");
        QTest::addColumn<QString>("sqlite");
        QTest::addColumn<QStringList>("params");
        auto row = [](const char* tag, const char* jet, const char* sqlite, QStringList params = {}) {
            QTest::newRow(tag) << QString::fromUtf8(jet) << QString::fromUtf8(sqlite) << params;
        };
        row("literal lifted, doubled quote undone", "SELECT T FROM E WHERE N = 'Hunter''s Lance'",
            "SELECT T FROM E WHERE N = ?", {"Hunter's Lance"});
        row("empty literal", "SELECT * FROM T WHERE A = ''", "SELECT * FROM T WHERE A = ?", {""});
        row("double-quoted literal is text", "SELECT A FROM T WHERE B = \"x\"\"y\"",
            "SELECT A FROM T WHERE B = ?", {"x\"y"});
        row("bare CHECK and RANGE quoted", "SELECT R, CHECK, RANGE FROM RAW_MATERIALS WHERE CHECK = TRUE",
            "SELECT R, \"CHECK\", \"RANGE\" FROM RAW_MATERIALS WHERE \"CHECK\" = TRUE");
        row("qualified and lower-case check", "SELECT STATIONS.CHECK, check FROM STATIONS",
            "SELECT STATIONS.\"CHECK\", \"check\" FROM STATIONS");
        row("CHECK-like names untouched", "SELECT CHECKED, RANGE_X FROM T", "SELECT CHECKED, RANGE_X FROM T");
        row("update target unqualified, trailing ; dropped",
            "UPDATE EQUIPMENTS SET EQUIPMENTS.CHECK = TRUE, EQUIPMENTS.PRICE = 4 WHERE EQUIPMENT_NAME = 'A';;",
            "UPDATE EQUIPMENTS SET \"CHECK\" = TRUE, PRICE = 4 WHERE EQUIPMENT_NAME = ?", {"A"});
        row("& joins with IIF of two arguments", "SELECT IIF(AMOUNT > 1, ' x' & AMOUNT) AS AMOUNT FROM R",
            "SELECT CASE WHEN AMOUNT > 1 THEN JETCAT(?, AMOUNT) END AS AMOUNT FROM R", {" x"});
        row("IIF of three arguments, no blanks", "SELECT iif(E.AMOUNT>1,' x' & E.AMOUNT,'') FROM E",
            "SELECT CASE WHEN E.AMOUNT>1 THEN JETCAT(?, E.AMOUNT) ELSE ? END FROM E", {" x", ""});
        row("IIF with an empty third argument reads as two", "SELECT IIF(A > 1, ' (' & A & ')',) FROM T",
            "SELECT CASE WHEN A > 1 THEN JETCAT(?, A, ?) END FROM T", {" (", ")"});
        row("nested IIF", "SELECT IIF(A = 1, IIF(B = 2, 'x', 'y'), 'z') FROM T",
            "SELECT CASE WHEN A = 1 THEN CASE WHEN B = 2 THEN ? ELSE ? END ELSE ? END FROM T",
            {"x", "y", "z"});
        row("& looser than arithmetic", "SELECT 'n' & A + 1 FROM T", "SELECT JETCAT(?, A + 1) FROM T", {"n"});
        row("& tighter than comparison", "SELECT A FROM T WHERE B & 'x' = 'yx' AND C = 1",
            "SELECT A FROM T WHERE JETCAT(B, ?) = ? AND C = 1", {"x", "yx"});
        row("& inside LIKE pattern", "SELECT A FROM T WHERE A LIKE '%' & B & '%'",
            "SELECT A FROM T WHERE A LIKE JETCAT(?, B, ?)", {"%", "%"});
        row("IIF guarding a floating division", "SELECT IIF(E.PRICE=0,0,(A.DAMAGE/E.PRICE)) AS D FROM E",
            "SELECT CASE WHEN E.PRICE=0 THEN 0 ELSE (A.DAMAGE * 1.0 / E.PRICE) END AS D FROM E");
        row("blanks collapsed", "SELECT  (M.COMBAT_LEVEL * 3)   AS L FROM M",
            "SELECT (M.COMBAT_LEVEL * 3) AS L FROM M");
        row("-- is not a comment", "SELECT A--1 FROM T", "SELECT A- -1 FROM T");
        row("brackets quote a name", "SELECT [MY COL], T.[CHECK], [it's] FROM T",
            "SELECT \"MY COL\", T.\"CHECK\", \"it's\" FROM T");
        row("brackets and ; inside literals are text", "SELECT A FROM T WHERE B = '[x' AND C = 'y];'",
            "SELECT A FROM T WHERE B = ? AND C = ?", {"[x", "y];"});
        row("TOP becomes LIMIT", "SELECT DISTINCT TOP 10 N FROM E WHERE N LIKE '%a%';",
            "SELECT DISTINCT N FROM E WHERE N LIKE ? LIMIT 10", {"%a%"});
        row("Jet text functions", "SELECT UCase(A), LEN(B), Mid(C, 2, 3), LCASE FROM T",
            "SELECT UPPER(A), LENGTH(B), SUBSTR(C, 2, 3), LCASE FROM T");
        row("unterminated literal passes for the engine to refuse", "SELECT A FROM T WHERE B = 'open",
            "SELECT A FROM T WHERE B = 'open");
    }
    void translates() {
        QFETCH(QString, jet);
        QFETCH(QString, sqlite);
        QFETCH(QStringList, params);
        const TranslatedSql t = TranslateSql(jet);
        QCOMPARE(t.error, QString());
        QCOMPARE(t.sql, sqlite);
        QCOMPARE(t.params, params);
    }
    // Text the engine would end early, run twice, or read as one of its own parameters is refused as a
    // whole, with the number and SQL state the save handlers show; look-alikes inside literals go through.
    void refusesWhatTheEngineWouldMisread_data() {
        QTest::addColumn<QString>("jet");
        QTest::addColumn<QString>("error"); // empty: translated
        QTest::addColumn<long>("number");
        QTest::addColumn<QString>("state");
        const QString nul = QString(QChar(0));
        const struct {
            const char* error;
            long number;
            const char* state;
        } after{"Characters found after end of SQL statement.", hr::Fail, "42000"},
            zero{"Invalid character in SQL statement: a NUL outside a quoted text.", hr::Fail, "42000"},
            glued{"Syntax error (missing operator) in query expression: a quoted text followed by a number.",
                  hr::Fail, "42000"},
            param{"No value given for one or more required parameters.", hr::MissingValue, "07002"},
            unicode{"The SQL text holds a character that is not valid Unicode.", hr::MissingValue, "22018"},
            none{"", 0, ""};
        auto row = [](const char* tag, const QString& jet, const auto& e) {
            QTest::newRow(tag) << jet << QString(e.error) << e.number << QString(e.state);
        };
        row("second statement", "DELETE FROM A WHERE X = 'b'; DELETE FROM B", after);
        row("NUL before WHERE", "DELETE FROM CLASSES" + nul + " WHERE CLASS_NAME = 'Hauler'", zero);
        row("NUL after a quote left open", "DELETE FROM T WHERE B = 'x" + nul + " OR 1", zero);
        row("NUL inside a literal is text", "SELECT A FROM T WHERE B = 'x" + nul + "y'", none);
        row("literal glued to digits", "SELECT * FROM E WHERE N = 'Field Welder'1", glued);
        row("literal glued to a keyword", "UPDATE C SET D = '2026-11-21 10:00:00'WHERE N = 'x'", none);
        row("literal, blank, number", "SELECT 'a' & 1 FROM T", none);
        for (const char* marker : {"?", ":name", "@name", "$name", "#2026-01-01#"})
            row(marker, QStringLiteral("DELETE FROM T WHERE N = ") + marker, param);
        row("markers inside literals are text", "SELECT * FROM T WHERE N = '?1 :a @b $c #d'", none);
        row("dollar inside a name", "SELECT A$B FROM T", none);
        row("lone surrogate", "SELECT * FROM T WHERE N = 'a" + QString(QChar(0xD800)) + "'", unicode);
        row("surrogate pair", QString::fromUtf8("SELECT * FROM T WHERE N = '\U00010400'"), none);
    }
    void refusesWhatTheEngineWouldMisread() {
        QFETCH(QString, jet);
        QFETCH(QString, error);
        QFETCH(long, number);
        QFETCH(QString, state);
        for (int round = 0; round < 2; ++round) { // the refusal is kept with the shape, not forgotten
            const TranslatedSql t = TranslateSql(jet);
            QCOMPARE(t.error, error);
            if (error.isEmpty())
                continue;
            QVERIFY(t.sql.isEmpty());
            QCOMPARE(t.errorNumber, number);
            QCOMPARE(t.sqlState, state);
        }
    }
    // A refused statement is not run in part: the DELETE whose WHERE a NUL would cut off deletes nothing,
    // the first of two statements
    // does not run alone, and the glued literal does not tick the row its number would name. The error record
    // says why.
    void refusedStatementChangesNothing() {
        QTemporaryDir dir;
        Database cn;
        cn.open(enginedb::connectionFor(enginedb::create(dir)));
        for (const QString& sql :
             {"DELETE FROM CLASSES" + QString(QChar(0)) + " WHERE CLASS_NAME = 'Hauler'",
              QString("DELETE FROM CLASSES; DELETE FROM CHARACTERS"),
              QString("UPDATE EQUIPMENTS SET CHECK = TRUE WHERE EQUIPMENT_NAME = 'Ember Beam'1"),
              QString("UPDATE EQUIPMENTS SET CHECK = TRUE WHERE EQUIPMENT_NAME = :name")}) {
            QVERIFY_THROWS_EXCEPTION(VbError, cn.execute(sql));
            QCOMPARE(cn.errors().size(), 1);
            QCOMPARE(cn.errors().first().Description, TranslateSql(sql).error);
            QCOMPARE(cn.errors().first().SQLState, TranslateSql(sql).sqlState);
        }
        QCOMPARE(enginedb::count("SELECT COUNT(*) FROM CLASSES", cn), 2L);
        QCOMPARE(enginedb::count("SELECT COUNT(*) FROM EQUIPMENTS WHERE CHECK = TRUE", cn), 1L);
    }
    // Translations are kept by the text around the literals: never handed to a look-alike, asked twice.
    void shapesAreCachedByTheTextAroundLiterals() {
        QCOMPARE(TranslateSql("SELECT R FROM T WHERE N = 'Ore' ORDER BY R").sql,
                 TranslateSql("SELECT R FROM T WHERE N = 'Metal''s ore' ORDER BY R").sql);
        for (int round = 0; round < 2; ++round)
            for (const auto& [text, params] :
                 {std::pair{"SELECT A FROM T WHERE B = ''''", QStringList{"'"}},
                  {"SELECT A FROM T WHERE B = 'x' AND C = 'it''s'", {"x", "it's"}}})
                QCOMPARE(TranslateSql(text).params, params);
        QCOMPARE(TranslateSql("SELECT A FROM T WHERE B = 'x' AND CHECK = 'it''s'").sql,
                 "SELECT A FROM T WHERE B = ? AND \"CHECK\" = ?");
    }
    void topLevelFromSkipsSubqueries() {
        const QString s =
            "SELECT (SELECT LVL FROM ITEMS WHERE ITEM_NAME = ?) AS \"FROM\", FROMAGE FROM RAW_MATERIALS_ITEMS";
        QCOMPARE(topLevelFrom(s), int(s.indexOf("FROM RAW")));
        QCOMPARE(topLevelFrom("SELECT 1"), -1);
        QCOMPARE(topLevelSelectItems(s),
                 (QStringList{"(SELECT LVL FROM ITEMS WHERE ITEM_NAME = ?) AS \"FROM\"", "FROMAGE"}));
        QCOMPARE(topLevelSelectItems("SELECT JETCAT(?, A), B AS \"x,y\" FROM T"),
                 (QStringList{"JETCAT(?, A)", "B AS \"x,y\""}));
        QCOMPARE(topLevelSelectItems("DELETE FROM T"), QStringList{});
    }
    // Each statement form the program sends runs on the small database and computes as Jet does: a
    // SELECT gives its first value (invalid: NULL), any other statement the number of rows it changed.
    void runsOnTheEngine_data() {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QVariant>("expected");
        auto row = [](const char* tag, const char* sql, QVariant v) {
            QTest::newRow(tag) << QString::fromUtf8(sql) << v;
        };
        row("NULL joins as empty", "SELECT 'a' & ROUNDS & 'b' FROM WEAPON_STATS", "ab");
        row("NULL & NULL is NULL", "SELECT ROUNDS & AMO_TYPE FROM WEAPON_STATS", QVariant());
        row("whole double prints without fraction", "SELECT DELAY & '' FROM WEAPON_STATS", "2");
        row("negative whole prints without fraction", "SELECT PRICE & '' FROM EQUIPMENTS WHERE PRICE < 0",
            "-2");
        row("division by zero is NULL",
            "SELECT (DAMAGE/DELAY) FROM WEAPON_STATS WHERE EQUIPMENT_NAME = 'Ember Beam'", QVariant());
        row("tick", "UPDATE EQUIPMENTS SET EQUIPMENTS.CHECK = TRUE WHERE EQUIPMENT_NAME = 'Ember Beam';", 1);
    }
    void runsOnTheEngine() {
        QFETCH(QString, sql);
        QFETCH(QVariant, expected);
        QTemporaryDir dir;
        Database cn;
        cn.open(enginedb::connectionFor(enginedb::create(dir)));
        try {
            if (!sql.startsWith("SELECT")) {
                QCOMPARE(QVariant::fromValue(cn.execute(sql)).toLongLong(), expected.toLongLong());
                return;
            }
            Recordset rs;
            rs.open(sql, cn);
            QVERIFY(!rs.eof());
            QCOMPARE(rs.value(0).isNull(), expected.isNull());
            if (!expected.isNull())
                QCOMPARE(rs.value(0).toString(), expected.toString());
        } catch (const VbError& e) {
            QFAIL(qPrintable(e.description));
        }
    }
};

QTEST_GUILESS_MAIN(TestSqlTranslate)
#include "tst_sqltranslate.moc"
