#pragma once
// What every connection to a VOSK database registers before it reads or writes (the shared
// connection, the database tools and the tests' own connections alike):
//   JETCAT(a, ...)       Jet's &: NULL joins as empty text, numbers print as Jet prints them
//   COLLATE VOSK_NOCASE  the collation of every text column: equal and ordered without regard to
//                        case under the program's one case folding (core/casefold.h)
//   a LIKE b [ESCAPE c]  "%" and "_" as SQLite has them, without regard to case under that folding
//   VOSK_VALID_UTF8(x)   1 unless x is text or a blob whose bytes are not well-formed UTF-8
// A connection without them (the plain sqlite3 shell) reads whole tables, but cannot compare, sort
// or write the text columns: it reports "no such collation sequence: VOSK_NOCASE".
#include <QByteArrayView>

struct sqlite3;

inline constexpr const char* kNoCaseCollation = "VOSK_NOCASE";
inline constexpr const char* kValidUtf8Function = "VOSK_VALID_UTF8";

// False when the engine refused one of them (out of memory).
bool RegisterSqlFunctions(sqlite3* db);

// The collation's order on UTF-8 texts: < 0, 0 or > 0. Malformed bytes are compared one by one and
// never equal to any well-formed character.
int CompareFolded(QByteArrayView a, QByteArrayView b);
// LIKE with "%", "_" and an optional escape character (0: none), on UTF-8 texts.
bool LikeFolded(QByteArrayView pattern, QByteArrayView text, char32_t escape = 0);
// Well-formed UTF-8: no stray or missing continuation bytes, no overlong forms, no surrogates,
// nothing above U+10FFFF.
bool IsValidUtf8(QByteArrayView text);
