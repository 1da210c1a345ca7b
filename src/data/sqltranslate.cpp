#include "data/sqltranslate.h"

#include "data/sqltokens.h"

#include <QHash>
#include <QList>
#include <QLocale>
#include <QVarLengthArray>
#include <cmath>

namespace {

using namespace jetsql;

// Tokens at which an operand of & ends: Jet's & binds looser than arithmetic and tighter than
// comparison, so comparisons, logical words and clause words delimit its operands.
bool isStopWord(const QString& upper) {
    static const QStringList words = {
        QStringLiteral("SELECT"), QStringLiteral("FROM"),   QStringLiteral("WHERE"),
        QStringLiteral("AND"),    QStringLiteral("OR"),     QStringLiteral("NOT"),
        QStringLiteral("AS"),     QStringLiteral("ON"),     QStringLiteral("SET"),
        QStringLiteral("WHEN"),   QStringLiteral("THEN"),   QStringLiteral("ELSE"),
        QStringLiteral("END"),    QStringLiteral("CASE"),   QStringLiteral("LIKE"),
        QStringLiteral("IS"),     QStringLiteral("IN"),     QStringLiteral("BETWEEN"),
        QStringLiteral("ORDER"),  QStringLiteral("GROUP"),  QStringLiteral("BY"),
        QStringLiteral("HAVING"), QStringLiteral("VALUES"), QStringLiteral("ASC"),
        QStringLiteral("DESC"),   QStringLiteral("JOIN"),   QStringLiteral("INNER"),
        QStringLiteral("LEFT"),   QStringLiteral("RIGHT"),  QStringLiteral("OUTER"),
        QStringLiteral("UNION"),  QStringLiteral("INTO"),   QStringLiteral("DISTINCT"),
        QStringLiteral("TOP"),    QStringLiteral("UPDATE"), QStringLiteral("DELETE"),
        QStringLiteral("INSERT"), QStringLiteral("EXISTS"), QStringLiteral("XOR")};
    return words.contains(upper);
}

// Jet's text functions that SQLite knows under another name.
const char* const kRenamed[][2] = {
    {"UCASE", "UPPER"}, {"LCASE", "LOWER"}, {"LEN", "LENGTH"}, {"MID", "SUBSTR"}};

bool isRenamedFunction(const QString& name) {
    for (const auto& r : kRenamed)
        if (name.compare(QLatin1String(r[0]), Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

QString renamedFunction(const QString& name) {
    for (const auto& r : kRenamed)
        if (name.compare(QLatin1String(r[0]), Qt::CaseInsensitive) == 0)
            return QLatin1String(r[1]);
    return name;
}

bool isKeywordColumn(const QString& upper) {
    return upper == QLatin1String("CHECK") || upper == QLatin1String("RANGE");
}

class Translator {
public:
    explicit Translator(const QString& src) : m_src(src), m_t(tokenize(src)) {}

    TranslatedSql run() {
        TranslatedSql r;
        if (refuse(r))
            return r;
        int end = int(m_t.size());
        for (int i = 0; i < end; ++i) {
            if (m_t[i].kind != Tok::Semi)
                continue;
            for (int j = i + 1; j < end; ++j) {
                if (m_t[j].kind != Tok::Semi) {
                    r.error = QStringLiteral("Characters found after end of SQL statement.");
                    return r;
                }
            }
            end = i;
            break;
        }
        markUpdateTargets(end);
        const QString limit = takeTop(end);
        r.sql = range(0, end).trimmed() + limit;
        r.params = m_params;
        return r;
    }

private:
    // What the engine would take otherwise as the end of the statement or as one of its parameters.
    bool refuse(TranslatedSql& r) const {
        for (int i = 0; i < m_t.size(); ++i) {
            const Token& t = m_t[i];
            if (t.kind == Tok::String) {
                if (i + 1 < m_t.size() && m_t[i + 1].kind == Tok::Number && !m_t[i + 1].spaceBefore) {
                    r.error = QStringLiteral(
                        "Syntax error (missing operator) in query expression: a quoted text followed by a number.");
                    return true;
                }
                continue;
            }
            const QStringView text = QStringView(m_src).mid(t.pos, t.len);
            if (text.contains(QChar(0))) {
                r.error = QStringLiteral("Invalid character in SQL statement: a NUL outside a quoted text.");
                return true;
            }
            if (t.kind == Tok::Op && t.len == 1 && QStringView(u"?:@$#").contains(text.front())) {
                r.error = QStringLiteral("No value given for one or more required parameters.");
                r.errorNumber = hr::MissingValue;
                r.sqlState = QStringLiteral("07002");
                return true;
            }
        }
        return false;
    }

    // SELECT [DISTINCT] TOP n ...: SQLite says LIMIT n at the end.
    QString takeTop(int end) {
        int i = 0;
        if (end < 3 || upperWord(0) != QLatin1String("SELECT"))
            return {};
        if (upperWord(1) == QLatin1String("DISTINCT"))
            i = 1;
        if (i + 2 >= end || upperWord(i + 1) != QLatin1String("TOP") || m_t[i + 2].kind != Tok::Number)
            return {};
        m_drop = {i + 1, i + 2};
        return QStringLiteral(" LIMIT ") + m_src.mid(m_t[i + 2].pos, m_t[i + 2].len);
    }

    QString upperWord(int i) const { return m_t[i].kind == Tok::Ident ? m_t[i].value.toUpper() : QString(); }

    int matching(int open, int end) const {
        int depth = 0;
        for (int i = open; i < end; ++i) {
            if (m_t[i].kind == Tok::LParen)
                ++depth;
            else if (m_t[i].kind == Tok::RParen && --depth == 0)
                return i;
        }
        return end; // unbalanced: the rest belongs to the group, the engine will complain
    }

    bool isStop(int i) const {
        const Token& t = m_t[i];
        if (t.kind == Tok::Comma)
            return true;
        if (t.kind == Tok::Op) {
            const QStringView op = QStringView(m_src).mid(t.pos, t.len);
            return op == u"=" || op == u"<" || op == u">" || op == u"<>" || op == u"<=" || op == u">=" ||
                   op == u"!=" || op == u"==";
        }
        return t.kind == Tok::Ident && isStopWord(upperWord(i));
    }

    bool isAmp(int i) const { return m_t[i].kind == Tok::Op && m_src[m_t[i].pos] == u'&'; }

    // UPDATE T SET T.C = ...: SQLite refuses a qualified name as an assignment target.
    void markUpdateTargets(int end) {
        m_strip = QList<bool>(end, false);
        if (end < 3 || upperWord(0) != QLatin1String("UPDATE"))
            return;
        const QString table = m_t[1].value.toUpper() + u'.';
        bool inSet = false, expectTarget = false;
        int depth = 0;
        for (int i = 2; i < end; ++i) {
            const Token& t = m_t[i];
            if (t.kind == Tok::LParen)
                ++depth;
            if (t.kind == Tok::RParen)
                --depth;
            if (depth != 0)
                continue;
            const QString w = upperWord(i);
            if (w == QLatin1String("SET")) {
                inSet = expectTarget = true;
            } else if (w == QLatin1String("WHERE")) {
                inSet = false;
            } else if (inSet && t.kind == Tok::Comma) {
                expectTarget = true;
            } else if (expectTarget) {
                if (t.kind == Tok::Ident && w.startsWith(table))
                    m_strip[i] = true;
                expectTarget = false;
            }
        }
    }

    // A range of tokens at one nesting level: & chains between stop tokens become JETCAT calls.
    QString range(int b, int e) {
        QString out;
        int segStart = b;
        for (int i = b; i <= e; ++i) {
            if (i < e && m_t[i].kind == Tok::LParen) {
                i = matching(i, e);
                continue;
            }
            if (i == e || isStop(i)) {
                out += segment(segStart, i);
                if (i < e)
                    out += simple(i, i + 1);
                segStart = i + 1;
            }
        }
        return out;
    }

    QString segment(int b, int e) {
        QList<int> amps;
        for (int i = b; i < e; ++i) {
            if (m_t[i].kind == Tok::LParen)
                i = matching(i, e);
            else if (isAmp(i))
                amps.append(i);
        }
        if (amps.isEmpty())
            return simple(b, e);
        const QString lead = (m_t[b].spaceBefore || m_forceSpace) ? QStringLiteral(" ") : QString();
        m_forceSpace = false;
        QStringList operands;
        int start = b;
        amps.append(e);
        for (int a : amps) {
            operands.append(simple(start, a).trimmed());
            start = a + 1;
        }
        return lead + QLatin1String(kJetConcat) + u'(' + operands.join(QStringLiteral(", ")) + u')';
    }

    QString identifier(int i) const {
        const QString& text = m_t[i].value;
        QStringList parts = text.split(u'.');
        if (m_strip[i] && parts.size() > 1)
            parts = parts.mid(parts.size() - 1);
        for (QString& p : parts) {
            if (isKeywordColumn(p.toUpper()))
                p = quoteIdentifier(p);
        }
        return parts.join(u'.');
    }

    // Tokens emitted one by one; groups in parentheses and IIF calls recurse.
    QString simple(int b, int e) {
        QString out;
        for (int i = b; i < e; ++i) {
            const Token& t = m_t[i];
            if (m_drop.contains(i))
                continue;
            const QString sp = (t.spaceBefore || m_forceSpace) ? QStringLiteral(" ") : QString();
            m_forceSpace = false;
            switch (t.kind) {
            case Tok::LParen: {
                const int close = matching(i, e);
                out += sp + u'(' + range(i + 1, close) + (close < e ? QStringLiteral(")") : QString());
                i = close;
                break;
            }
            case Tok::Ident:
                if (t.value.compare(QLatin1String("IIF"), Qt::CaseInsensitive) == 0 && i + 1 < e &&
                    m_t[i + 1].kind == Tok::LParen) {
                    const int close = matching(i + 1, e);
                    out += sp + iif(i + 2, close);
                    i = close;
                } else if (i + 1 < e && m_t[i + 1].kind == Tok::LParen && isRenamedFunction(t.value)) {
                    out += sp + renamedFunction(t.value);
                } else {
                    out += sp + identifier(i);
                }
                break;
            case Tok::String:
                m_params.append(t.value);
                out += sp + u'?';
                break;
            case Tok::Op:
                if (m_src[t.pos] == u'/' && t.len == 1) {
                    out += QStringLiteral(" * 1.0 /");
                    m_forceSpace = true;
                    break;
                }
                // "--" would start a comment in SQLite
                if (m_src[t.pos] == u'-' && !t.spaceBefore && out.endsWith(u'-'))
                    out += u' ';
                out += sp + m_src.mid(t.pos, t.len);
                break;
            default:
                out += sp + m_src.mid(t.pos, t.len);
            }
        }
        return out;
    }

    QString iif(int b, int e) {
        QList<QString> args;
        int start = b;
        for (int i = b; i <= e; ++i) {
            if (i < e && m_t[i].kind == Tok::LParen) {
                i = matching(i, e);
                continue;
            }
            if (i == e || m_t[i].kind == Tok::Comma) {
                args.append(range(start, i).trimmed());
                start = i + 1;
            }
        }
        if (args.size() < 2 || args.size() > 3 || args[0].isEmpty() || args[1].isEmpty())
            return QStringLiteral("IIF(") + args.join(QStringLiteral(", ")) +
                   u')'; // let the engine refuse it
        QString out = QStringLiteral("CASE WHEN ") + args[0] + QStringLiteral(" THEN ") + args[1];
        if (args.size() == 3 && !args[2].isEmpty()) // IIF(c, a, ) reads as IIF(c, a)
            out += QStringLiteral(" ELSE ") + args[2];
        return out + QStringLiteral(" END");
    }

    const QString& m_src;
    QList<Token> m_t;
    QList<bool> m_strip;
    QList<int> m_drop; // tokens left out (TOP n)
    QStringList m_params;
    bool m_forceSpace = false;
};

} // namespace

// The same statement comes again and again with other names in it (the build trees recurse through
// one query per level), so the translation is kept per skeleton: the text with every literal emptied.
// One pass over the characters finds the literals and hashes the skeleton without building it.
namespace {

struct Literal {
    int open;  // index of the opening quote
    int close; // index of the closing quote
    bool doubled;
};
using Literals = QVarLengthArray<Literal, 8>;

struct CachedShape {
    QString skeleton;
    TranslatedSql translation;
};

// Calls f(from, length) for each run of text kept as it is and q(quote) for each emptied literal.
template <typename Text, typename Quote>
void walkSkeleton(const QString& s, const Literals& lits, Text f, Quote q) {
    int from = 0;
    for (const Literal& l : lits) {
        f(from, l.open - from);
        q(s[l.open]);
        from = l.close + 1;
    }
    f(from, int(s.size()) - from);
}

quint64 skeletonHash(const QString& s, const Literals& lits) {
    quint64 h = 1469598103934665603ull; // FNV-1a
    const ushort* p = s.utf16();
    walkSkeleton(
        s, lits,
        [&](int from, int len) {
            for (int i = from; i < from + len; ++i)
                h = (h ^ p[i]) * 1099511628211ull;
        },
        [&](QChar q) { h = (((h ^ q.unicode()) * 1099511628211ull) ^ q.unicode()) * 1099511628211ull; });
    return h;
}

bool sameSkeleton(const QString& s, const Literals& lits, const QString& skeleton) {
    bool same = true;
    int k = 0;
    const int n = int(skeleton.size());
    walkSkeleton(
        s, lits,
        [&](int from, int len) {
            same = same && k + len <= n && QStringView(s).mid(from, len) == QStringView(skeleton).mid(k, len);
            k += len;
        },
        [&](QChar q) {
            same = same && k + 2 <= n && skeleton[k] == q && skeleton[k + 1] == q;
            k += 2;
        });
    return same && k == n;
}

QString buildSkeleton(const QString& s, const Literals& lits) {
    QString out;
    out.reserve(s.size());
    walkSkeleton(
        s, lits, [&](int from, int len) { out.append(s.constData() + from, len); },
        [&](QChar q) {
            out += q;
            out += q;
        });
    return out;
}

} // namespace

TranslatedSql TranslateSql(const QString& jetSql) {
    if (!QStringView(jetSql).isValidUtf16()) {
        TranslatedSql r;
        r.error = QStringLiteral("The SQL text holds a character that is not valid Unicode.");
        r.errorNumber = hr::MissingValue;
        r.sqlState = QStringLiteral("22018");
        return r;
    }
    Literals lits;
    const QChar* p = jetSql.constData();
    const int n = int(jetSql.size());
    for (int i = 0; i < n; ++i) {
        const QChar c = p[i];
        if (c == u'\'' || c == u'"') {
            int close = i + 1;
            bool doubled = false;
            while (true) {
                while (close < n && p[close] != c)
                    ++close;
                if (close + 1 < n && p[close + 1] == c) {
                    doubled = true;
                    close += 2;
                    continue;
                }
                break;
            }
            if (close >= n) // unterminated: goes through as it is
                break;
            lits.append({i, close, doubled});
            i = close;
        } else if (c == u'[') {
            const int end = int(jetSql.indexOf(u']', i));
            if (end >= 0)
                i = end;
        }
    }
    thread_local QHash<quint64, CachedShape> cache;
    const quint64 key = skeletonHash(jetSql, lits);
    auto it = cache.constFind(key);
    if (it == cache.constEnd() || !sameSkeleton(jetSql, lits, it->skeleton)) {
        if (it != cache.constEnd()) // two skeletons of one hash: translate this one as it comes
            return Translator(jetSql).run();
        if (cache.size() > 4096)
            cache.clear();
        const QString skeleton = buildSkeleton(jetSql, lits);
        it = cache.insert(key, CachedShape{skeleton, Translator(skeleton).run()});
    }
    const TranslatedSql& t = it->translation;
    if (!t.error.isEmpty())
        return t;
    if (t.params.size() != lits.size())
        return Translator(jetSql).run();
    QStringList params;
    params.reserve(lits.size());
    for (const Literal& l : lits) {
        QString value(p + l.open + 1, l.close - l.open - 1);
        if (l.doubled)
            value.replace(QString(2, p[l.open]), QString(p[l.open]));
        params.append(value);
    }
    TranslatedSql r;
    r.sql = t.sql;
    r.params = std::move(params);
    return r;
}

int topLevelFrom(const QString& s) {
    const int n = int(s.size());
    int depth = 0;
    for (int i = 0; i < n; ++i) {
        const QChar c = s[i];
        if (c == u'"' || c == u'\'') {
            const int close = int(s.indexOf(c, i + 1));
            if (close < 0)
                return -1;
            i = close;
        } else if (c == u'(') {
            ++depth;
        } else if (c == u')') {
            --depth;
        } else if (depth == 0 && (c == u'F' || c == u'f') && (i == 0 || !jetsql::isIdentChar(s[i - 1])) &&
                   QStringView(s).mid(i, 4).compare(QLatin1String("FROM"), Qt::CaseInsensitive) == 0 &&
                   (i + 4 >= n || !jetsql::isIdentChar(s[i + 4]))) {
            return i;
        }
    }
    return -1;
}

QStringList topLevelSelectItems(const QString& s) {
    const int from = topLevelFrom(s);
    const int end = from < 0 ? int(s.size()) : from;
    if (!s.startsWith(QLatin1String("SELECT "), Qt::CaseInsensitive))
        return {};
    QStringList items;
    int depth = 0, start = 7;
    for (int i = start; i <= end; ++i) {
        const QChar c = i < end ? s[i] : QChar(u',');
        if (c == u'"' || c == u'\'') {
            const int close = int(s.indexOf(c, i + 1));
            if (close < 0 || close >= end)
                return {};
            i = close;
        } else if (c == u'(') {
            ++depth;
        } else if (c == u')') {
            --depth;
        } else if (c == u',' && depth == 0) {
            items.append(s.mid(start, i - start).trimmed());
            start = i + 1;
        }
    }
    return items;
}

QString quoteIdentifier(const QString& name) {
    QString q = name;
    q.replace(u'"', QStringLiteral("\"\""));
    return u'"' + q + u'"';
}

QString jetNumberText(double v) {
    if (std::isfinite(v) && v == std::floor(v) && std::fabs(v) < 1e15)
        return QString::number(qint64(v));
    return QString::number(v, 'g', QLocale::FloatingPointShortest);
}
