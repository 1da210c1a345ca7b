#pragma once
// The program writes its SQL in Jet's dialect; this turns one such statement into SQLite text.
// String literals are lifted out as bound parameters so that every statement of one shape
// (the same text with different names in it) is prepared once and reused.
//
//   a & b            -> JETCAT(a, b)   (NULL joins as empty text; numbers print as Jet prints them)
//   IIF(c, a)        -> CASE WHEN c THEN a END
//   IIF(c, a, b)     -> CASE WHEN c THEN a ELSE b END
//   CHECK, T.RANGE   -> "CHECK", T."RANGE"   (column names that are SQLite keywords)
//   [NAME]           -> "NAME"
//   a / b            -> a * 1.0 / b    (Jet divides as floating point even between whole numbers)
//   UPDATE T SET T.C = ...  -> UPDATE T SET C = ...
//   SELECT TOP n ...        -> SELECT ... LIMIT n
//   UCASE, LCASE, LEN, MID  -> UPPER, LOWER, LENGTH, SUBSTR
//   'text', "text"   -> ?              (value kept in params, in order)
// A trailing ";" is dropped. These make the statement an error that is not run:
//   anything after the ";"                         (a second statement)
//   a NUL character outside a quoted literal       (the engine would end the statement there)
//   a literal followed directly by a number        ('Welder'1 is not a numbered parameter)
//   ?, :, @, $ or # outside a literal              (no raw text becomes a parameter of the engine)
//   text that is not valid UTF-16 (a lone surrogate, which would reach the engine as "?")
#include "data/hresult.h"

#include <QString>
#include <QStringList>

struct TranslatedSql {
    QString sql;        // SQLite text with ? for each lifted literal, whitespace collapsed
    QStringList params; // the literals' values, quotes undoubled
    QString error;      // not empty: the text must not be run (Jet's own wording where it has one)
    long errorNumber = hr::Fail;
    QString sqlState = QStringLiteral("42000");
};

TranslatedSql TranslateSql(const QString& jetSql);

// The name of the SQL function that implements Jet's & (registered on every connection).
inline constexpr const char* kJetConcat = "JETCAT";

// Offset of the top-level FROM keyword of translated SELECT text, -1 when there is none.
int topLevelFrom(const QString& sqliteSql);

// The items of the top-level select list of translated SELECT text (each trimmed, aliases kept);
// empty when the text is not a SELECT.
QStringList topLevelSelectItems(const QString& sqliteSql);

// An identifier in double quotes, inner quotes doubled.
QString quoteIdentifier(const QString& name);

// The text Jet shows for a number joined with &: whole values without a fraction, others in the
// shortest form that reads back the same.
QString jetNumberText(double v);
