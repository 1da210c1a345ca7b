#include "core/inifile.h"
#include "core/programfolder.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStringList>
#include <QTextStream>

namespace {
struct Cached {
    QDateTime modified;
    qint64 size = -1;
    QHash<QString, QString> values; // "SECTION\nKEY" upper-cased -> value
};

QString slot(const QString& section, const QString& key) {
    return section.trimmed().toUpper() + QLatin1Char('\n') + key.trimmed().toUpper();
}

// Tooltips are read many times while windows open; the parsed file is kept until it changes.
const QHash<QString, QString>& parsed(const QString& file) {
    static QHash<QString, Cached> cache;
    const QFileInfo info(file);
    Cached& c = cache[info.absoluteFilePath()];
    if (c.size == info.size() && c.modified == info.lastModified())
        return c.values;
    c.values.clear();
    c.size = info.size();
    c.modified = info.lastModified();
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
        return c.values;
    QTextStream in(&f);
    QString section;
    while (!in.atEnd()) {
        const QString line = in.readLine();
        const QString t = line.trimmed();
        if (t.isEmpty() || t.startsWith(QLatin1Char(';')))
            continue;
        if (t.startsWith(QLatin1Char('[')) && t.endsWith(QLatin1Char(']'))) {
            section = t.mid(1, t.size() - 2);
            continue;
        }
        const int eq = line.indexOf(QLatin1Char('='));
        if (eq <= 0)
            continue;
        const QString k = slot(section, line.left(eq));
        if (!c.values.contains(k))
            c.values.insert(k, line.mid(eq + 1).trimmed());
    }
    return c.values;
}
} // namespace

QString ReadIni(const QString& file, const QString& section, const QString& key,
                const QString& defaultValue) {
    return parsed(file).value(slot(section, key), defaultValue);
}

bool WriteIni(const QString& file, const QString& section, const QString& key, const QString& value) {
    QStringList lines;
    {
        QFile f(file);
        if (f.exists() && f.open(QIODevice::ReadOnly | QIODevice::Text)) {
            QTextStream in(&f);
            while (!in.atEnd())
                lines << in.readLine();
        }
    }
    int sectionAt = -1;
    int insertAt = -1;
    for (int i = 0; i < lines.size(); ++i) {
        const QString t = lines[i].trimmed();
        if (t.startsWith(QLatin1Char('[')) && t.endsWith(QLatin1Char(']'))) {
            if (sectionAt >= 0)
                break;
            if (t.mid(1, t.size() - 2).trimmed().compare(section, Qt::CaseInsensitive) == 0) {
                sectionAt = i;
                insertAt = i + 1;
            }
            continue;
        }
        if (sectionAt < 0)
            continue;
        const int eq = lines[i].indexOf(QLatin1Char('='));
        if (eq > 0 && lines[i].left(eq).trimmed().compare(key, Qt::CaseInsensitive) == 0) {
            lines[i] = key + QLatin1Char('=') + value;
            insertAt = -2;
            break;
        }
        if (!t.isEmpty())
            insertAt = i + 1;
    }
    if (sectionAt < 0) {
        lines << QStringLiteral("[%1]").arg(section) << key + QLatin1Char('=') + value;
    } else if (insertAt >= 0) {
        lines.insert(insertAt, key + QLatin1Char('=') + value);
    }
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Truncate))
        return false;
    QTextStream o(&out);
    for (const QString& l : lines)
        o << l << '\n';
    return out.error() == QFile::NoError;
}

QString ReadVoskIni(const QString& section, const QString& key, const QString& defaultValue) {
    return ReadIni(iniPath(), section, key, defaultValue);
}
