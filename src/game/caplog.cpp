#include "game/caplog.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace caplog {

QString outputFolder(const QString& gameFolder) {
    if (gameFolder.isEmpty())
        return {};
    QString dir = gameFolder;
    for (const char* part : {"Data", "client", "output"}) {
        const QString name = QLatin1String(part);
        const QString exact = dir + QLatin1Char('/') + name;
        if (QFileInfo(exact).isDir()) {
            dir = exact;
            continue;
        }
        QString found;
        const QStringList subs = QDir(dir).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
        for (const QString& s : subs)
            if (s.compare(name, Qt::CaseInsensitive) == 0) {
                found = s;
                break;
            }
        if (found.isEmpty())
            return {};
        dir += QLatin1Char('/') + found;
    }
    return dir;
}

bool isOptionsFile(const QString& fileName) {
    static const QRegularExpression pattern(QStringLiteral("\\Aplayer.*[0-9].*_options\\.ini\\z"),
                                            QRegularExpression::DotMatchesEverythingOption);
    return pattern.match(fileName.toLower()).hasMatch();
}

QString logStem(const QString& optionsFileName) {
    return QString(optionsFileName)
        .replace(QLatin1String("_options.ini"), QLatin1String("_log"), Qt::CaseInsensitive);
}

QStringList optionsFiles(const QString& folder) {
    QStringList found;
    if (folder.isEmpty())
        return found;
    const QStringList files =
        QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name | QDir::IgnoreCase);
    for (const QString& f : files)
        if (isOptionsFile(f))
            found << f;
    return found;
}

QString pagePath(const QString& folder, const QString& stem, int page) {
    return folder + QLatin1Char('/') + stem + QLatin1Char('-') + QString::number(page) +
           QStringLiteral(".ini");
}

QString lineSection(int line) {
    return QStringLiteral("LINE-") + QStringLiteral("%1").arg(line, 4, 10, QLatin1Char('0'));
}

QStringList splitLines(const QString& text) {
    if (text.isEmpty())
        return {};
    return text.split(CrLf);
}

long leadingNumber(const QString& text) {
    const QString t = text.trimmed();
    qsizetype end = 0;
    if (end < t.size() && (t.at(end) == QLatin1Char('-') || t.at(end) == QLatin1Char('+')))
        ++end;
    // Nine digits at most: a page never holds that many lines, and the sum with new lines stays a long.
    const qsizetype digitsFrom = end;
    while (end < t.size() && end - digitsFrom < 9 && t.at(end) >= QLatin1Char('0') &&
           t.at(end) <= QLatin1Char('9'))
        ++end;
    bool ok = false;
    const long n = t.left(end).toLong(&ok);
    return ok ? n : 0;
}

} // namespace caplog
