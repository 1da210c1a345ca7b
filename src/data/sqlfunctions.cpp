#include "data/sqlfunctions.h"

#include "core/casefold.h"
#include "data/sqltranslate.h"

#include <QVarLengthArray>
#include <memory>
#include <sqlite3.h>

namespace {

// Stands for a malformed byte: a surrogate, which no well-formed UTF-8 decodes to.
constexpr char32_t kBadByte = 0xDC00;

// Decodes the character at p (p < end) into *c and returns the bytes it takes. A malformed sequence
// takes one byte and decodes to kBadByte + that byte.
int decodeUtf8(const unsigned char* p, const unsigned char* end, char32_t* c) {
    const unsigned lead = p[0];
    if (lead < 0x80) {
        *c = lead;
        return 1;
    }
    int n = 0;
    char32_t v = 0, least = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        n = 2, v = lead & 0x1F, least = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        n = 3, v = lead & 0x0F, least = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        n = 4, v = lead & 0x07, least = 0x10000;
    }
    bool ok = n > 0 && end - p >= n;
    for (int i = 1; ok && i < n; ++i) {
        ok = (p[i] & 0xC0) == 0x80;
        v = (v << 6) | (p[i] & 0x3F);
    }
    if (!ok || v < least || v > 0x10FFFF || (v >= 0xD800 && v <= 0xDFFF)) {
        *c = kBadByte + lead;
        return 1;
    }
    *c = v;
    return n;
}

const unsigned char* bytes(QByteArrayView v) {
    return reinterpret_cast<const unsigned char*>(v.data());
}

using Folded = QVarLengthArray<char32_t, 256>;

void decodeFolded(QByteArrayView text, Folded& out) {
    const unsigned char *p = bytes(text), *end = p + text.size();
    out.clear();
    while (p < end) {
        char32_t c = 0;
        p += decodeUtf8(p, end, &c);
        out.append(FoldCase(c));
    }
}

// A LIKE pattern as folded characters, with "%" and "_" as values no character has.
constexpr char32_t kAnyRun = 0x110000;
constexpr char32_t kOneChar = 0x110001;

struct LikePattern {
    Folded items;
    char32_t escape = 0;
    bool never = false; // ends in a lone escape character: matches nothing
};

std::unique_ptr<LikePattern> compileLike(QByteArrayView pattern, char32_t escape) {
    auto out = std::make_unique<LikePattern>();
    out->escape = escape;
    Folded raw;
    const unsigned char *p = bytes(pattern), *end = p + pattern.size();
    while (p < end) {
        char32_t c = 0;
        p += decodeUtf8(p, end, &c);
        raw.append(c);
    }
    for (qsizetype i = 0; i < raw.size(); ++i) {
        const char32_t c = raw[i];
        if (escape && c == escape) {
            if (++i == raw.size()) {
                out->never = true;
                break;
            }
            out->items.append(FoldCase(raw[i]));
        } else if (c == U'%') {
            if (out->items.isEmpty() || out->items.last() != kAnyRun)
                out->items.append(kAnyRun);
        } else if (c == U'_') {
            out->items.append(kOneChar);
        } else {
            out->items.append(FoldCase(c));
        }
    }
    return out;
}

// Every token but "%" takes one character, so going back to the last "%" is enough.
bool matchLike(const LikePattern& pattern, const Folded& text) {
    if (pattern.never)
        return false;
    const Folded& items = pattern.items;
    const qsizetype m = items.size(), n = text.size();
    qsizetype p = 0, t = 0, starP = -1, starT = 0;
    while (t < n) {
        if (p < m && (items[p] == kOneChar || items[p] == text[t])) {
            ++p, ++t;
        } else if (p < m && items[p] == kAnyRun) {
            starP = p++;
            starT = t;
        } else if (starP >= 0) {
            p = starP + 1;
            t = ++starT;
        } else {
            return false;
        }
    }
    while (p < m && items[p] == kAnyRun)
        ++p;
    return p == m;
}

QByteArrayView textOf(sqlite3_value* v) {
    const auto* t = reinterpret_cast<const char*>(sqlite3_value_text(v));
    return QByteArrayView(t, t ? sqlite3_value_bytes(v) : 0);
}

// like(pattern, text [, escape]): X LIKE Y ESCAPE Z calls like(Y, X, Z).
void likeFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    for (int i = 0; i < argc; ++i)
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL)
            return; // NULL
    sqlite3* db = sqlite3_context_db_handle(ctx);
    if (sqlite3_value_bytes(argv[0]) > sqlite3_limit(db, SQLITE_LIMIT_LIKE_PATTERN_LENGTH, -1)) {
        sqlite3_result_error(ctx, "LIKE or GLOB pattern too complex", -1);
        return;
    }
    char32_t escape = 0;
    if (argc == 3) {
        const QByteArrayView e = textOf(argv[2]);
        const int taken = e.isEmpty() ? 0 : decodeUtf8(bytes(e), bytes(e) + e.size(), &escape);
        if (e.isEmpty() || taken != e.size()) {
            sqlite3_result_error(ctx, "ESCAPE expression must be a single character", -1);
            return;
        }
    }
    // A constant pattern is compiled once per statement and kept with it.
    auto* kept = static_cast<LikePattern*>(sqlite3_get_auxdata(ctx, 0));
    std::unique_ptr<LikePattern> compiled;
    if (!kept || kept->escape != escape) {
        compiled = compileLike(textOf(argv[0]), escape);
        kept = compiled.get();
    }
    Folded text;
    decodeFolded(textOf(argv[1]), text);
    sqlite3_result_int(ctx, matchLike(*kept, text) ? 1 : 0);
    if (compiled)
        sqlite3_set_auxdata(ctx, 0, compiled.release(), [](void* p) { delete static_cast<LikePattern*>(p); });
}

int collate(void*, int na, const void* a, int nb, const void* b) {
    return CompareFolded(QByteArrayView(static_cast<const char*>(a), na),
                         QByteArrayView(static_cast<const char*>(b), nb));
}

void validUtf8Function(sqlite3_context* ctx, int, sqlite3_value** argv) {
    const int type = sqlite3_value_type(argv[0]);
    if (type != SQLITE_TEXT && type != SQLITE_BLOB) {
        sqlite3_result_int(ctx, 1);
        return;
    }
    const auto* blob = static_cast<const char*>(sqlite3_value_blob(argv[0]));
    sqlite3_result_int(ctx, IsValidUtf8(QByteArrayView(blob, sqlite3_value_bytes(argv[0]))) ? 1 : 0);
}

// Jet's &: NULL joins as empty text, the whole is NULL only when every part is.
void jetConcat(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
    QByteArray out;
    bool any = false;
    for (int i = 0; i < argc; ++i) {
        switch (sqlite3_value_type(argv[i])) {
        case SQLITE_NULL:
            continue;
        case SQLITE_INTEGER:
            out += QByteArray::number(sqlite3_value_int64(argv[i]));
            break;
        case SQLITE_FLOAT:
            out += jetNumberText(sqlite3_value_double(argv[i])).toUtf8();
            break;
        default:
            out.append(reinterpret_cast<const char*>(sqlite3_value_text(argv[i])),
                       sqlite3_value_bytes(argv[i]));
        }
        any = true;
    }
    if (!any)
        sqlite3_result_null(ctx);
    else
        sqlite3_result_text(ctx, out.constData(), int(out.size()), SQLITE_TRANSIENT);
}

} // namespace

int CompareFolded(QByteArrayView a, QByteArrayView b) {
    const unsigned char *p = bytes(a), *pe = p + a.size();
    const unsigned char *q = bytes(b), *qe = q + b.size();
    while (p < pe && q < qe) {
        char32_t x = 0, y = 0;
        if (*p < 0x80 && *q < 0x80) {
            x = FoldCase(char32_t(*p++));
            y = FoldCase(char32_t(*q++));
        } else {
            p += decodeUtf8(p, pe, &x);
            q += decodeUtf8(q, qe, &y);
            x = FoldCase(x);
            y = FoldCase(y);
        }
        if (x != y)
            return x < y ? -1 : 1;
    }
    return int(p < pe) - int(q < qe);
}

bool LikeFolded(QByteArrayView pattern, QByteArrayView text, char32_t escape) {
    Folded folded;
    decodeFolded(text, folded);
    return matchLike(*compileLike(pattern, escape), folded);
}

bool IsValidUtf8(QByteArrayView text) {
    const unsigned char *p = bytes(text), *end = p + text.size();
    while (p < end) {
        if (*p < 0x80) {
            ++p;
            continue;
        }
        char32_t c = 0;
        p += decodeUtf8(p, end, &c);
        if (c >= kBadByte && c < kBadByte + 0x100)
            return false;
    }
    return true;
}

bool RegisterSqlFunctions(sqlite3* db) {
    constexpr int pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    return sqlite3_create_function_v2(db, kJetConcat, -1, pure, nullptr, jetConcat, nullptr, nullptr,
                                      nullptr) == SQLITE_OK &&
           sqlite3_create_collation_v2(db, kNoCaseCollation, SQLITE_UTF8, nullptr, collate, nullptr) ==
               SQLITE_OK &&
           sqlite3_create_function_v2(db, "like", 2, pure, nullptr, likeFunction, nullptr, nullptr,
                                      nullptr) == SQLITE_OK &&
           sqlite3_create_function_v2(db, "like", 3, pure, nullptr, likeFunction, nullptr, nullptr,
                                      nullptr) == SQLITE_OK &&
           sqlite3_create_function_v2(db, kValidUtf8Function, 1, pure, nullptr, validUtf8Function, nullptr,
                                      nullptr, nullptr) == SQLITE_OK;
}
